#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

/// What the description of every built-in device has to hold, whatever the device is.
class tst_BuiltInDescriptions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void isSound_data() { addDevices(); }
    void isSound();
    void featuresCarryAllTexts_data() { addDevices(); }
    void featuresCarryAllTexts();
    void translationsAreComplete_data() { addDevices(); }
    void translationsAreComplete();
    void everyRegisterAnswers_data() { addDevices(); }
    void everyRegisterAnswers();
    void everyFeatureReads_data() { addDevices(); }
    void everyFeatureReads();
    void rangesHoldTheValue_data() { addDevices(); }
    void rangesHoldTheValue();
    void registersNeverOverlap();
    void instancesDiffer();
    void olderNamesTakeTheirPlace();

private:
    static void addDevices();
    void open();

    QHash<QString, SimulatedDevices::Simulated> m_devices; ///< those that were opened before
    QHash<QString, QDomDocument> m_documents;
    SimulatedDevices::Simulated m_simulated;
    QStringList m_features;
    QHash<QString, QDomElement> m_nodes;
};

void tst_BuiltInDescriptions::addDevices()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<unsigned int>("type");
    QTest::addColumn<int>("features");
    QTest::newRow("area-camera") << "area-camera" << 1u << 180;
    QTest::newRow("code-reader") << "code-reader" << 1u << 350;
    QTest::newRow("code-reader-older") << "code-reader-older" << 1u << 350;
    QTest::newRow("code-reader-16") << "code-reader-16" << 1u << 350;
    QTest::newRow("code-reader-17") << "code-reader-17" << 1u << 350;
    QTest::newRow("code-reader-without-tuning") << "code-reader-without-tuning" << 1u << 350;
    QTest::newRow("line-camera") << "line-camera" << 4u << 100;
    QTest::newRow("grabber-camera") << "grabber-camera" << 8u << 60;
}

void tst_BuiltInDescriptions::open()
{
    QFETCH(QString, device);
    QFETCH(unsigned int, type);
    if (!m_devices.contains(device)) {
        m_devices[device] = SimulatedDevices::builtIn(device);
        QVERIFY(m_devices[device].control);
        m_documents[device] = parsedDescription(m_devices[device]);
    }
    m_simulated = m_devices[device];
    QCOMPARE(m_simulated.source->deviceType, type);
    m_features = elementTexts(m_documents[device], QStringLiteral("pFeature"));
    m_nodes = namedElements(m_documents[device]);
}

void tst_BuiltInDescriptions::isSound()
{
    open();
    NodeTable table;
    QString reason;
    QVERIFY2(NodeTableReader::read(m_simulated.control->description(), &table, &reason),
             qPrintable(reason));
    for (const NodeFault &fault : NodeTableCheck::findProblems(&table)) {
        QFAIL((fault.node + ": " + fault.reason).constData());
    }
    QFETCH(int, features);
    int leaves = 0;
    for (const QString &name : qAsConst(m_features)) {
        QVERIFY2(m_nodes.contains(name), qPrintable(name));
        leaves += m_nodes.value(name).tagName() == "Category" ? 0 : 1;
    }
    QVERIFY2(leaves >= features, qPrintable(QString::number(leaves)));
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        if (it->tagName() == "Category" && it.key() != "Root") {
            QVERIFY2(m_features.contains(it.key()), qPrintable(it.key()));
        }
    }
}

void tst_BuiltInDescriptions::featuresCarryAllTexts()
{
    open();
    for (const QString &name : qAsConst(m_features)) {
        const QDomElement feature = m_nodes.value(name);
        for (const char *tag : {"ToolTip", "Description", "DisplayName", "Visibility"}) {
            QVERIFY2(!feature.firstChildElement(tag).text().isEmpty(),
                     qPrintable(name + ' ' + tag));
        }
        if (feature.tagName() == "Enumeration") {
            QSet<QString> values;
            const QDomNodeList entries = feature.elementsByTagName("EnumEntry");
            for (int i = 0; i < entries.size(); ++i) {
                values.insert(entries.at(i).firstChildElement("Value").text());
            }
            QVERIFY2(entries.size() >= 2 && values.size() == entries.size(), qPrintable(name));
        }
    }
}

