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
    void checkFindsNothing_data() { addDevices(); }
    void checkFindsNothing();
    void namesAreUniqueAndReferencesResolve_data() { addDevices(); }
    void namesAreUniqueAndReferencesResolve();
    void featuresCarryAllTexts_data() { addDevices(); }
    void featuresCarryAllTexts();
    void translationsAreComplete_data() { addDevices(); }
    void translationsAreComplete();
    void everyRegisterAnswers_data() { addDevices(); }
    void everyRegisterAnswers();
    void listsTheDevices();

private:
    static void addDevices();
    void open();

    SimulatedDevices::Simulated m_simulated;
    QDomDocument m_document;
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
    m_simulated = SimulatedDevices::builtIn(device);
    QVERIFY(m_simulated.control);
    QCOMPARE(m_simulated.source->deviceType, type);
    m_document = parsedDescription(m_simulated);
    m_features = elementTexts(m_document, QStringLiteral("pFeature"));
    m_nodes = namedElements(m_document);
}

void tst_BuiltInDescriptions::checkFindsNothing()
{
    open();
    NodeTable table;
    QString reason;
    QVERIFY2(NodeTableReader::read(m_simulated.control->description(), &table, &reason),
             qPrintable(reason));
    const QVector<NodeFault> faults = NodeTableCheck::findProblems(&table);
    for (const NodeFault &fault : faults) {
        qWarning("line %d, %s: %s", fault.line, fault.node.constData(), fault.reason.constData());
    }
    QVERIFY(faults.isEmpty());
}

void tst_BuiltInDescriptions::namesAreUniqueAndReferencesResolve()
{
    open();
    static const QRegularExpression kReference(QStringLiteral("^p[A-Z]"));
    QFETCH(int, features);
    int leaves = 0;
    for (const QString &name : qAsConst(m_features)) {
        QVERIFY2(m_nodes.contains(name), qPrintable(name));
        leaves += m_nodes.value(name).tagName() == "Category" ? 0 : 1;
    }
    QVERIFY2(leaves >= features, qPrintable(QString::number(leaves)));
    QSet<QString> seen;
    const QList<QDomElement> all = allElements(m_document);
    for (const QDomElement &element : all) {
        if (kReference.match(element.tagName()).hasMatch()) {
            QVERIFY2(m_nodes.contains(element.text()),
                     qPrintable(element.tagName() + ' ' + element.text()));
        }
        static const QSet<QString> kNotNodes = {"EnumEntry", "pVariable", "RegisterDescription"};
        if (element.hasAttribute("Name") && !kNotNodes.contains(element.tagName())) {
            QVERIFY2(!seen.contains(element.attribute("Name")),
                     qPrintable(element.attribute("Name")));
            seen.insert(element.attribute("Name"));
        }
    }
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

void tst_BuiltInDescriptions::listsTheDevices()
{
    QCOMPARE(SimulatedDevices::builtInIds(),
             (QStringList{"area-camera", "code-reader", "line-camera", "grabber-camera"}));
}

QTEST_GUILESS_MAIN(tst_BuiltInDescriptions)
#include "tst_BuiltInDescriptions.moc"
