#include "OpenedDevice.h"

#include <QMap>
#include <QSet>
#include <QtTest>

#include <cmath>
#include <cstring>

namespace {

/// How one value lies in the memory, written down here by hand.
struct Layout
{
    const char *feature;
    const char *reg; ///< register node, or the comment of a StructReg
    int element;
    char kind; ///< 'u'nsigned, 's'igned, 'f'loat
    int length;
    bool little;
    int shift;
    int width; ///< 0: the whole register
    double scale; ///< value = raw * scale + offset
    double offset;
    double factory;
};

// A GenICam integer has 64 bits and a sign, so that registers of 8 bytes are always signed.
const Layout kLayouts[] = {
    {"Width", "WidthReg", 0, 'u', 4, false, 0, 0, 1, 0, 2448},
    {"ADCBitDepth", "ADCBitDepthReg", 0, 'u', 1, false, 0, 0, 1, 0, 10},
    {"DeviceLinkSpeed", "DeviceLinkSpeedReg", 0, 's', 8, false, 0, 0, 1, 0, 125000000},
    {"GevMACAddress", "GevMACAddressReg", 0, 's', 8, false, 0, 0, 1, 0, double(0x0253494D0001)},
    {"DigitalShift", "DigitalShiftReg", 0, 's', 1, false, 0, 0, 1, 0, -1},
    {"EncoderValue", "EncoderValueReg", 0, 's', 4, true, 0, 0, 1, 0, -1250},
    {"EncoderDrift", "EncoderDriftReg", 0, 's', 4, true, 16, 12, 1, 0, -37},
    {"GevSCPSPacketSize", "GevSCPSPacketSizeReg", 0, 'u', 4, false, 0, 16, 1, 0, 1500},
    {"GevSCPSDoNotFragment", "GevSCPSDoNotFragmentReg", 0, 'u', 4, false, 30, 1, 1, 0, 1},
    {"ReverseY", "ReverseYReg", 0, 'u', 4, true, 1, 1, 1, 0, 1},
    {"SharpnessEnable", "SharpnessEnableReg", 0, 'u', 4, false, 4, 1, -1, 1, 1},
    {"SensorTaps", "SensorTapsReg", 0, 'u', 4, false, 8, 4, 1, 0, 4},
    {"DeviceSFNCVersionMajor", "SfncVersionWord", 0, 'u', 4, true, 16, 8, 1, 0, 2},
    {"AcquisitionBurstFrameCount", "BurstFrameCountRaw", 0, 'u', 2, true, 0, 0, 1, 1, 1},
    {"DeviceLinkThroughputLimit", "LinkThroughputKiloReg", 0, 'u', 4, false, 0, 0, 1000, 0,
     118000000},
    {"ExposureTime", "ExposureTimeRaw", 0, 'u', 4, false, 0, 0, 0.1, 0, 5000},
    {"BlackLevel", "BlackLevelRaw", 0, 's', 2, false, 0, 0, 0.125, 0, -3},
    {"DeviceSupplyVoltage", "DeviceSupplyMillivoltsReg", 0, 'u', 2, false, 0, 0, 0.001, 0, 23.95},
    {"Gain", "GainReg", 0, 'f', 4, false, 0, 0, 1, 0, 6.5},
    {"NoiseReduction", "NoiseReductionReg", 0, 'f', 4, true, 0, 0, 1, 0, double(0.35f)},
    {"Gamma", "GammaReg", 0, 'f', 8, false, 0, 0, 1, 0, 0.7},
    {"ShadingCoefficient", "ShadingCoefficientReg", 0, 'f', 8, true, 0, 0, 1, 0, -0.125},
    {"TriggerDelay", "TriggerDelayReg", 1, 'f', 8, true, 0, 0, 1, 0, 0},
    {"LUTValue", "LUTValueReg", 256, 'u', 4, false, 0, 0, 1, 0, 256},
    {"DefectPixelY", "DefectPixelYReg", 0, 'u', 2, true, 0, 0, 1, 0, 137},
    {"LineInverter", "LineInverterReg", 0, 'u', 1, false, 0, 0, 1, 0, 0},
    {"LineStatus", "LineStatusWord", 0, 'u', 4, false, 0, 1, 1, 0, 1},
    {"SensorStatusRegister", "SensorStatusRegister", 0, 'u', 4, true, 0, 0, 1, 0, 2147483713.0},
};

double decoded(const Layout &row, const QByteArray &bytes)
{
    quint64 raw = 0;
    for (int i = 0; i < row.length; ++i) {
        raw |= quint64(quint8(bytes.at(i))) << 8 * (row.little ? i : row.length - 1 - i);
    }
    if (row.kind == 'f') {
        double wide = 0;
        float narrow = 0;
        const auto bits = quint32(raw);
        std::memcpy(&wide, &raw, sizeof wide);
        std::memcpy(&narrow, &bits, sizeof narrow);
        return (row.length == 8 ? wide : double(narrow)) * row.scale + row.offset;
    }
    const int width = row.width ? row.width : row.length * 8;
    const double modulus = std::ldexp(1.0, width);
    raw >>= row.shift;
    double value = width == 64 ? double(raw) : double(raw & ((quint64(1) << width) - 1));
    if (row.kind == 's' && value >= modulus / 2) {
        value -= modulus;
    }
    return value * row.scale + row.offset;
}

} // namespace

