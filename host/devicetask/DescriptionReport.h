#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// What opening a camera with a certain description would find wrong with it. A value; any thread.
struct DEVICETASKMODULE_API DescriptionReport
{
    struct Finding
    {
        QString node; ///< RegisterDescription where the description is refused as a whole
        int line = 0; ///< from 1
        QString reason; ///< English, without a full stop
        bool isLeftOut = false; ///< the node cannot be used
    };

    /// Longest description that is read, in bytes.
    static int maxSize();
    static DescriptionReport of(const QByteArray &xml);

    int nodes = 0; ///< in the description; 0 when it is refused
    int leftOut = 0; ///< of them
    QVector<Finding> findings; ///< by line
};
