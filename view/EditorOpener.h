#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

class VexaFeatureTreeView;
class VexaPropertyTreeItem;

/// Opens the editors of many rows: of a large tree in slices between the events of the user. GUI thread.
class EditorOpener : public QObject
{
    Q_OBJECT
public:
    explicit EditorOpener(VexaFeatureTreeView *pView);

    /// The rows in the order in which they are to be opened.
    void open(const QVector<VexaPropertyTreeItem *> &rows);
    void clear();
    /// Rows wait for their editors.
    bool isActive() const { return m_nNext < m_queue.size(); }

private:
    void openSlice();

    VexaFeatureTreeView *m_pView;
    QTimer m_timer;
    QVector<VexaPropertyTreeItem *> m_queue;
    int m_nNext = 0;
};
