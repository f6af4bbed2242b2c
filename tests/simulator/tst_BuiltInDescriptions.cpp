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
    void everyFeatureReads_data() { addDevices(); }
    void everyFeatureReads();
    void instancesDiffer();

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

QTEST_GUILESS_MAIN(tst_BuiltInDescriptions)
#include "tst_BuiltInDescriptions.moc"
