#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QVector>

#include <functional>
#include <memory>

struct DeviceSource;

/// Looks for devices on a worker, one search at a time. GUI thread.
class DeviceSearch : public QObject
{
    Q_OBJECT
public:
    using Found = QVector<std::shared_ptr<DeviceSource>>;

    /// `look` may block, runs on a worker and may outlive the search.
    explicit DeviceSearch(std::function<Found()> look, QObject *parent = nullptr);

    /// Does nothing while a search is under way.
    void start();

signals:
    void finished(const DeviceSearch::Found &devices);

private:
    std::function<Found()> m_look;
    QFutureWatcher<Found> m_watcher;
    bool m_bRunning = false;
};
