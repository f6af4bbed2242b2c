#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVector>

class VexaFeatureTreeView;
class VexaPropertyTreeItem;

/// Editors that are to be refilled because a worker has changed their items: a burst refills each editor once, rows in
/// sight first, in slices between the events of the user. GUI thread.
class PendingRowUpdates : public QObject
{
    Q_OBJECT
public:
    explicit PendingRowUpdates(VexaFeatureTreeView *pView);

    void add(VexaPropertyTreeItem *pItem, bool bRecreate);
    /// Takes the row out; whether its editor was to be made anew.
    bool take(VexaPropertyTreeItem *pItem) { return m_recreate.take(pItem); }
    void clear();
    bool isActive() const { return m_timer.isActive(); }
    /// Refills everything now.
    void flush();

private:
    void refillSlice();
    void refill(VexaPropertyTreeItem *pItem);

    VexaFeatureTreeView *m_pView;
    QTimer m_timer;
    QHash<VexaPropertyTreeItem *, bool>
        m_recreate; ///< what waits, and whether the editor is to be made anew
    QVector<VexaPropertyTreeItem *> m_order; ///< may hold items that wait no more
    int m_nNext = 0;
};
