#include "host/devicetask/AccessMode.h"

#include "host/devicetask/DescriptionIndex.h"
#include "host/devicetask/GErrorBox.h"

namespace {

bool isReadable(int mode)
{
    return mode == NODE_RO || mode == NODE_RW;
}
bool isWritable(int mode)
{
    return mode == NODE_WO || mode == NODE_RW;
}

int modeOf(bool readable, bool writable)
{
    if (readable) {
        return writable ? NODE_RW : NODE_RO;
    }
    return writable ? NODE_WO : NODE_NA;
}

int fromAravis(ArvGcAccessMode mode)
{
    return modeOf(mode != ARV_GC_ACCESS_MODE_WO, mode != ARV_GC_ACCESS_MODE_RO);
}

DeviceError evaluate(const GcSession &session, const QByteArray &condition, bool *isTrue)
{
    ArvGcNode *node = arv_gc_get_node(session.gc, condition.constData());
    GErrorBox error;
    bool value = false;
    if (ARV_IS_GC_INTEGER(node)) {
        value = arv_gc_integer_get_value(ARV_GC_INTEGER(node), error.next()) != 0;
    } else if (ARV_IS_GC_BOOLEAN(node)) {
        value = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error.next()) != FALSE;
    } else {
        value = arv_gc_float_get_value(ARV_GC_FLOAT(node), error.next()) != 0.0;
    }
    if (!error.failed()) {
        *isTrue = value;
    }
    return error.error(QString::fromUtf8(condition));
}

/// Evaluates until one condition has the value `until`; `found` tells whether one had. A condition that the device
/// answered but that cannot be worked out counts as false; only a device that does not answer is an error.
DeviceError findCondition(const GcSession &session, const QVector<QByteArray> &conditions,
                          bool until, bool *found)
{
    *found = false;
    for (const QByteArray &condition : conditions) {
        bool isTrue = false;
        const DeviceError error = evaluate(session, condition, &isTrue);
        if (error.isTransport()) {
            return error;
        }
        if (isTrue == until) {
            *found = true;
            break;
        }
    }
    return {};
}

/// The node's own mode, without its conditions and what stands below it.
int ownMode(ArvGcFeatureNode *node)
{
    if (ARV_IS_GC_REGISTER(node)) {
        return fromAravis(arv_gc_feature_node_get_actual_access_mode(node));
    }
    if (ARV_IS_GC_INT_SWISS_KNIFE_NODE(node) || ARV_IS_GC_SWISS_KNIFE_NODE(node)
        || ARV_IS_GC_PORT(node)) {
        return NODE_RO;
    }
    return fromAravis(arv_gc_feature_node_get_imposed_access_mode(node));
}

/// `withLocks` false leaves the write direction undecided. The depth of the recursion is that of the references,
/// which the index has limited.
DeviceError workOut(const GcSession &session, const QByteArray &name, bool withLocks, int *mode)
{
    int result = NODE_RW;
    QByteArray current = name;
    do {
        const NodeInfo *info = session.index.find(current);
        ArvGcNode *node = arv_gc_get_node(session.gc, current.constData());
        if (!info || !info->problem.isEmpty() || !ARV_IS_GC_FEATURE_NODE(node)) {
            *mode = NODE_NI;
            return {};
        }
        bool found = false;
        DeviceError error = findCondition(session, info->implementedBy, false, &found);
        if (error.failed() || found) {
            *mode = error.failed() ? *mode : NODE_NI;
            return error;
        }
        error = findCondition(session, info->availableBy, false, &found);
        if (error.failed() || found) {
            *mode = error.failed() ? *mode : NODE_NA;
            return error;
        }
        if (ARV_IS_GC_CATEGORY(node)) {
            *mode = NODE_RO;
            return {};
        }
        const int own = ownMode(ARV_GC_FEATURE_NODE(node));
        result =
            modeOf(isReadable(result) && isReadable(own), isWritable(result) && isWritable(own));
        if (withLocks && isWritable(result)) {
            error = findCondition(session, info->lockedBy, true, &found);
            if (error.failed()) {
                return error;
            }
            result = found ? modeOf(isReadable(result), false) : result;
        }
        for (const QByteArray &variable : info->variables) {
            int variableMode = NODE_RW;
            error = workOut(session, variable, false, &variableMode);
            if (error.failed()) {
                return error;
            }
            if (!isReadable(variableMode)) {
                *mode = NODE_NA;
                return {};
            }
        }
        current = info->valueTarget;
    } while (!current.isEmpty());
    *mode = result;
    return {};
}

DeviceError requireNode(const GcSession &session, const QByteArray &name)
{
    if (name.isEmpty()) {
        return {NODE_ARGUMENT, QStringLiteral("the node's name is empty")};
    }
    const QString text = QString::fromUtf8(name);
    const NodeInfo *info = session.index.find(name);
    if (!info || !arv_gc_get_node(session.gc, name.constData())) {
        return {NODE_PROPERTY, QStringLiteral("there is no node %1").arg(text)};
    }
    if (!info->problem.isEmpty()) {
        return {NODE_LOGICAL, text + QLatin1String(": ") + QString::fromUtf8(info->problem)};
    }
    return {};
}

DeviceError require(const GcSession &session, const QByteArray &name, bool forWriting)
{
    int mode = NODE_NI;
    DeviceError error = requireNode(session, name);
    if (!error.failed()) {
        error = workOut(session, name, forWriting, &mode);
    }
    if (!error.failed() && !(forWriting ? isWritable(mode) : isReadable(mode))) {
        static const char *const DETAILS[] = {"not implemented", "not available", "write only",
                                              "read only", ""};
        error = {
            NODE_NOT_ACCESSIBLE,
            QStringLiteral("%1 is %2").arg(QString::fromUtf8(name), QLatin1String(DETAILS[mode]))};
    }
    return error;
}

} // namespace

DeviceError AccessMode::of(const GcSession &session, const QByteArray &name, int *mode)
{
    return workOut(session, name, true, mode);
}

DeviceError AccessMode::requireReadable(const GcSession &session, const QByteArray &name)
{
    return require(session, name, false);
}

DeviceError AccessMode::requireWritable(const GcSession &session, const QByteArray &name)
{
    return require(session, name, true);
}