void tst_BuiltInDescriptions::translationsAreComplete()
{
    open();
    static const QRegularExpression kHan(QStringLiteral("[\\x{4e00}-\\x{9fff}]"));
    // Proper names that stay as they are in Chinese.
    static const QSet<QString> kSame = {
        "DHCP", "GigE Vision", "USB3 Vision", "Camera Link", "RS232",    "RS485", "JPEG",
        "TTL",  "UTF8",        "ASCII",       "Bayer RG",    "Bayer GB", "OK/NG"};
    const QJsonObject json = QJsonDocument::fromJson(m_simulated.source->translations).object();
    const auto isChinese = [](const QString &text) {
        return kSame.contains(text) || text.contains(kHan);
    };
    for (const QString &name : qAsConst(m_features)) {
        const QJsonObject node = json.value(name).toObject();
        QVERIFY2(isChinese(node.value("displayName").toString()), qPrintable(name));
        const QString description = node.value("description").toString();
        QVERIFY2(description.contains(kHan) && description.endsWith(QChar(0x3002)),
                 qPrintable(name));
        const QDomNodeList entries = m_nodes.value(name).elementsByTagName("EnumEntry");
        QCOMPARE(node.value("entries").toObject().size(), entries.size());
        for (int i = 0; i < entries.size(); ++i) {
            const QString entry = entries.at(i).toElement().attribute("Name");
            QVERIFY2(isChinese(node.value("entries").toObject().value(entry).toString()),
                     qPrintable(name + ' ' + entry));
        }
    }
    QCOMPARE(json.size(), QSet<QString>(m_features.cbegin(), m_features.cend()).size());
}

void tst_BuiltInDescriptions::everyRegisterAnswers()
{
    open();
    OpenedDevice device(m_simulated);
    static const QSet<QString> kRegisters = {"IntReg",    "MaskedIntReg", "FloatReg",
                                             "StringReg", "StructReg",    "Register"};
    const bool isNetwork = m_simulated.source->deviceType == 1;
    int registers = 0;
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        if (!kRegisters.contains(it->tagName())) {
            continue;
        }
        ++registers;
        const quint64 address = it->firstChildElement("Address").text().toULongLong(nullptr, 0);
        const quint32 length = it->firstChildElement("Length").text().toUInt();
        QVERIFY2(m_simulated.control->peek(address, length).size() == int(length),
                 qPrintable(it.key()));
        // Whatever passes single precision and six digits on its way comes out the same.
        QVERIFY2(address < 1000000 || it.key() == "ServiceValueReg", qPrintable(it.key()));
        if (!isNetwork && it->tagName() != "StringReg" && it->tagName() != "Register") {
            QCOMPARE(it->firstChildElement("Endianess").text(), QStringLiteral("LittleEndian"));
        }
        // Fields share their word, which may hold others that can be written.
        if (it->firstChildElement("AccessMode").text() == "RO" && it->tagName() != "MaskedIntReg") {
            device.write(address, QByteArray(int(length), '\1'));
            QCOMPARE(device.m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT));
        }
    }
    QVERIFY(registers > 50);
}

/// In Aravis, which has rules of its own.
void tst_BuiltInDescriptions::everyFeatureReads()
{
    open();
    OpenedDevice device(m_simulated);
    for (const QString &name : qAsConst(m_features)) {
        QVERIFY2(ARV_IS_GC_FEATURE_NODE(device.node(name)), qPrintable(name));
        for (const auto question :
             {arv_gc_feature_node_is_implemented, arv_gc_feature_node_is_available,
              arv_gc_feature_node_is_locked}) {
            device.flag(question, name);
            QVERIFY2(device.m_strError.isEmpty(), qPrintable(name + ": " + device.m_strError));
        }
        const QVariant value = device.value(name);
        QVERIFY2(device.m_strError.isEmpty(), qPrintable(name + ": " + device.m_strError));
        static const QSet<QString> kWithoutValue = {"Category", "Command", "Register"};
        QCOMPARE(value.isValid(), !kWithoutValue.contains(m_nodes.value(name).tagName()));
    }
}

