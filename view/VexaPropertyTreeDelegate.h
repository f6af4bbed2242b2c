#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QHash>
#include <QMutex>
#include <QPointer>
#include <QSet>
#include <QStyledItemDelegate>

class QTimer;

/// Makes, fills, places and commits the editors of the feature tree and paints the frames around its rows. Editors
/// stay open as long as their row. GUI thread.
class VexaPropertyTreeDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    VexaPropertyTreeDelegate(ParentType eType, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

    /// The editors enabled flag; when it is down every refilled editor is disabled.
    void setEditorsEnabled(bool bEnabled) { m_bEditorsEnabled = bEnabled; }
    bool isEditorsEnabled() const { return m_bEditorsEnabled; }
    /// While blocked no commit passes, whatever focus changes do.
    void setCommitBlocked(bool bBlocked) { m_bCommitBlocked = bBlocked; }
    /// The widget in which new editors are made; null is the parent that createEditor is given.
    void setEditorHost(QWidget *pHost) { m_pEditorHost = pHost; }
    /// Puts the device's value back into an editor that the user has begun to change.
    void rollback(QWidget *pEditor) const;
    /// The item of an open editor, null for any other widget.
    VexaPropertyTreeItem *itemOfEditor(const QObject *pEditor) const;
    int columnOfEditor(const QObject *pEditor) const;
    /// An editor that has nothing to show, not even an empty field: a switch whose state was never read.
    bool isBlank(const QObject *pEditor) const;
    ParentType parentType() const { return m_eType; }

Q_SIGNALS:
    /// The mouse has come over an editor or the focus into it.
    void sigEditorActivated(QWidget *pEditor);
    /// The user has ended typing in an editor whose refill was put off meanwhile.
    void sigRefillNeeded(QWidget *pEditor);

public Q_SLOTS:
    void on_CommitData();
    void on_CommitData_Combox(int nIndex);
    void on_CommandTimeout();
    void on_CommitData_Time();
    void on_CommitRecord(QWidget *pEditor);
    /// The list of a combo box whose refill was put off was closed.
    void on_PopupHidden();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct EditorRow
    {
        VexaPropertyTreeItem *pItem = nullptr;
        int nColumn = 0;
        bool bBlank = false;
        bool bRefillPutOff = false;
    };
    void commit(QWidget *pEditor);
    void endCommit(QWidget *pEditor);
    void postRefill(QWidget *pEditor) const;

    /// The editors whose commit signal is being handled. A write runs other events in boxes: a second commit of the
    /// editor is refused meanwhile, a refill waits, and the editor itself is not deleted.
    QSet<const QObject *> m_commits;
    mutable QSet<const QObject *> m_doomed; ///< to be deleted when their commit ends
    bool m_bEditorsEnabled = true;
    bool m_bCommitBlocked = false;
    ParentType m_eType;
    QTimer *m_pCommandTimer;
    mutable QMutex m_comboMutex; ///< held while a combo box is refilled
    QPointer<QWidget> m_pEditorHost;
    mutable QHash<const QObject *, EditorRow> m_editors;
};
