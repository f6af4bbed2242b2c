#pragma once

#include "featurefile/VexaFeatureImExThread.h"
#include "tests/featurefile/EvalFixture.h"
#include "tests/featurefile/FeatureFileLines.h"

#include <QFile>
#include <QTemporaryDir>

/// A simulated device with the job thread that a tree would give it.
struct JobFixture : DescribedCamera
{
    explicit JobFixture(const SimulatedDevices::Simulated &simulated)
        : DescribedCamera(simulated)
    {
        builder.createItems(document, nullptr);
        takeLinks(builder.allTreeItems().keys());
        thread = std::make_unique<VexaFeatureImExThread>(cameraId);
        thread->setNodes(builder.elementMap());
        thread->setFeatureCategories(builder.featureParentMap());
        thread->setSelectedLinks(links);
        thread->setCategoryFeatures(builder.allFeatureNames());
    }
    /// The result of a job; false also for one that never ends.
    bool run(unsigned int operation, const QString &path)
    {
        bool success = false;
        const auto connection = QObject::connect(
            thread.get(), &VexaFeatureImExThread::SigEndFeatureImExThread, thread.get(),
            [&success](int, bool done) { success = done; }, Qt::DirectConnection);
        thread->setOperation(operation, path);
        thread->start();
        const bool ended = thread->wait(60000); // nothing of the job is looked at before
        QObject::disconnect(connection);
        return ended && thread->takeEndedJob() == thread->jobNumber() && success;
    }
    /// The bytes of an export; empty when it failed.
    QByteArray exported()
    {
        const QString path = folder.filePath("export.vxf");
        QFile::remove(path);
        QFile file(path);
        return run(VexaFeatureImExThread::OPERATION_EXPORT, path) && file.open(QIODevice::ReadOnly)
            ? file.readAll()
            : QByteArray();
    }
    QStringList differing() const
    {
        QStringList names;
        for (const auto &list : thread->diffMap()) {
            for (const FeatureDifference &difference : list) {
                names += difference.name;
            }
        }
        names.sort();
        return names;
    }

    QTemporaryDir folder;
    std::unique_ptr<VexaFeatureImExThread> thread;
};