/// The values that Aravis works out from the description of area-camera, against its memory.
class tst_AreaCameraValues : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void valueIsThatOfTheMemory_data();
    void valueIsThatOfTheMemory();
    void rangesHoldTheValue();
    void rangesFollowEachOther();
    void selectorsChooseTheirElement_data();
    void selectorsChooseTheirElement();
    void conditionsFollowTheirNodes_data();
    void conditionsFollowTheirNodes();
    void entriesComeAndGo();
    void stringsReadAndWrite();

private:
    quint64 addressOf(const Layout &row) const;
    QStringList availableEntries(const char *name);

    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
    QDomDocument m_document; ///< the same for every device
    QHash<QString, QDomElement> m_nodes;
};

void tst_AreaCameraValues::initTestCase()
{
    m_document = parsedDescription(SimulatedDevices::builtIn(QStringLiteral("area-camera")));
    m_nodes = namedElements(m_document);
}

void tst_AreaCameraValues::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    m_simulated.control->setQuiet(true);
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
}

quint64 tst_AreaCameraValues::addressOf(const Layout &row) const
{
    const QString address = m_nodes.value(row.reg).firstChildElement("Address").text();
    return address.toULongLong(nullptr, 0) + quint64(row.element * row.length);
}

void tst_AreaCameraValues::valueIsThatOfTheMemory_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(kLayouts)); ++i) {
        QTest::addRow("%s", kLayouts[i].feature) << i;
    }
}

void tst_AreaCameraValues::valueIsThatOfTheMemory()
{
    QFETCH(int, row);
    const Layout &layout = kLayouts[row];
    const quint64 address = addressOf(layout);
    const double factory = m_pDevice->value(layout.feature).toDouble();
    QCOMPARE(factory, layout.factory);
    QCOMPARE(decoded(layout, m_simulated.control->peek(address, quint32(layout.length))), factory);

    // Other bits, each byte different; floats stay ordinary numbers.
    QByteArray bytes = QByteArray::fromHex("bfd3a59611c7e80d").left(layout.length);
    if (layout.kind == 'f' && layout.little) {
        std::reverse(bytes.begin(), bytes.end());
    }
    if (ARV_IS_GC_BOOLEAN(m_pDevice->node(layout.feature)) && !layout.width) {
        bytes =
            QByteArray(1, factory != 0 ? '\0' : '\1'); // nothing between the values of on and off
    }
    m_simulated.control->poke(address, bytes);
    const double value = m_pDevice->value(layout.feature).toDouble();
    QVERIFY2(m_pDevice->m_strError.isEmpty(), qPrintable(m_pDevice->m_strError));
    QCOMPARE(value, decoded(layout, bytes));
}

