#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QSet>
#include <QStringList>

class CTreeItemValue;
class IVexaFeatureWidget;

/// Shows a tree of items in two columns, 0 the name and 1 the place of the editor, and is the gate through which every
/// edit passes on its way to the device. It holds no data of its own. GUI thread.
class VexaPropertyTreeModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Column { COLUMN_NAME = 0, COLUMN_VALUE = 1, COLUMN_COUNT = 2 };

    VexaPropertyTreeModel(ParentType eType, QObject *parent);

    QModelIndex index(int row, int column,
                      const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Writes to the device through the feature widget. False only when the write failed on a camera that is there.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    void setCameraID(long lCameraID) { m_lCameraID = lCameraID; }
    long cameraID() const { return m_lCameraID; }
    void setFeatureWidget(IVexaFeatureWidget *pWidget) { m_pFeatureWidget = pWidget; }
    void setRootItem(VexaPropertyTreeItem *pRoot);
    VexaPropertyTreeItem *rootItem() const { return m_pRootItem; }
    /// Deletes everything below the root in one reset and forgets the root.
    void clearRoot();
    void setEditable(bool bEditable) { m_bEditable = bEditable; }
    bool isEditable() const { return m_bEditable; }

    /// What a row of this kind of tree is called, in the language of its texts.
    static QString rowName(const CTreeItemValue &value, ParentType eType);
    QModelIndex indexFromItem(VexaPropertyTreeItem *pItem, int nColumn) const;
    static VexaPropertyTreeItem *itemFromIndex(const QModelIndex &index);
    /// The parent has got new children, from `nRow` to its last one.
    void insertRowNotify(VexaPropertyTreeItem *pParent, int nRow);
    /// Takes the child out from under the parent; a null child announces that all children go.
    void removeRowNotify(VexaPropertyTreeItem *pParent, VexaPropertyTreeItem *pChild);

private:
    int rowOf(VexaPropertyTreeItem *pItem) const;
    QString displayText(const VexaPropertyTreeItem *pItem, int nColumn) const;
    QVariant toolTip(const VexaPropertyTreeItem *pItem, int nColumn) const;

    bool m_bEditable = true;
    ParentType m_eType;
    long m_lCameraID = -1;
    IVexaFeatureWidget *m_pFeatureWidget = nullptr;
    QStringList m_headerLabels;
    VexaPropertyTreeItem *m_pRootItem = nullptr; ///< not owned
    QSet<QString> m_writing; ///< names of the nodes whose write is under way
    mutable QHash<const VexaPropertyTreeItem *, int>
        m_rowCache; ///< checked before use: it may be stale
};
