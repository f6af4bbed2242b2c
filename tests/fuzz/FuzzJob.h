#pragma once

#include "FuzzDevice.h"
#include "featurefile/FeatureJob.h"

#include <QDomDocument>

/// What a job of feature files works on, made of a description: its nodes, links and categories, and a fresh device.
/// The root's DeviceType is the device's.
class FuzzJob
{
public:
    explicit FuzzJob(const QDomDocument &description);
    /// The same with a fresh device of that type.
    FuzzJob(const FuzzJob &other, unsigned int type);
    Q_DISABLE_COPY(FuzzJob)

    FuzzDevice &device() { return *m_device; }
    FeatureJob &job() { return m_job; }
    std::atomic<bool> &stop() { return m_stop; }
    /// Lines of the log since the last call.
    static int takeLines();
    /// Once a process: no log, UTF-8, and the same order of hashes in each run.
    static void prepareProcess();

private:
    void setDevice(unsigned int type);

    const QDomDocument m_description;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_done{0};
    std::atomic<int> m_total{0};
    FeatureJob m_job;
    std::unique_ptr<FuzzDevice> m_device;
};