void tst_AreaCameraValues::rangesHoldTheValue()
{
    const QStringList features = elementTexts(m_document, QStringLiteral("pFeature"));
    int checked = 0;
    for (const QString &name : features) {
        ArvGcNode *node = m_pDevice->node(name);
        const QDomElement element = m_nodes.value(name);
        const bool isInteger = element.tagName() == "Integer";
        if (!isInteger && element.tagName() != "Float") {
            continue;
        }
        double value = 0;
        double min = 0;
        double max = 0;
        double inc = 1;
        GError *errors[4] = {};
        if (isInteger) {
            value = double(arv_gc_integer_get_value(ARV_GC_INTEGER(node), &errors[0]));
            min = double(arv_gc_integer_get_min(ARV_GC_INTEGER(node), &errors[1]));
            max = double(arv_gc_integer_get_max(ARV_GC_INTEGER(node), &errors[2]));
            inc = double(arv_gc_integer_get_inc(ARV_GC_INTEGER(node), &errors[3]));
        } else {
            value = arv_gc_float_get_value(ARV_GC_FLOAT(node), &errors[0]);
            min = arv_gc_float_get_min(ARV_GC_FLOAT(node), &errors[1]);
            max = arv_gc_float_get_max(ARV_GC_FLOAT(node), &errors[2]);
        }
        // A formula has no limits of its own and a bit field no step; Aravis answers both with an error.
        const QString valueTag =
            m_nodes.value(element.firstChildElement("pValue").text()).tagName();
        const bool isFormula = valueTag.endsWith("SwissKnife");
        const bool isField = valueTag == "MaskedIntReg";
        const bool isLimited = !errors[1] && !errors[2];
        for (GError *error : errors) {
            const bool isMissingLimit = (isFormula || (isField && error == errors[3]))
                && element.firstChildElement("Min").isNull()
                && g_error_matches(error, ARV_GC_ERROR, ARV_GC_ERROR_PROPERTY_NOT_DEFINED);
            QVERIFY2(!error || isMissingLimit,
                     qPrintable(name + ": " + QString::fromUtf8(error ? error->message : "")));
            g_clear_error(&error);
        }
        if (isLimited) {
            ++checked;
            QVERIFY2(min <= value && value <= max, qPrintable(name));
            QVERIFY2(!isInteger || (inc >= 1 && std::fmod(value - min, inc) == 0),
                     qPrintable(name));
        }
    }
    QVERIFY(checked > 110);
}

void tst_AreaCameraValues::rangesFollowEachOther()
{
    const auto max = [this](const char *name) {
        return arv_gc_integer_get_max(ARV_GC_INTEGER(m_pDevice->node(name)), nullptr);
    };
    QCOMPARE(max("Width"), qint64(2592 - 72));
    QCOMPARE(max("OffsetX"), qint64(2592 - 2448));
    QVERIFY(m_pDevice->setInteger("Width", 1024));
    QCOMPARE(max("OffsetX"), qint64(2592 - 1024));
    QVERIFY(m_pDevice->setInteger("BinningHorizontal", 2));
    QCOMPARE(m_pDevice->integer("WidthMax"), qint64(1296));
    QCOMPARE(max("Width"), qint64(1296 - 72));
    // a larger binning factor draws the region after it
    QVERIFY(m_pDevice->setInteger("BinningHorizontal", 4));
    QCOMPARE(m_pDevice->integer("Width"), qint64(648));
    QCOMPARE(m_pDevice->integer("OffsetX"), qint64(0));
}

void tst_AreaCameraValues::selectorsChooseTheirElement_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("feature");
    QTest::addColumn<double>("expected");
    QTest::newRow("pIndex, 2 bytes") << "BlackLevelSelector" << 2 << "BlackLevel" << 2.0;
    QTest::newRow("pIndex, 8 byte float") << "TimerSelector" << 1 << "TimerDuration" << 2500.5;
    QTest::newRow("pIndex over Integer")
        << "DefectPixelIndex" << 3 << "DefectPixelX" << double(137 + 3 * 409);
    QTest::newRow("pAddress") << "CounterSelector" << 1 << "CounterDuration" << 1000.0;
    QTest::newRow("pAddress of two selectors")
        << "LUTSelector" << 1 << "LUTValue" << double(1023 - 256);
    QTest::newRow("bit of a word") << "UserOutputSelector" << 2 << "UserOutputValue" << 0.0;
}

