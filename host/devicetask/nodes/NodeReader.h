#pragma once

#include "DeviceTaskModule/NodeValues.h"
#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"
#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QString>
#include <QVector>

class NodeEvaluator;

/// An Enumeration's value and the values of its entries that are implemented and available, in document order.
struct EnumReading
{
    quint32 value = 0;
    QVector<quint32> entries;
};

/// Reads of nodes by name, one operation each. On the connection's thread; the out arguments are filled only on
/// success.
class NodeReader
{
public:
    static DeviceError integer(const DeviceSession &session, const QByteArray &name,
                               _NODE_INT_VALUE_ *out);
    static DeviceError floating(const DeviceSession &session, const QByteArray &name,
                                _NODE_FLOAT_VALUE_ *out);
    static DeviceError enumeration(const DeviceSession &session, const QByteArray &name,
                                   EnumReading *out);
    static DeviceError boolean(const DeviceSession &session, const QByteArray &name, bool *out);
    /// `maxLength` may be null.
    static DeviceError string(const DeviceSession &session, const QByteArray &name, QString *out,
                              qint64 *maxLength);

    /// Parts of an operation, on nodes that exist.
    /// True for what reads and is written as an integer.
    static bool isIntegerLike(NodeKind kind);
    static bool isFloatLike(NodeKind kind);
    /// Range of an integer-like node, with the whole of 64 bits where the node names no bound; `inc` is at least 1.
    static DeviceError integerRange(NodeEvaluator &evaluator, NodeId id, _NODE_INT_VALUE_ *out);
    /// Range of a Float in double, unlimited where the node names no bound.
    static DeviceError floatRange(NodeEvaluator &evaluator, NodeId id, double *min, double *max);
    /// Values of the entries that are implemented and available; see NodeEvaluator::findCondition.
    static DeviceError availableEntries(NodeEvaluator &evaluator, NodeId id,
                                        QVector<qint64> *entries);
    /// The register's length in bytes; 64 MiB for a text that has no register.
    static DeviceError stringLength(NodeEvaluator &evaluator, NodeId id, qint64 *maxLength);

    /// Nearest float; a finite number stays finite, so that a Float without bounds does not end at infinity.
    static float toFloat(double number);
    static DeviceError wrongKind(const QByteArray &name, const char *wanted);
};
