#pragma once

#include "model/IVexaFeatureWidget.h"
#include "view/ItemNames.h"
#include "view/VexaFeatureTreeView.h"

#include <QStringList>

#include <functional>

/// A feature widget that notes what the view asks of it. Writes answer m_bAnswer.
class RecordingFeatureWidget : public IVexaFeatureWidget
{
    Q_OBJECT
public:
    explicit RecordingFeatureWidget(int nPageIndex = 0);

    bool setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                         const QVariant &oNodeValue) override;
    bool afterSetFeatureValue(const QString &strNodeName) override
    {
        m_calls.append("after " + strNodeName);
        return true;
    }
    void itemValueChanged(VexaPropertyTreeItem *pItem, bool) override
    {
        m_calls.append("value " + nodeNameOf(pItem));
    }
    void itemVisibleStateChanged(VexaPropertyTreeItem *pItem) override
    {
        m_calls.append("visible " + nodeNameOf(pItem));
    }
    void itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool bReadOnly) override
    {
        m_calls.append((bReadOnly ? "readonly " : "writable ") + nodeNameOf(pItem));
    }

    void hideBelow(VexaPropertyTreeItem *pItem);

    QStringList m_writes; ///< "Tag Name value"
    QStringList m_calls; ///< everything else, "operation Name"
    bool m_bAnswer = true;
    std::function<void()> m_inWrite; ///< runs in each write
};

/// A tree made from text in the view of a recording widget: a line an item, two blanks an indentation; "Name" is a
/// category, "Name Tag" a feature. The camera is 1.
class ViewFixture
{
public:
    static constexpr long CAMERA = 1;
    /// "Bool", "Int", "Enum", "Float" and "Cmd".
    static const char *const ONE_OF_EACH;

    explicit ViewFixture(const QString &strTree, int nPageIndex = 0);
    ~ViewFixture();
    Q_DISABLE_COPY(ViewFixture)

    RecordingFeatureWidget &owner() { return *m_pOwner; }
    VexaFeatureTreeView &view() { return *m_pOwner->treeView(); }
    VexaPropertyTreeItem *root() { return m_pRoot.get(); }
    /// Depth first; null when there is none.
    VexaPropertyTreeItem *item(const QString &strName) const;
    QWidget *editor(const QString &strName, int nColumn = 1);
    /// Opens all editors, expands and shows the view.
    void show(const QSize &size = QSize(600, 400));
    /// The rows that are laid out, as the text that the tree is made from, without tags.
    QString shownRows();
    /// Hands the widget over to the caller.
    RecordingFeatureWidget *takeOwner() { return m_pOwner.release(); }
    /// Deletes the items and their view's hold on them.
    void clear();

    void setInteger(const QString &strName, qint64 nValue, qint64 nMinimum, qint64 nMaximum,
                    qint64 nIncrement = 1, const QString &strRepresentation = QString());
    void setFloat(const QString &strName, float fValue, float fMinimum, float fMaximum);
    void setBoolean(const QString &strName, bool bValue);
    /// Entries "name" with the numbers 0, 10, 20...
    void setEnumeration(const QString &strName, const QStringList &entries, qint64 nValue);
    void setReadOnly(const QString &strName, bool bReadOnly);
    /// ONE_OF_EACH was read: true, 42, Mono12 of three and 1.25; all can be written.
    void fillOneOfEach();

private:
    void finish(VexaPropertyTreeItem *pItem);

    std::unique_ptr<RecordingFeatureWidget> m_pOwner;
    std::unique_ptr<VexaPropertyTreeItem> m_pRoot;
};
