#include "host/devicetask/NodeWriter.h"

#include "host/devicetask/AccessMode.h"
#include "host/devicetask/DescriptionIndex.h"
#include "host/devicetask/GErrorBox.h"
#include "host/devicetask/NodeReader.h"

#include <algorithm>

namespace {

DeviceError outOfRange(const QByteArray &name, const QString &value)
{
    return {NODE_RANGE, QStringLiteral("%1 does not take %2").arg(QString::fromUtf8(name), value)};
}

/// True when the node ends in an unsigned register of 8 bytes and no bound of its own: its upper half reads as
/// negative numbers and is written as such.
bool takesAll64Bits(const GcSession &session, const QByteArray &name)
{
    const NodeInfo *info = session.index.find(name);
    while (info && !info->hasRange && info->tag == "Integer" && !info->valueTarget.isEmpty()) {
        info = session.index.find(info->valueTarget);
    }
    return info && !info->isSigned
        && ((info->tag == "IntReg" && info->length == 8) || info->bits() == 64);
}

DeviceError checkInteger(const GcSession &session, const QByteArray &name, qint64 value)
{
    _NODE_INT_VALUE_ range{};
    const DeviceError failure = NodeReader::integerRange(session, name, &range);
    if (failure.failed() || takesAll64Bits(session, name)) {
        return failure;
    }
    const quint64 distance = static_cast<quint64>(value) - static_cast<quint64>(range.min);
    if (value < range.min || value > range.max || distance % static_cast<quint64>(range.inc) != 0) {
        return outOfRange(name,
                          QStringLiteral("%1; it takes %2 to %3 in steps of %4")
                              .arg(value)
                              .arg(range.min)
                              .arg(range.max)
                              .arg(range.inc));
    }
    return {};
}

template<class Matches>
DeviceError writeEntry(const GcSession &session, const QByteArray &name, const QString &shown,
                       Matches &&matches)
{
    QVector<qint64> entries;
    const DeviceError failure = NodeReader::availableEntries(session, name, &entries);
    if (failure.failed()) {
        return failure;
    }
    const auto it = std::find_if(entries.cbegin(), entries.cend(), matches);
    if (it == entries.cend()) {
        return outOfRange(name, shown);
    }
    GErrorBox error;
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(node), *it, error.next());
    return error.error(QString::fromUtf8(name));
}

} // namespace

DeviceError NodeWriter::integer(const GcSession &session, const QByteArray &name, qint64 value)
{
    DeviceError failure = AccessMode::requireWritable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (ARV_IS_GC_ENUMERATION(node)) {
        return writeEntry(session, name, QString::number(value),
                          [value](qint64 entry) { return entry == value; });
    }
    GErrorBox error;
    if (!ARV_IS_GC_INTEGER(node) && !ARV_IS_GC_BOOLEAN(node)) {
        return NodeReader::wrongKind(name, "integer");
    }
    failure = checkInteger(session, name, value);
    if (failure.failed()) {
        return failure;
    }
    if (ARV_IS_GC_BOOLEAN(node)) {
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value != 0, error.next());
    } else {
        arv_gc_integer_set_value(ARV_GC_INTEGER(node), value, error.next());
    }
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeWriter::floating(const GcSession &session, const QByteArray &name, float value)
{
    DeviceError failure = AccessMode::requireWritable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_FLOAT(node)) {
        return NodeReader::wrongKind(name, "float");
    }
    double min = 0;
    double max = 0;
    failure = NodeReader::floatRange(session, name, &min, &max);
    if (failure.failed()) {
        return failure;
    }
    // A bound such as 0.1 rounds up to a float beyond it; the caller who writes that float means the bound.
    const double exactValue = static_cast<double>(value);
    const bool fits = (exactValue >= min || value == NodeReader::toFloat(min))
        && (exactValue <= max || value == NodeReader::toFloat(max));
    if (!fits) {
        return outOfRange(name,
                          QStringLiteral("%1; it takes %2 to %3").arg(value).arg(min).arg(max));
    }
    GErrorBox error;
    arv_gc_float_set_value(ARV_GC_FLOAT(node), qBound(min, exactValue, max), error.next());
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeWriter::enumeration(const GcSession &session, const QByteArray &name, quint32 value)
{
    const DeviceError failure = AccessMode::requireWritable(session, name);
    if (failure.failed()) {
        return failure;
    }
    if (!ARV_IS_GC_ENUMERATION(arv_gc_get_node(session.gc, name.constData()))) {
        return NodeReader::wrongKind(name, "enumeration");
    }
    return writeEntry(session, name, QString::number(value),
                      [value](qint64 entry) { return static_cast<quint32>(entry) == value; });
}

DeviceError NodeWriter::boolean(const GcSession &session, const QByteArray &name, bool value)
{
    const DeviceError failure = AccessMode::requireWritable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_BOOLEAN(node)) {
        return NodeReader::wrongKind(name, "boolean");
    }
    GErrorBox error;
    arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value, error.next());
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeWriter::string(const GcSession &session, const QByteArray &name,
                               const QByteArray &value)
{
    DeviceError failure = AccessMode::requireWritable(session, name);
    qint64 length = 0;
    if (!failure.failed()) {
        failure = NodeReader::stringLength(session, name, &length);
    }
    if (failure.failed()) {
        return failure;
    }
    if (value.size() > length || value.contains('\0')) {
        return outOfRange(
            name,
            QStringLiteral("this text of %1 bytes; it takes %2").arg(value.size()).arg(length));
    }
    GErrorBox error;
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    arv_gc_string_set_value(ARV_GC_STRING(node), value.constData(), error.next());
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeWriter::execute(const GcSession &session, const QByteArray &name)
{
    const DeviceError failure = AccessMode::requireWritable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_COMMAND(node)) {
        return NodeReader::wrongKind(name, "command");
    }
    GErrorBox error;
    arv_gc_command_execute(ARV_GC_COMMAND(node), error.next());
    return error.error(QString::fromUtf8(name));
}
