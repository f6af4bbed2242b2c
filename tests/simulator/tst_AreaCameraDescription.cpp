#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QHash>
#include <QSet>
#include <QtTest>

/// The description of area-camera by itself: what it holds, and that it does not contradict itself.
class tst_AreaCameraDescription : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void holdsEveryKindOfFeature_data();
    void holdsEveryKindOfFeature();
    void holdsEveryWord_data();
    void holdsEveryWord();
    void countsItsFeatures();
    void registersNeverOverlap();
    void instancesDiffer();
    void unknownIdGivesNothing();

private:
    SimulatedDevices::Simulated m_simulated;
    QDomDocument m_document;
    QStringList m_features;
    QHash<QString, QDomElement> m_nodes;
};

void tst_AreaCameraDescription::initTestCase()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    QString error;
    QVERIFY2(m_document.setContent(m_simulated.control->description(), &error), qPrintable(error));
    m_features = elementTexts(m_document, QStringLiteral("pFeature"));
    const QList<QDomElement> all = allElements(m_document);
    for (const QDomElement &element : all) {
        static const QSet<QString> kNotNodes = {"EnumEntry", "pVariable", "RegisterDescription"};
        if (element.hasAttribute("Name") && !kNotNodes.contains(element.tagName())) {
            QVERIFY2(!m_nodes.contains(element.attribute("Name")),
                     qPrintable(element.attribute("Name")));
            m_nodes.insert(element.attribute("Name"), element);
        }
    }
}

void tst_AreaCameraDescription::holdsEveryKindOfFeature_data()
{
    QTest::addColumn<QString>("featureTag");
    QTest::addColumn<QString>("valueTag");
    const QPair<const char *, const char *> rows[] = {
        {"Integer", "IntReg"},
        {"Integer", "MaskedIntReg"},
        {"Integer", "StructEntry"},
        {"Integer", "IntConverter"},
        {"Integer", "IntSwissKnife"},
        {"Integer", ""},
        {"Float", "FloatReg"},
        {"Float", "Converter"},
        {"Float", "SwissKnife"},
        {"Boolean", "IntReg"},
        {"Boolean", "MaskedIntReg"},
        {"Boolean", "IntSwissKnife"},
        {"Boolean", "IntConverter"},
        {"Enumeration", "IntReg"},
        {"Enumeration", "MaskedIntReg"},
        {"Enumeration", "IntSwissKnife"},
        {"Command", "IntReg"},
        {"StringReg", ""},
        {"IntReg", ""},
        {"Category", ""},
    };
    for (const auto &row : rows) {
        QTest::addRow("%s over %s", row.first, *row.second ? row.second : "itself")
            << row.first << row.second;
    }
}

void tst_AreaCameraDescription::holdsEveryKindOfFeature()
{
    QFETCH(QString, featureTag);
    QFETCH(QString, valueTag);
    bool found = false;
    for (const QString &name : qAsConst(m_features)) {
        const QDomElement feature = m_nodes.value(name);
        const QDomElement value = m_nodes.value(feature.firstChildElement("pValue").text());
        found = found || (feature.tagName() == featureTag && value.tagName() == valueTag);
    }
    QVERIFY(found);
}

void tst_AreaCameraDescription::holdsEveryWord_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("visibilities") << "Visibility"
                                  << QStringList{"Beginner", "Expert", "Guru", "Invisible"};
    QTest::newRow("representations")
        << "Representation" << QStringList{"Linear",    "Logarithmic", "Boolean",   "PureNumber",
                                           "HexNumber", "IPV4Address", "MACAddress"};
    QTest::newRow("byte orders") << "Endianess" << QStringList{"LittleEndian", "BigEndian"};
    QTest::newRow("signs") << "Sign" << QStringList{"Signed", "Unsigned"};
    QTest::newRow("access modes") << "AccessMode" << QStringList{"RO", "WO", "RW"};
    QTest::newRow("cache modes") << "Cachable" << QStringList{"NoCache", "WriteThrough"};
    QTest::newRow("register lengths") << "Length" << QStringList{"1", "2", "4", "8"};
    QTest::newRow("locks") << "pIsLocked" << QStringList{"TLParamsLocked", "UserSetFixed"};
    for (const char *tag :
         {"pSelected", "pInvalidator", "pIsAvailable", "pIsImplemented", "pVariable", "pAddress",
          "pIndex", "PollingTime", "pMin", "pMax", "pInc", "Unit", "Bit", "OnValue"}) {
        QTest::addRow("%s", tag) << tag << QStringList();
    }
}

void tst_AreaCameraDescription::holdsEveryWord()
{
    QFETCH(QString, tag);
    QFETCH(QStringList, texts);
    const QStringList found = elementTexts(m_document, tag);
    QVERIFY(!found.isEmpty());
    for (const QString &text : qAsConst(texts)) {
        QVERIFY2(found.contains(text), qPrintable(text));
    }
}

void tst_AreaCameraDescription::countsItsFeatures()
{
    int features = 0;
    QStringList inTwo;
    QSet<QString> seen;
    for (const QString &name : qAsConst(m_features)) {
        static const QSet<QString> kTags = {"Category",    "Integer", "Float",     "Boolean",
                                            "Enumeration", "Command", "StringReg", "IntReg"};
        QVERIFY2(kTags.contains(m_nodes.value(name).tagName()), qPrintable(name));
        if (seen.contains(name)) {
            inTwo.append(name);
        }
        seen.insert(name);
        features += m_nodes.value(name).tagName() == "Category" ? 0 : 1;
    }
    QVERIFY(features >= 180);
    QCOMPARE(inTwo, (QStringList{"ExposureTime", "Gain"}));
}

void tst_AreaCameraDescription::registersNeverOverlap()
{
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

void tst_AreaCameraDescription::instancesDiffer()
{
    const auto second = SimulatedDevices::builtIn(QStringLiteral("area-camera"), 1);
    QCOMPARE(m_simulated.source->serial, QStringLiteral("SIM00000001"));
    QCOMPARE(second.source->serial, QStringLiteral("SIM00000002"));
    QVERIFY(second.source->name != m_simulated.source->name);
    QVERIFY(second.source->ipv4 != m_simulated.source->ipv4);
    QCOMPARE(second.source->deviceType, 1u);
    QCOMPARE(second.source->scanType, 1u);
    second.control->poke(0xE8, QByteArray(16, 'x'));
    QCOMPARE(m_simulated.control->peek(0xE8, 13), QByteArray("Area camera 1"));
    OpenedDevice device(second);
    QCOMPARE(device.text("DeviceSerialNumber"), second.source->serial);
    QCOMPARE(device.integer("GevCurrentIPAddress"), qint64(second.source->ipv4));
}

void tst_AreaCameraDescription::unknownIdGivesNothing()
{
    const auto none = SimulatedDevices::builtIn(QStringLiteral("no-such-camera"));
    QVERIFY(!none.control && !none.source);
    QVERIFY(!SimulatedDevices::builtInIds().contains("no-such-camera"));
}

QTEST_GUILESS_MAIN(tst_AreaCameraDescription)
#include "tst_AreaCameraDescription.moc"
