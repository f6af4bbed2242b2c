#include "tests/workbench/DeviceReference.h"

#include "host/devicetask/CameraHost.h"
#include "host/simulator/SimulatedDevices.h"

#include <QDomDocument>
#include <QtEndian>

#include <arv.h>

namespace {

using DeviceReference::Value;

void collect(const QDomElement &parent, QMap<QString, QDomElement> &elements)
{
    for (QDomElement element = parent.firstChildElement(); !element.isNull();
         element = element.nextSiblingElement()) {
        if (element.hasAttribute(QStringLiteral("Name"))
            && element.tagName() != QLatin1String("EnumEntry")) {
            elements.insert(element.attribute(QStringLiteral("Name")), element);
        }
        collect(element, elements);
    }
}

QMap<QString, QDomElement> elementsOf(const SimulatedDevices::Simulated &device)
{
    QDomDocument document;
    document.setContent(device.control->description());
    QMap<QString, QDomElement> elements;
    collect(document.documentElement(), elements);
    return elements;
}

QString childText(const QDomElement &element, const char *tag)
{
    return element.firstChildElement(QString::fromLatin1(tag)).text().trimmed();
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

QVariant decode(const QDomElement &reg, const SimulatorControl &control)
{
    const QString address = childText(reg, "Address");
    const bool plain = reg.elementsByTagName(QStringLiteral("Address")).size() == 1
        && reg.firstChildElement(QStringLiteral("pAddress")).isNull()
        && reg.firstChildElement(QStringLiteral("pIndex")).isNull()
        && reg.firstChildElement(QStringLiteral("IntSwissKnife")).isNull();
    bool ok = false;
    const int length = childText(reg, "Length").toInt(&ok, 0);
    if (!plain || address.isEmpty() || !ok) {
        return QVariant();
    }
    QByteArray bytes = control.peek(address.toULongLong(nullptr, 0), static_cast<quint32>(length));
    if (reg.tagName() == QLatin1String("StringReg")) {
        return QString::fromUtf8(bytes.constData(),
                                 static_cast<int>(qstrnlen(bytes.constData(), bytes.size())));
    }
    if (childText(reg, "Endianess") == QLatin1String("BigEndian")) {
        std::reverse(bytes.begin(), bytes.end());
    }
    if (reg.tagName() == QLatin1String("FloatReg")) {
        return length == 4 ? QVariant(double(qFromLittleEndian<float>(bytes.constData())))
                           : QVariant(qFromLittleEndian<double>(bytes.constData()));
    }
    if (reg.tagName() != QLatin1String("IntReg") || length > 8) {
        return QVariant();
    }
    const bool negative =
        childText(reg, "Sign") == QLatin1String("Signed") && (bytes.back() & 0x80);
    const QByteArray extended = bytes.leftJustified(8, negative ? '\xFF' : '\0');
    return qFromLittleEndian<qint64>(extended.constData());
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
    const QMap<QString, QDomElement> elements = elementsOf(simulated);
    for (auto it = elements.cbegin(); it != elements.cend(); ++it) {
        ArvGcNode *node = arv_gc_get_node(gc, it.key().toUtf8().constData());
        if (node && ARV_IS_GC_FEATURE_NODE(node)) {
            Value value;
            value.readable = isReadable(node);
            value.value = value.readable ? read(node, it->tagName(), value) : QVariant();
            values.insert(it.key(), value);
        }
    }
    g_object_unref(gc);
    g_object_unref(device);
    return values;
}

QMap<QString, QVariant> DeviceReference::decodePlainRegisters(const QString &builtInId)
{
    const SimulatedDevices::Simulated simulated = SimulatedDevices::builtIn(builtInId);
    const QMap<QString, QDomElement> elements = elementsOf(simulated);
    QMap<QString, QVariant> values;
    for (auto it = elements.cbegin(); it != elements.cend(); ++it) {
        static const QStringList NUMBERS{QStringLiteral("Integer"), QStringLiteral("Float"),
                                         QStringLiteral("Enumeration")};
        const QDomElement reg =
            NUMBERS.contains(it->tagName()) ? elements.value(childText(*it, "pValue")) : *it;
        const QVariant value = reg.isNull() ? QVariant() : decode(reg, *simulated.control);
        if (value.isValid()) {
            values.insert(it.key(), value);
        }
    }
    return values;
}
