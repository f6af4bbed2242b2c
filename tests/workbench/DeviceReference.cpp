#include "tests/workbench/DeviceReference.h"

#include "host/devicetask/CameraHost.h"
#include "host/simulator/SimulatedDevices.h"

#include <QXmlStreamReader>

#include <arv.h>

namespace {

using DeviceReference::Value;

/// Tags by name.
QMap<QString, QString> tagsOf(const QByteArray &description)
{
    QXmlStreamReader reader(description);
    QMap<QString, QString> tags;
    while (!reader.atEnd()) {
        const bool isNode = reader.readNext() == QXmlStreamReader::StartElement
            && reader.name() != QLatin1String("EnumEntry");
        const QString name = reader.attributes().value(QLatin1String("Name")).toString();
        if (isNode && !name.isEmpty()) {
            tags.insert(name, reader.name().toString());
        }
    }
    return tags;
}

bool isReadable(ArvGcNode *node)
{
    ArvGcFeatureNode *feature = ARV_GC_FEATURE_NODE(node);
    return arv_gc_feature_node_is_implemented(feature, nullptr)
        && arv_gc_feature_node_is_available(feature, nullptr)
        && arv_gc_feature_node_get_actual_access_mode(feature) != ARV_GC_ACCESS_MODE_WO;
}

QVariant read(ArvGcNode *node, const QString &tag, Value &out)
{
    GError *error = nullptr;
    QVariant value;
    if (tag == QLatin1String("Integer") || tag == QLatin1String("IntReg")) {
        ArvGcInteger *integer = ARV_GC_INTEGER(node);
        value = qint64(arv_gc_integer_get_value(integer, &error));
        out.min = qint64(arv_gc_integer_get_min(integer, nullptr));
        out.max = qint64(arv_gc_integer_get_max(integer, nullptr));
        out.inc = qint64(arv_gc_integer_get_inc(integer, nullptr));
    } else if (tag == QLatin1String("Float")) {
        ArvGcFloat *number = ARV_GC_FLOAT(node);
        value = arv_gc_float_get_value(number, &error);
        out.min = arv_gc_float_get_min(number, nullptr);
        out.max = arv_gc_float_get_max(number, nullptr);
    } else if (tag == QLatin1String("Boolean")) {
        value = bool(arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), &error));
    } else if (tag == QLatin1String("Enumeration")) {
        value = qint64(arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), &error));
    } else if (tag == QLatin1String("StringReg")) {
        value = QString::fromUtf8(arv_gc_string_get_value(ARV_GC_STRING(node), &error));
    }
    if (error) {
        g_error_free(error);
        return QVariant();
    }
    return value;
}

} // namespace

QMap<QString, Value> DeviceReference::readFeatures(const QString &builtInId)
{
    const SimulatedDevices::Simulated simulated = SimulatedDevices::builtIn(builtInId);
    ArvDevice *device = simulated.source->create(nullptr);
    const QByteArray xml = simulated.control->description();
    ArvGc *gc = arv_gc_new(device, xml.constData(), static_cast<size_t>(xml.size()));
    arv_gc_set_register_cache_policy(gc, ARV_REGISTER_CACHE_POLICY_DISABLE);
    QMap<QString, Value> values;
    const QMap<QString, QString> tags = tagsOf(xml);
    for (auto it = tags.cbegin(); it != tags.cend(); ++it) {
        ArvGcNode *node = arv_gc_get_node(gc, it.key().toUtf8().constData());
        if (node && ARV_IS_GC_FEATURE_NODE(node)) {
            Value value;
            value.readable = isReadable(node);
            value.value = value.readable ? read(node, *it, value) : QVariant();
            values.insert(it.key(), value);
        }
    }
    g_object_unref(gc);
    g_object_unref(device);
    return values;
}
