#include "view/PendingRowUpdates.h"

#include "view/EditorPlacer.h"
#include "view/VexaFeatureTreeView.h"

#include <QElapsedTimer>

namespace {

constexpr int SLICE_MS = 4;

} // namespace

PendingRowUpdates::PendingRowUpdates(VexaFeatureTreeView *pView)
    : m_pView(pView)
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &PendingRowUpdates::refillSlice);
}

void PendingRowUpdates::add(VexaPropertyTreeItem *pItem, bool bRecreate)
{
    const auto it = m_recreate.find(pItem);
    if (it != m_recreate.end()) {
        *it = *it || bRecreate;
        return;
    }
    m_recreate.insert(pItem, bRecreate);
    m_order.append(pItem);
    if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void PendingRowUpdates::clear()
{
    m_timer.stop();
    m_recreate.clear();
    m_order.clear();
    m_nNext = 0;
}

void PendingRowUpdates::flush()
{
    while (m_nNext < m_order.size()) {
        refill(m_order.at(m_nNext++));
    }
    clear();
}

void PendingRowUpdates::refillSlice()
{
    const QVector<VexaPropertyTreeItem *> inSight = m_pView->m_pPlacer->rowsInSight();
    for (VexaPropertyTreeItem *pItem : inSight) {
        refill(pItem);
    }
    QElapsedTimer elapsed;
    elapsed.start();
    while (m_nNext < m_order.size() && elapsed.elapsed() < SLICE_MS) {
        refill(m_order.at(m_nNext++));
    }
    if (m_nNext >= m_order.size()) {
        clear();
    }
}

void PendingRowUpdates::refill(VexaPropertyTreeItem *pItem)
{
    const auto it = m_recreate.find(pItem);
    if (it == m_recreate.end()) {
        return;
    }
    const bool bRecreate = *it;
    m_recreate.erase(it);
    m_pView->refillEditor(pItem, bRecreate);
}
