#include "host/workbench/DeviceSearch.h"

#include "host/workbench/DeviceThreads.h"

#include <QtConcurrent>

DeviceSearch::DeviceSearch(std::function<Found()> look, QObject *parent)
    : QObject(parent)
    , m_look(std::move(look))
{
    connect(&m_watcher, &QFutureWatcherBase::finished, this, [this] {
        m_bRunning = false;
        emit finished(m_watcher.result());
    });
}

void DeviceSearch::start()
{
    if (!m_bRunning) {
        m_bRunning = true;
        m_watcher.setFuture(QtConcurrent::run(deviceThreads(), m_look));
    }
}
