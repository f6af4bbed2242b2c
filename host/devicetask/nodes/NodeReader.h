#pragma once

#include "DeviceTaskModule/NodeValues.h"
#include "host/devicetask/DeviceError.h"
#include "host/devicetask/GcSession.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// Reads of nodes by name. Under the device's lock; the out arguments are filled only on success.
class NodeReader
{
public:
    static DeviceError integer(const GcSession &session, const QByteArray &name,
                               _NODE_INT_VALUE_ *out);
    static DeviceError floating(const GcSession &session, const QByteArray &name,
                                _NODE_FLOAT_VALUE_ *out);
    static DeviceError enumeration(const GcSession &session, const QByteArray &name,
                                   _NODE_ENUM_VALUE_ *out);
    static DeviceError boolean(const GcSession &session, const QByteArray &name, bool *out);
    static DeviceError string(const GcSession &session, const QByteArray &name, QString *out,
                              qint64 *maxLength);

    /// Range of an integer-like node, with the whole of 64 bits where the node names no bound.
    static DeviceError integerRange(const GcSession &session, const QByteArray &name,
                                    _NODE_INT_VALUE_ *out);
    /// Range of a Float in double, unlimited where the node names no bound.
    static DeviceError floatRange(const GcSession &session, const QByteArray &name, double *min,
                                  double *max);
    /// Values of the entries that are implemented and available.
    static DeviceError availableEntries(const GcSession &session, const QByteArray &name,
                                        QVector<qint64> *entries);
    /// The register's length in bytes; at most 64 MiB.
    static DeviceError stringLength(const GcSession &session, const QByteArray &name,
                                    qint64 *maxLength);

    /// Nearest float; a finite number stays finite, so that a Float without bounds does not end at infinity.
    static float toFloat(double number);
    static DeviceError wrongKind(const QByteArray &name, const char *wanted);
};
