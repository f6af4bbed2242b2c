#include "OpenedDevice.h"

#include "host/devicetask/CameraHost.h"

OpenedDevice::OpenedDevice(const SimulatedDevices::Simulated &simulated)
{
    GError *error = nullptr;
    m_pDevice = simulated.source->create(&error);
    finish(error);
}

OpenedDevice::~OpenedDevice()
{
    g_clear_object(&m_pDevice);
}

ArvGcNode *OpenedDevice::node(const QString &name) const
{
    return arv_device_get_feature(m_pDevice, name.toUtf8().constData());
}

qint64 OpenedDevice::integer(const QString &name)
{
    return ask([&](GError **e) { return arv_gc_integer_get_value(ARV_GC_INTEGER(node(name)), e); });
}

double OpenedDevice::number(const QString &name)
{
    return ask([&](GError **e) { return arv_gc_float_get_value(ARV_GC_FLOAT(node(name)), e); });
}

bool OpenedDevice::boolean(const QString &name)
{
    return ask([&](GError **e) { return arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node(name)), e); });
}

QString OpenedDevice::text(const QString &name)
{
    return ask([&](GError **e) {
        return QString::fromUtf8(arv_gc_string_get_value(ARV_GC_STRING(node(name)), e));
    });
}

QVariant OpenedDevice::value(const QString &name)
{
    ArvGcNode *const found = node(name);
    if (ARV_IS_GC_BOOLEAN(found)) {
        return boolean(name);
    }
    if (ARV_IS_GC_ENUMERATION(found)) {
        return qint64(ask([&](GError **e) {
            return arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(found), e);
        }));
    }
    if (ARV_IS_GC_STRING(found)) {
        return text(name);
    }
    if (ARV_IS_GC_FLOAT(found) && !ARV_IS_GC_INTEGER(found)) {
        return number(name);
    }
    return ARV_IS_GC_INTEGER(found) ? QVariant(integer(name)) : QVariant();
}

bool OpenedDevice::setInteger(const QString &name, qint64 value)
{
    GError *error = nullptr;
    ArvGcNode *found = node(name);
    if (ARV_IS_GC_BOOLEAN(found)) {
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(found), value != 0, &error);
    } else if (ARV_IS_GC_ENUMERATION(found)) {
        arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(found), value, &error);
    } else {
        arv_gc_integer_set_value(ARV_GC_INTEGER(found), value, &error);
    }
    return finish(error);
}

bool OpenedDevice::setNumber(const QString &name, double value)
{
    GError *error = nullptr;
    arv_gc_float_set_value(ARV_GC_FLOAT(node(name)), value, &error);
    return finish(error);
}

bool OpenedDevice::setText(const QString &name, const QString &value)
{
    GError *error = nullptr;
    arv_gc_string_set_value(ARV_GC_STRING(node(name)), value.toUtf8().constData(), &error);
    return finish(error);
}

bool OpenedDevice::execute(const QString &name)
{
    GError *error = nullptr;
    arv_gc_command_execute(ARV_GC_COMMAND(node(name)), &error);
    return finish(error);
}

bool OpenedDevice::read(quint64 address, quint32 length, QByteArray *bytes)
{
    GError *error = nullptr;
    QByteArray buffer(int(length), '\0');
    arv_device_read_memory(m_pDevice, address, length, buffer.data(), &error);
    if (bytes) {
        *bytes = buffer;
    }
    return finish(error);
}

bool OpenedDevice::write(quint64 address, const QByteArray &bytes)
{
    GError *error = nullptr;
    QByteArray buffer = bytes;
    arv_device_write_memory(m_pDevice, address, quint32(buffer.size()), buffer.data(), &error);
    return finish(error);
}

bool OpenedDevice::flag(gboolean (*question)(ArvGcFeatureNode *, GError **), const QString &name)
{
    return ask([&](GError **e) { return question(ARV_GC_FEATURE_NODE(node(name)), e); });
}

bool OpenedDevice::finish(GError *error)
{
    m_strError = error ? QString::fromUtf8(error->message) : QString();
    m_nErrorCode = error ? error->code : -1;
    g_clear_error(&error);
    return m_strError.isEmpty();
}
