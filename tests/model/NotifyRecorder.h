#pragma once

#include "model/CTreeItemValue.h"
#include "model/IVexaFeatureNotify.h"
#include "model/VexaPropertyTreeItem.h"

#include <QString>
#include <QStringList>

/// Writes down what items tell it, one word a notification: "kind:node:arguments".
class NotifyRecorder : public IVexaFeatureNotify
{
public:
    void itemVisibleChanged(long, VexaPropertyTreeItem *pItem, bool bVisible) override
    {
        note("visible", pItem, QString::number(bVisible));
    }
    void itemDataChanged(long, VexaPropertyTreeItem *pItem, int nType, bool bRecreate,
                         bool) override
    {
        note("data", pItem, QStringLiteral("%1%2").arg(nType).arg(bRecreate ? "recreate" : ""));
    }
    void itemReadOnlyChanged(long, VexaPropertyTreeItem *pItem, bool bReadOnly) override
    {
        note("readonly", pItem, QString::number(bReadOnly));
    }

    /// What was told since the last call.
    QString take()
    {
        const QString strAll = m_notes.join(QLatin1Char(' '));
        m_notes.clear();
        return strAll;
    }

private:
    void note(const char *kind, VexaPropertyTreeItem *pItem, const QString &strArguments)
    {
        m_notes.append(QLatin1String(kind) + QLatin1Char(':') + pItem->value()->m_strNodeName
                       + QLatin1Char(':') + strArguments);
    }
    QStringList m_notes;
};

/// A named item below another.
inline VexaPropertyTreeItem *makeItem(VexaPropertyTreeItem *pParent, const QString &strName,
                                      const QString &strTag = QString())
{
    auto *pItem = new VexaPropertyTreeItem(pParent);
    pItem->value()->m_strNodeName = strName;
    pItem->value()->m_strDisplayName = strName;
    pItem->setTagName(strTag);
    return pItem;
}
