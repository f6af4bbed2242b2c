#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// A polling parameter of a code reader: a feature that the device holds once a set.
struct PollingParameter
{
    QString name; ///< GenICam feature name
    QString tag; ///< of its element: "Integer", "Float", ...
};

/// The values of the set that "PollingParam" selects.
struct PollingReading
{
    qint64 set = -1; ///< -1: not read, or the selection changed while it was read
    QMap<QString, QString>
        values; ///< by feature name, as the tree hands on what was written; what failed is left out
};

/// Reads the selected set from the device, whatever the tree shows. Talks to the device: not on the GUI thread. Every
/// selector is read before and after, so that values never stand under another set or another light.
PollingReading readSelectedSet(long int cameraId, const QVector<PollingParameter> &parameters);
