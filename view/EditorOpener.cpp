#include "view/EditorOpener.h"

#include "view/EditorPlacer.h"
#include "view/VexaFeatureTreeView.h"

#include <QElapsedTimer>

namespace {

constexpr int AT_ONCE = 2000; // rows
constexpr int SLICE_MS = 8;

} // namespace

EditorOpener::EditorOpener(VexaFeatureTreeView *pView)
    : m_pView(pView)
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &EditorOpener::openSlice);
}

void EditorOpener::open(const QVector<VexaPropertyTreeItem *> &rows)
{
    m_queue.remove(0, m_nNext);
    m_nNext = 0;
    m_queue += rows;
    if (m_queue.size() <= AT_ONCE) {
        for (VexaPropertyTreeItem *pItem : qAsConst(m_queue)) {
            m_pView->openRow(pItem);
        }
        clear();
    } else {
        m_timer.start();
    }
    m_pView->m_pPlacer->place(); // opens the rows in sight that still wait
}

void EditorOpener::clear()
{
    m_timer.stop();
    m_queue.clear();
    m_nNext = 0;
}

void EditorOpener::openSlice()
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (isActive() && elapsed.elapsed() < SLICE_MS) {
        m_pView->openRow(m_queue.at(m_nNext));
        ++m_nNext;
    }
    if (!isActive()) {
        clear();
    }
}