void tst_BuiltInDescriptions::rangesHoldTheValue()
{
    open();
    OpenedDevice device(m_simulated);
    int checked = 0;
    for (const QString &name : qAsConst(m_features)) {
        ArvGcNode *const node = device.node(name);
        const bool isInteger = m_nodes.value(name).tagName() == "Integer";
        if (!isInteger && m_nodes.value(name).tagName() != "Float") {
            continue;
        }
        GError *error = nullptr; // of a formula, which has no limits of its own
        double min = 0;
        double max = 0;
        if (isInteger) {
            min = double(arv_gc_integer_get_min(ARV_GC_INTEGER(node), nullptr));
            max = double(arv_gc_integer_get_max(ARV_GC_INTEGER(node), &error));
        } else {
            min = arv_gc_float_get_min(ARV_GC_FLOAT(node), nullptr);
            max = arv_gc_float_get_max(ARV_GC_FLOAT(node), &error);
        }
        const double value = device.value(name).toDouble();
        QVERIFY2(error || (min <= value && value <= max), qPrintable(name));
        checked += error ? 0 : 1;
        g_clear_error(&error);
    }
    QVERIFY2(checked > 20, qPrintable(QString::number(checked)));
}

void tst_BuiltInDescriptions::registersNeverOverlap()
{
    m_simulated = SimulatedDevices::builtIn("area-camera");
    m_nodes = namedElements(parsedDescription(m_simulated));
    QMap<quint64, QPair<quint64, QString>> ranges; // start to end and name
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        const QDomElement address = it->firstChildElement("Address");
        if (address.isNull() || it->tagName() == "MaskedIntReg"
            || it.key() == "ExposureEndNotificationReg") {
            continue; // fields share their words, and the notification reads the first element of an array
        }
        const quint64 start = address.text().toULongLong(nullptr, 0);
        const quint64 end = start + it->firstChildElement("Length").text().toULongLong();
        QVERIFY2(end < 0xF0000, qPrintable(it.key()));
        QVERIFY2(!ranges.contains(start),
                 qPrintable(it.key() + " and " + ranges.value(start).second));
        ranges.insert(start, {end, it.key()});
    }
    QPair<quint64, QString> before{0, {}};
    for (auto it = ranges.cbegin(); it != ranges.cend(); ++it) {
        QVERIFY2(it.key() >= before.first, qPrintable(it->second + " and " + before.second));
        QVERIFY(m_simulated.control->peek(it.key(), quint32(it->first - it.key())).size() > 0);
        before = *it;
    }
}

void tst_BuiltInDescriptions::instancesDiffer()
{
    const auto first = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    const auto second = SimulatedDevices::builtIn(QStringLiteral("area-camera"), 1);
    QVERIFY(second.source->serial != first.source->serial);
    QVERIFY(second.source->name != first.source->name);
    QVERIFY(second.source->ipv4 != first.source->ipv4);
    second.control->poke(0xE8, QByteArray(16, 'x'));
    QCOMPARE(first.control->peek(0xE8, 13), QByteArray("Area camera 1"));
    OpenedDevice device(second);
    QCOMPARE(device.text("DeviceSerialNumber"), second.source->serial);
    QCOMPARE(device.integer("GevCurrentIPAddress"), qint64(second.source->ipv4));

    // Two ports of a grabber share the board.
    const auto port = [](int number) {
        return SimulatedDevices::builtIn("grabber-camera", number).source->serial;
    };
    QCOMPARE(port(1), port(0));
    QVERIFY(port(2) != port(0));
}

void tst_BuiltInDescriptions::olderNamesTakeTheirPlace()
{
    const auto older = SimulatedDevices::builtIn(QStringLiteral("code-reader-older"));
    const QStringList features = elementTexts(parsedDescription(older), QStringLiteral("pFeature"));
    const QPair<const char *, const char *> pairs[] = {
        {"StrobeLineExposeDelay", "Strobe2Delay"},
        {"StrobeLineExposeDuration", "Strobe2PulseWidth"},
        {"StrobeLinePreDelay", "FlashAheadTime"},
        {"LineDebouncerTime", "Line0Glitch"},
        {"CounterValue", "CountNumber"},
        {"HardwareTriggerActivation", "LineOutHardTriggerActive"},
        {"TcpProtocalEnable", "TcpProtocolEnable"},
        {"BcrNameEnable", "TcpBarcodeNameEnable"},
        {"TcpDstAddr", "TCPDestIp"},
        {"FlashMode", "LightMode"},
        {"PrechargeTime", "FlashAhead"},
        {"TestPattern", "TestImageModel"},
    };
    for (const auto &pair : pairs) {
        QVERIFY2(features.contains(pair.second) && !features.contains(pair.first), pair.second);
    }
}

QTEST_GUILESS_MAIN(tst_BuiltInDescriptions)
#include "tst_BuiltInDescriptions.moc"
