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

/// The rows below an item as a text: "Category(Feature:Tag Row+)"; a row that a page made for itself has a "+".
inline QString rowsText(const VexaPropertyTreeItem *pBranch)
{
    QStringList texts;
    for (int nRow = 0; nRow < pBranch->childCount(); ++nRow) {
        const VexaPropertyTreeItem *pItem = pBranch->child(nRow);
        QString strText = pItem->value()->m_strNodeName;
        if (pItem->itemType() == ITEM_CATEGORY) {
            strText += '(' + rowsText(pItem) + ')';
        } else {
            strText += pItem->tagName().isEmpty() ? QString() : ':' + pItem->tagName();
            strText += QLatin1String(pItem->isFeatureTreeItem() ? "" : "+");
        }
        texts.append(strText);
    }
    return texts.join(' ');
}

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
