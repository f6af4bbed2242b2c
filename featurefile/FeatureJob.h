#pragma once

#include "featurefile/EvalContext.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

class QCameraBasicTask;

/// What a job of feature files works on: the device, what the tree knows of its description, and the way back.
struct FeatureJob
{
    QMap<QString, QDomElement> nodes; ///< by Name
    QMap<QString, QString> featureCategories;
    QVector<SelectedLink> selectedLinks;
    QStringList categoryFeatures; ///< the pFeature texts of all categories
    QMap<QString, QStringList> filters; ///< of exports, by interface name
    EvalLimits limits;
    QCameraBasicTask *pBasicTask = nullptr; ///< for the length of the job
    const std::atomic<bool> *pStop = nullptr;
    std::atomic<int> *pDone = nullptr;
    std::atomic<int> *pTotal = nullptr;

    bool isStopped() const { return *pStop; }
    /// Whether register words of this device come in network byte order.
    bool isGigE() const;
};
