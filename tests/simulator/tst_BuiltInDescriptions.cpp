#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QDomDocument>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

const QRegularExpression HAN(QStringLiteral("[\\x{4e00}-\\x{9fff}]"));

bool isChinese(const QJsonValue &text)
{
    // Proper names that stay as they are.
    static const QSet<QString> SAME = {
        "DHCP", "GigE Vision", "USB3 Vision", "Camera Link", "RS232",    "RS485", "JPEG",
        "TTL",  "UTF8",        "ASCII",       "Bayer RG",    "Bayer GB", "OK/NG"};
    return SAME.contains(text.toString()) || text.toString().contains(HAN);
}

QList<QDomElement> childrenOf(const QDomElement &parent, const QString &tag = QString())
{
    QList<QDomElement> children;
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag)) {
        children.append(child);
    }
    return children;
}

/// The nodes by name, out of their groups. A StructReg has none.
void addNodes(const QDomElement &group, QHash<QString, QDomElement> &nodes)
{
    for (const QDomElement &element : childrenOf(group)) {
        nodes.insert(element.attribute("Name"), element);
        if (element.tagName() == "Group") {
            addNodes(element, nodes);
        }
    }
}

} // namespace

/// What the description of every built-in device has to hold, whatever the device is.
class tst_BuiltInDescriptions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyDevice_data();
    void everyDevice();
    void instancesDiffer();

private:
    static void checkTexts(const QDomElement &feature, const QJsonObject &chinese);
    static void checkAnswers(OpenedDevice &device, const QDomElement &feature);
};

void tst_BuiltInDescriptions::everyDevice_data()
{
    QTest::addColumn<unsigned int>("type");
    QTest::addColumn<int>("least"); // features
    QTest::newRow("area-camera") << 1u << 180;
    QTest::newRow("code-reader") << 1u << 350;
    QTest::newRow("code-reader-older") << 1u << 350;
    QTest::newRow("code-reader-without-tuning") << 1u << 350;
    QTest::newRow("line-camera") << 4u << 100;
    QTest::newRow("grabber-camera") << 8u << 60;
}

void tst_BuiltInDescriptions::everyDevice()
{
    QFETCH(int, least);
    const auto simulated = SimulatedDevices::builtIn(QTest::currentDataTag());
    QTEST(simulated.source->deviceType, "type");
    NodeTable table;
    QString reason;
    QVERIFY2(NodeTableReader::read(simulated.control->description(), &table, &reason),
             qPrintable(reason));
    for (const NodeFault &fault : NodeTableCheck::findProblems(&table)) {
        QFAIL((fault.node + ": " + fault.reason).constData());
    }
    QDomDocument document;
    QVERIFY(document.setContent(simulated.control->description()));
    QHash<QString, QDomElement> nodes;
    addNodes(document.documentElement(), nodes);
    const QJsonObject chinese = QJsonDocument::fromJson(simulated.source->translations).object();
    OpenedDevice device(simulated);
    QSet<QString> shown{"Root"};
    int leaves = 0;
    for (const QDomElement &node : qAsConst(nodes)) {
        for (const QDomElement &reference : childrenOf(node, "pFeature")) {
            const QDomElement feature = nodes.value(reference.text());
            shown.insert(reference.text());
            leaves += feature.tagName() == "Category" ? 0 : 1;
            checkTexts(feature, chinese.value(reference.text()).toObject());
            checkAnswers(device, feature);
            if (QTest::currentTestFailed()) {
                QFAIL(qPrintable(reference.text()));
            }
        }
    }
    QVERIFY2(leaves >= least, qPrintable(QString::number(leaves)));
    QCOMPARE(chinese.size(), shown.size() - 1);
    for (const QDomElement &node : qAsConst(nodes)) {
        QVERIFY(node.tagName() != "Category" || shown.contains(node.attribute("Name")));
    }
}

void tst_BuiltInDescriptions::checkTexts(const QDomElement &feature, const QJsonObject &chinese)
{
    for (const char *tag : {"ToolTip", "Description", "DisplayName", "Visibility"}) {
        QVERIFY2(!feature.firstChildElement(tag).text().isEmpty(), tag);
    }
    QVERIFY(isChinese(chinese.value("displayName")));
    const QString description = chinese.value("description").toString();
    QVERIFY(description.contains(HAN) && description.endsWith(QChar(0x3002)));
    const QJsonObject chineseEntries = chinese.value("entries").toObject();
    const QList<QDomElement> entries = childrenOf(feature, "EnumEntry");
    QCOMPARE(chineseEntries.size(), entries.size());
    QSet<QString> values;
    for (const QDomElement &entry : entries) {
        values.insert(entry.firstChildElement("Value").text());
        QVERIFY2(isChinese(chineseEntries.value(entry.attribute("Name"))),
                 qPrintable(entry.attribute("Name")));
    }
    QCOMPARE(values.size(), entries.size());
    QVERIFY(entries.size() >= 2 || feature.tagName() != "Enumeration");
}

/// In Aravis, which has rules of its own.
void tst_BuiltInDescriptions::checkAnswers(OpenedDevice &device, const QDomElement &feature)
{
    const QString name = feature.attribute("Name");
    for (const auto question : {arv_gc_feature_node_is_implemented,
                                arv_gc_feature_node_is_available, arv_gc_feature_node_is_locked}) {
        device.flag(question, name);
        QVERIFY2(device.m_strError.isEmpty(), qPrintable(device.m_strError));
    }
    const QVariant value = device.value(name);
    QVERIFY2(device.m_strError.isEmpty(), qPrintable(device.m_strError));
    static const QSet<QString> WITHOUT_VALUE = {"Category", "Command", "Register"};
    QCOMPARE(value.isValid(), !WITHOUT_VALUE.contains(feature.tagName()));
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
    QCOMPARE(device.value("DeviceSerialNumber").toString(), second.source->serial);
    QCOMPARE(device.value("GevCurrentIPAddress").toLongLong(), qint64(second.source->ipv4));

    // Two ports of a grabber share the board.
    const auto port = [](int number) {
        return SimulatedDevices::builtIn("grabber-camera", number).source->serial;
    };
    QCOMPARE(port(1), port(0));
    QVERIFY(port(2) != port(0));
}

QTEST_GUILESS_MAIN(tst_BuiltInDescriptions)
#include "tst_BuiltInDescriptions.moc"
