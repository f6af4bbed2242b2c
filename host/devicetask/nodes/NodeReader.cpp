#include "host/devicetask/NodeReader.h"

#include "host/devicetask/AccessMode.h"
#include "host/devicetask/DescriptionIndex.h"
#include "host/devicetask/GErrorBox.h"

#include <QtMath>

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 INT_MIN64 = std::numeric_limits<qint64>::min();
constexpr qint64 INT_MAX64 = std::numeric_limits<qint64>::max();
constexpr qint64 MAX_STRING = 64 * 1024 * 1024;

/// One bound of a node: its own, or `fallback` where the node has none.
template<class Number, class Node>
DeviceError bound(Number (*get)(Node *, GError **), Node *node, const QByteArray &name,
                  Number fallback, Number *out)
{
    GErrorBox error;
    const Number number = get(node, error.next());
    if (error.failed() && !error.isMissingProperty()) {
        return error.error(QString::fromUtf8(name));
    }
    *out = error.failed() ? fallback : number;
    return {};
}

/// Smallest and largest of all entries, at no access.
void entryRange(ArvGcEnumeration *node, _NODE_INT_VALUE_ *out)
{
    bool first = true;
    for (const GSList *it = arv_gc_enumeration_get_entries(node); it; it = it->next) {
        GErrorBox error;
        const qint64 value = arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(it->data), error.next());
        if (!error.failed()) {
            out->min = first ? value : qMin(out->min, value);
            out->max = first ? value : qMax(out->max, value);
            first = false;
        }
    }
}

} // namespace

float NodeReader::toFloat(double number)
{
    constexpr double LIMIT = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(qIsFinite(number) ? std::clamp(number, -LIMIT, LIMIT) : number);
}

DeviceError NodeReader::wrongKind(const QByteArray &name, const char *wanted)
{
    return {NODE_PROPERTY,
            QStringLiteral("%1 is no %2").arg(QString::fromUtf8(name), QLatin1String(wanted))};
}

DeviceError NodeReader::integer(const GcSession &session, const QByteArray &name,
                                _NODE_INT_VALUE_ *out)
{
    DeviceError failure = AccessMode::requireReadable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    _NODE_INT_VALUE_ result{};
    GErrorBox error;
    if (ARV_IS_GC_BOOLEAN(node)) {
        result.value = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error.next()) ? 1 : 0;
    } else if (ARV_IS_GC_INTEGER(node)) {
        result.value = arv_gc_integer_get_value(ARV_GC_INTEGER(node), error.next());
    } else {
        return wrongKind(name, "integer");
    }
    failure = error.error(QString::fromUtf8(name));
    if (!failure.failed()) {
        failure = integerRange(session, name, &result);
    }
    if (!failure.failed()) {
        *out = result;
    }
    return failure;
}

DeviceError NodeReader::integerRange(const GcSession &session, const QByteArray &name,
                                     _NODE_INT_VALUE_ *out)
{
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    out->min = INT_MIN64;
    out->max = INT_MAX64;
    out->inc = 1;
    if (ARV_IS_GC_BOOLEAN(node)) {
        out->min = 0;
        out->max = 1;
        return {};
    }
    if (ARV_IS_GC_ENUMERATION(node)) {
        entryRange(ARV_GC_ENUMERATION(node), out);
        return {};
    }
    ArvGcInteger *integer = ARV_GC_INTEGER(node);
    gint64 number = 0;
    DeviceError failure = bound<gint64>(arv_gc_integer_get_min, integer, name, INT_MIN64, &number);
    out->min = number;
    if (!failure.failed()) {
        failure = bound<gint64>(arv_gc_integer_get_max, integer, name, INT_MAX64, &number);
        out->max = number;
    }
    if (!failure.failed()) {
        failure = bound<gint64>(arv_gc_integer_get_inc, integer, name, 1, &number);
        out->inc = qMax<qint64>(number, 1);
    }
    // Aravis counts the range of all 64 bits as 2^64, which is 0 to it.
    const NodeInfo *info = session.index.find(name);
    if (info->bits() == 64) {
        out->min = info->isSigned ? INT_MIN64 : 0;
        out->max = INT_MAX64;
    }
    return failure;
}