void tst_AreaCameraValues::selectorsChooseTheirElement()
{
    QFETCH(QString, selector);
    QFETCH(int, position);
    QFETCH(QString, feature);
    QFETCH(double, expected);
    QVERIFY(m_pDevice->setInteger(selector, position));
    QCOMPARE(m_pDevice->value(feature).toDouble(), expected);
    QVERIFY(elementTexts(m_document, "pSelected").contains(feature));
}

void tst_AreaCameraValues::conditionsFollowTheirNodes_data()
{
    QTest::addColumn<QString>("cause");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("feature");
    QTest::addColumn<bool>("asksLock");
    QTest::addColumn<bool>("before");
    QTest::newRow("transport layer lock") << "TLParamsLocked" << 1 << "Width" << true << false;
    QTest::newRow("lock by two conditions")
        << "ExposureMode" << 0 << "ExposureTime" << true << false;
    QTest::newRow("lock by a selector") << "UserSetSelector" << 1 << "UserSetSave" << true << true;
    QTest::newRow("available by a mode")
        << "AcquisitionMode" << 2 << "AcquisitionFrameCount" << false << false;
    QTest::newRow("unavailable by a bypass")
        << "SharpnessEnable" << 0 << "Sharpness" << false << true;
}

void tst_AreaCameraValues::conditionsFollowTheirNodes()
{
    QFETCH(QString, cause);
    QFETCH(int, value);
    QFETCH(QString, feature);
    QFETCH(bool, asksLock);
    QFETCH(bool, before);
    const auto question =
        asksLock ? arv_gc_feature_node_is_locked : arv_gc_feature_node_is_available;
    QCOMPARE(m_pDevice->flag(question, feature), before);
    QVERIFY2(m_pDevice->setInteger(cause, value), qPrintable(m_pDevice->m_strError));
    QCOMPARE(m_pDevice->flag(question, feature), !before);
}

QStringList tst_AreaCameraValues::availableEntries(const char *name)
{
    guint count = 0;
    const char **names = arv_gc_enumeration_dup_available_string_values(
        ARV_GC_ENUMERATION(m_pDevice->node(name)), &count, nullptr);
    QStringList entries;
    for (guint i = 0; i < count; ++i) {
        entries.append(QString::fromUtf8(names[i]));
    }
    g_free(names);
    entries.sort();
    return entries;
}

void tst_AreaCameraValues::entriesComeAndGo()
{
    QCOMPARE(availableEntries("PixelFormat"), (QStringList{"Mono10", "Mono10p", "Mono8"}));
    QVERIFY(m_pDevice->setInteger("ADCBitDepth", 12));
    QCOMPARE(availableEntries("PixelFormat"),
             (QStringList{"Mono10", "Mono10p", "Mono12", "Mono12p", "Mono8"}));
    QVERIFY(m_pDevice->setInteger("PixelFormat", 0x010C0047));
    QCOMPARE(m_pDevice->integer("PixelSize"), qint64(12));
    QVERIFY(m_pDevice->setInteger("ADCBitDepth", 8));
    QCOMPARE(availableEntries("PixelFormat"), QStringList{"Mono8"});
    QCOMPARE(m_pDevice->value("PixelFormat").toLongLong(), qint64(0x01080001));
}

void tst_AreaCameraValues::stringsReadAndWrite()
{
    QCOMPARE(m_pDevice->text("DeviceModelName"), QStringLiteral("SIM-A2500"));
    QVERIFY(m_pDevice->setText("DeviceUserID", "Halle 3"));
    QCOMPARE(m_simulated.control->peek(0xE8, 8), QByteArray("Halle 3\0", 8));
    // a register that is full has no end mark
    m_simulated.control->poke(0xE8, QByteArray(16, 'z'));
    QCOMPARE(m_pDevice->text("DeviceUserID"), QString(16, 'z'));
}

QTEST_GUILESS_MAIN(tst_AreaCameraValues)
#include "tst_AreaCameraValues.moc"
