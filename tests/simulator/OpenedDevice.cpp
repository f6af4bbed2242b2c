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

QVariant OpenedDevice::value(const QString &name)
{
    ArvGcNode *const found = node(name);
    GError *error = nullptr;
    QVariant value;
    if (ARV_IS_GC_BOOLEAN(found)) {
        value = bool(arv_gc_boolean_get_value(ARV_GC_BOOLEAN(found), &error));
    } else if (ARV_IS_GC_ENUMERATION(found)) {
        value = qint64(arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(found), &error));
    } else if (ARV_IS_GC_STRING(found)) {
        value = QString::fromUtf8(arv_gc_string_get_value(ARV_GC_STRING(found), &error));
    } else if (ARV_IS_GC_FLOAT(found) && !ARV_IS_GC_INTEGER(found)) {
        value = arv_gc_float_get_value(ARV_GC_FLOAT(found), &error);
    } else if (ARV_IS_GC_INTEGER(found)) {
        value = qint64(arv_gc_integer_get_value(ARV_GC_INTEGER(found), &error));
    }
    finish(error);
    return value;
}

bool OpenedDevice::set(const QString &name, const QVariant &value)
{
    ArvGcNode *const found = node(name);
    GError *error = nullptr;
    if (ARV_IS_GC_BOOLEAN(found)) {
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(found), value.toBool(), &error);
    } else if (ARV_IS_GC_ENUMERATION(found)) {
        arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(found), value.toLongLong(), &error);
    } else if (ARV_IS_GC_STRING(found)) {
        arv_gc_string_set_value(ARV_GC_STRING(found), value.toByteArray().constData(), &error);
    } else if (ARV_IS_GC_FLOAT(found) && !ARV_IS_GC_INTEGER(found)) {
        arv_gc_float_set_value(ARV_GC_FLOAT(found), value.toDouble(), &error);
    } else {
        arv_gc_integer_set_value(ARV_GC_INTEGER(found), value.toLongLong(), &error);
    }
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
    GError *error = nullptr;
    const bool answer = question(ARV_GC_FEATURE_NODE(node(name)), &error);
    finish(error);
    return answer;
}

bool OpenedDevice::finish(GError *error)
{
    m_strError = error ? QString::fromUtf8(error->message) : QString();
    m_nErrorCode = error ? error->code : -1;
    g_clear_error(&error);
    return m_strError.isEmpty();
}