DeviceError NodeReader::floating(const GcSession &session, const QByteArray &name,
                                 _NODE_FLOAT_VALUE_ *out)
{
    DeviceError failure = AccessMode::requireReadable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_FLOAT(node)) {
        return wrongKind(name, "float");
    }
    GErrorBox error;
    double min = 0;
    double max = 0;
    const double value = arv_gc_float_get_value(ARV_GC_FLOAT(node), error.next());
    failure = error.error(QString::fromUtf8(name));
    if (!failure.failed()) {
        failure = floatRange(session, name, &min, &max);
    }
    if (!failure.failed()) {
        *out = {toFloat(value), toFloat(max), toFloat(min)};
    }
    return failure;
}

DeviceError NodeReader::floatRange(const GcSession &session, const QByteArray &name, double *min,
                                   double *max)
{
    constexpr double LIMIT = std::numeric_limits<double>::max();
    ArvGcFloat *node = ARV_GC_FLOAT(arv_gc_get_node(session.gc, name.constData()));
    DeviceError failure = bound<double>(arv_gc_float_get_min, node, name, -LIMIT, min);
    if (!failure.failed()) {
        failure = bound<double>(arv_gc_float_get_max, node, name, LIMIT, max);
    }
    return failure;
}

DeviceError NodeReader::availableEntries(const GcSession &session, const QByteArray &name,
                                         QVector<qint64> *entries)
{
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    GErrorBox error;
    guint count = 0;
    gint64 *values =
        arv_gc_enumeration_dup_available_int_values(ARV_GC_ENUMERATION(node), &count, error.next());
    if (!error.failed()) {
        entries->clear();
        std::copy(values, values + count, std::back_inserter(*entries));
    }
    g_free(values);
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeReader::enumeration(const GcSession &session, const QByteArray &name,
                                    _NODE_ENUM_VALUE_ *out)
{
    DeviceError failure = AccessMode::requireReadable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_ENUMERATION(node)) {
        return wrongKind(name, "enumeration");
    }
    GErrorBox error;
    const qint64 value = arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), error.next());
    failure = error.error(QString::fromUtf8(name));
    QVector<qint64> entries;
    if (!failure.failed()) {
        failure = availableEntries(session, name, &entries);
    }
    if (failure.failed()) {
        return failure;
    }
    constexpr int CAPACITY = sizeof(out->entries) / sizeof(out->entries[0]);
    const int count = qMin(entries.size(), CAPACITY);
    out->value = static_cast<quint32>(value);
    out->count = static_cast<quint32>(count);
    std::transform(entries.cbegin(), entries.cbegin() + count, out->entries,
                   [](qint64 entry) { return static_cast<quint32>(entry); });
    return {};
}

DeviceError NodeReader::boolean(const GcSession &session, const QByteArray &name, bool *out)
{
    const DeviceError failure = AccessMode::requireReadable(session, name);
    if (failure.failed()) {
        return failure;
    }
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_BOOLEAN(node)) {
        return wrongKind(name, "boolean");
    }
    GErrorBox error;
    const bool value = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error.next()) != FALSE;
    if (!error.failed()) {
        *out = value;
    }
    return error.error(QString::fromUtf8(name));
}

DeviceError NodeReader::stringLength(const GcSession &session, const QByteArray &name,
                                     qint64 *maxLength)
{
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    if (!ARV_IS_GC_STRING(node) || ARV_IS_GC_ENUMERATION(node)) {
        return wrongKind(name, "string");
    }
    GErrorBox error;
    const qint64 length = arv_gc_string_get_max_length(ARV_GC_STRING(node), error.next());
    if (error.failed()) {
        return error.error(QString::fromUtf8(name));
    }
    // A String that is a constant has no register and no limit.
    if (length < 0 || (length > MAX_STRING && length != INT_MAX64)) {
        return {
            NODE_LOGICAL,
            QStringLiteral("%1 has a length of %2 bytes").arg(QString::fromUtf8(name)).arg(length)};
    }
    *maxLength = qMin(length, MAX_STRING);
    return {};
}

DeviceError NodeReader::string(const GcSession &session, const QByteArray &name, QString *out,
                               qint64 *maxLength)
{
    DeviceError failure = AccessMode::requireReadable(session, name);
    qint64 length = 0;
    if (!failure.failed()) {
        failure = stringLength(session, name, &length);
    }
    if (failure.failed()) {
        return failure;
    }
    GErrorBox error;
    ArvGcNode *node = arv_gc_get_node(session.gc, name.constData());
    const char *text = arv_gc_string_get_value(ARV_GC_STRING(node), error.next());
    // After a failure the pointer is not a text at all.
    if (error.failed()) {
        return error.error(QString::fromUtf8(name));
    }
    *out = QString::fromUtf8(text);
    if (maxLength) {
        *maxLength = length;
    }
    return {};
}
