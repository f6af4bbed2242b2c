#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

/// The nodes of code-reader that a feature tree knows by their names: each is a feature of the kind that it is read
/// and written as, with the numbers that count.
class tst_CodeReaderNodes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void hasNode_data();
    void hasNode();
    void hasEntries_data();
    void hasEntries();
    void conditionNamesWhatItMeans_data();
    void conditionNamesWhatItMeans();
    void selectsItsFeatures_data();
    void selectsItsFeatures();
    void readsByNode();
    void olderNamesTakeTheirPlace();

private:
    SimulatedDevices::Simulated m_simulated;
    QDomDocument m_document;
    QHash<QString, QDomElement> m_nodes;
    QSet<QString> m_features;
};

namespace {

struct KindRow
{
    const char *subject;
    const char *tag;
    const char *names;
};

// One row for a subject and kind; the names are parted by blanks.
const KindRow kKinds[] = {
    {"identity", "StringReg",
     "DeviceUserID DeviceSerialNumber DeviceFirmwareVersion ZRHDeviceFirmwareVersion "
     "ZRADeviceFirmwareVersion dm_version ManualSetTime"},
    {"identity", "Integer", "ProductType BoardDeviceType"},
    {"device", "Boolean",
     "Language AutoWorkReal LockIPEnable ForceIPEnable PreventingIllegalOccupation"},
    {"device", "Enumeration", "RunningMode VerifyEdition BleOutput"},
    {"device", "Command", "DeviceReset RecoverFactory"},
    {"image", "Integer",
     "Width Height OffsetX OffsetY AutoFunctionAOIWidth AutoFunctionAOIHeight "
     "AutoFunctionAOIOffsetX AutoFunctionAOIOffsetY Brightness"},
    {"image", "Boolean",
     "ReverseX ReverseY MirrorX HdrEnable ContrastEnable RawModeEnable JpgEnable "
     "UploadTestRawPictureEnable"},
    {"image", "Enumeration",
     "MirrorMode TestPattern SamOptSelect BalanceWhiteAuto BalanceRatioSelector"},
    {"image", "Float",
     "Magnification BalanceRatio AcquisitionFrameRate ResultingFrameRate ExposureTime Gain"},
    {"acquisition", "Command", "AcquisitionStart AcquisitionStop"},
    {"trigger", "Enumeration",
     "TriggerMode TriggerSource HardTriggerSource HardwareTriggerActivation CountSource "
     "MultiframeHandleMode"},
    {"trigger", "Command", "TriggerSoftware LineTriggerSoftware SingleTrigger"},
    {"trigger", "Integer", "TriggerEndTimeout TriggerSelfTriggerPeriod CounterValue"},
    {"trigger", "Boolean", "CodeTrigEnable"},
    {"lines", "Enumeration", "LineConfig0 LineConfig1 LineSource FlashMode"},
    {"lines", "Integer",
     "LineDebouncerTime StrobeLineExposeDelay StrobeLineExposeDuration StrobeLinePreDelay "
     "FlashTime FlashDelay PrechargeTime"},
    {"lines", "Boolean", "FlashEnable"},
    {"reading", "Enumeration", "CodeReadMode MultiCameraMode StationRole ArithmeticType"},
    {"reading", "Integer",
     "MainStationID NoReadTimeOut NoReadImgIndex LocBarNum IdxLocCodeNum StackBarNum"},
    {"reading", "Category", "ReadSetting"},
    {"reading", "Boolean", "DMCode PHARMACODE PHARMACODE2d LDirectionEnable NumeralFilter"},
    {"reading", "StringReg", "RegularExpressionRules"},
    {"regions", "Enumeration", "AlgoCameraSelector"},
    {"regions", "Integer",
     "AlgoRegionIndex AlgoRegionWidth AlgoRegionHeight AlgoRegionLeftX AlgoRegionLeftY"},
    {"regions", "Boolean", "AlgoRegionEnable"},
    {"quality", "Boolean", "QualityEnable Quality1DEnable"},
    {"quality", "Integer", "Quality1DEnable_Inq"},
    {"lighting", "Enumeration", "LightEnable LightingSelector"},
    {"lighting", "Boolean", "LightingEnable AmingLightEnable LaserEnable"},
    {"lighting", "Integer", "LightingBitmap"},
    {"lighting", "IntReg", "LightingSelector_Icon_Inq_Reg"},
    {"lighting", "Command", "LightingAllOn LightingAllOff"},
    {"focus", "Enumeration", "FocusOptSelect"},
    {"focus", "Command", "FocusMode SmartTune SelfAdaptParamAdjustStart"},
    {"focus", "Integer", "AutoFocusStat FocusStep"},
    {"polling", "Enumeration",
     "PollingEnable PollingTarget PollingParam PollingLightSelector PollingIOSelector "
     "PollingIOAction PollingLensType"},
    {"polling", "Boolean", "PollingParamEnable PollingFocusEnable PollingLightEnable"},
    {"polling", "Integer",
     "PollingSingleParamTimeout PollingSingleParamCodeNum PollingSingleParamPeriod "
     "PollingAlgoROIRegion PollingAlgoROIRegionIndex PollingFocusPos PollingVertline "
     "PollingParamChgTime"},
    {"polling", "Float", "PollingExposureTime PollingGain PollingGamma"},
    {"polling", "StringReg", "PollingParamName"},
    {"protocols", "Enumeration", "CommunicationProtocols SerialStopBit"},
    {"protocols", "Boolean",
     "TcpProtocalEnable SerialProtocalEnable FtpProtocalEnable ProfinetEnable OutputRetransEnable"},
    {"protocols", "Integer",
     "TcpDstAddr TCPDestPort FtpHostPort TcpServerPort MelsecServerPort ModBusServerPort "
     "UdpDestPort TcpUpgPort OutputRetransNumber"},
    {"upload", "StringReg", "FtpUserName FtpUserPasswd FtpConnectionSymbol"},
    {"upload", "Enumeration",
     "FtpTransmissionConditions FtpTransmissionResultType FtpTransFileFormat"},
    {"upload", "Boolean", "FtpPackageNumber FtpBarcodeNumber"},
    {"texts", "StringReg",
     "TcpStartText TcpStopText TcpstrNoReadText TcpDelimiter TcpServerStartText TcpServerStopText "
     "TcpServerstrNoReadText TcpServerDelimiter SerialStartText SerialStopText "
     "SerialstrNoReadText SerialDelimiter ProfinetStartText ProfinetStopText MelsecStartText "
     "MelsecStopText ModBusStartText ModBusStopText EthernetIpStartText EthernetIpStopText "
     "HidStartText HidStopText HidNoReadText UsbStartText UsbStopText UsbNoReadText HeartbeatText "
     "TcpServerHeartbeatText"},
    {"texts", "Boolean",
     "BcrNameEnable TcpBarcodePositionEnable TcpBarcodeAngleEnable "
     "TcpBarcodeMainPackageIDEnable TcpOutputNoRead TcpStopCR TcpStopLF TcpStopCRLF "
     "TcpServerBarcodeNameEnable TcpServerBarcodePositionEnable TcpServerBarcodeAngleEnable "
     "TcpServerBarcodeMainPackageIDEnable TcpServerOutputNoRead TcpServerStopCR TcpServerStopLF "
     "TcpServerStopCRLF SerialBarcodeNameEnable SerialBarcodePositionEnable "
     "SerialBarcodeAngleEnable SerialBarcodeMainPackageIDEnable SerialOutputNoRead SerialStopCR "
     "SerialStopLF SerialStopCRLF"},
    {"formats", "StringReg",
     "TcpFormatString SerialFormatString TcpServerFormatString MelsecFormatString "
     "ProfinetFormatString EthernetIpFormatString ModBusFormatString FinsFormatString "
     "UdpFormatString UsbFormatString SlmpFormatString HidFormatString RF24FormatString "
     "BaseOrReceiverFormatString ResSet_Emmc_Picture_Name ResSet_Ftp_Picture_Name "
     "FtpFormatDirectoryString FtpFormatResultString"},
    {"formats", "Enumeration",
     "TcpFormatSourceData SerialFormatSourceData TcpServerFormatSourceData MelsecFormatSourceData "
     "ProfinetFormatSourceData EthernetIpFormatSourceData ModBusFormatSourceData "
     "FinsFormatSourceData UdpFormatSourceData UsbFormatSourceData SlmpFormatSourceData "
     "HidFormatSourceData RF24FormatSourceData BaseOrReceiverFormatSourceData "
     "ResSet_Emmc_FileName_SourceData ResSet_Ftp_FileName_SourceData FTPFormatDirectorySettings "
     "FTPFormatResultSetting"},
    {"trigger texts", "StringReg",
     "TcpStartTriggerStr TcpEndTriggerStr TcpStartTriggerHex TcpEndTriggerHex "
     "TcpClientStartTriggerStr TcpClientEndTriggerStr TcpClientStartTriggerHex "
     "TcpClientEndTriggerHex UdpStartTriggerStr UdpEndTriggerStr UdpStartTriggerHex "
     "UdpEndTriggerHex SerialStartTriggerStr SerialEndTriggerStr SerialStartTriggerHex "
     "SerialEndTriggerHex UsbStartTriggerStr UsbEndTriggerStr TcpHandshakeRequestStr "
     "TcpHandshakeResponseStr UdpHandshakeRequestStr UdpHandshakeResponseStr "
     "TcpClientHandshakeRequestStr TcpClientHandshakeResponseStr"},
    {"trigger texts", "Enumeration",
     "TcpStartTriFormat TcpEndTriggerFormat TcpClientStartTriFormat TcpClientEndTriggerFormat "
     "UdpStartTriFormat UdpEndTriggerFormat SerialStartTriFormat SerialEndTriggerFormat"},
    {"screen", "Enumeration", "ScreenHomepage ScreenLanguage WAYBILL_OutputImageType"},
    {"screen", "StringReg", "EMMCStateShowStr EMMCStateJpegShowStr"},
    {"screen", "Integer", "EMMCCloseTime EMMCCloseTimeShowMin WAYBILL_JpgQuality"},
    {"screen", "Boolean", "WAYBILL_Enable"},
    {"user sets", "Enumeration", "UserSetSelector UserSetDefault"},
    {"user sets", "StringReg", "UserSetName"},
    {"user sets", "Command",
     "UserSetLoad UserSetSave UserSetAdd UserSetDelete UserSetRecover UserSetRecoverPartly "
     "UserSetRecoverDefault UserSetRecoverFactory"},
    {"files", "Enumeration", "FileSelector"},
    {"transport", "Integer",
     "TLParamsLocked DeviceStreamChannelPacketSize GevSCPSPacketSize GevSCDA GevSCSP "
     "GevMACAddress GevCurrentIPAddress GevCurrentSubnetMask GevCurrentDefaultGateway "
     "GevPersistentIPAddress GevPersistentSubnetMask GevPersistentDefaultGateway"},
    {"transport", "Boolean",
     "GevCurrentIPConfigurationDHCP GevCurrentIPConfigurationPersistentIP "
     "GevPAUSEFrameReception HttpEnable"},
};

const char *const kQualities[] = {
    "SymbolContrast",
    "MinimumReflectance",
    "MinimumEdgeContrast",
    "Modulation",
    "Decodability",
    "Defects",
    "TDCRSymbolContrast",
    "TDCRModulation",
    "TDCRAxialNonuniformity",
    "TDCRGridNonuniformity",
    "TDCRUnusedErrorCorrection",
    "TDCRPrintGrowth",
};

} // namespace

void tst_CodeReaderNodes::initTestCase()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("code-reader"));
    m_document = parsedDescription(m_simulated);
    m_nodes = namedElements(m_document);
    const QStringList features = elementTexts(m_document, QStringLiteral("pFeature"));
    m_features = QSet<QString>(features.cbegin(), features.cend());
    QCOMPARE(m_features.size(), features.size()); // none stands in two categories
}

void tst_CodeReaderNodes::hasNode_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tag");
    for (const KindRow &row : kKinds) {
        const QStringList names = QString::fromLatin1(row.names).split(' ');
        for (const QString &name : names) {
            QTest::addRow("%s: %s", row.subject, qPrintable(name)) << name << row.tag;
        }
    }
    for (const char *stem : kQualities) {
        for (const char *grade : {"", "A", "B", "C", "D"}) {
            QTest::addRow("quality: %s%s", stem, grade)
                << QString::fromLatin1(stem) + grade << "Integer";
        }
    }
}

void tst_CodeReaderNodes::hasNode()
{
    QFETCH(QString, name);
    QFETCH(QString, tag);
    QCOMPARE(m_nodes.value(name).tagName(), tag);
    QVERIFY(m_features.contains(name));
}

void tst_CodeReaderNodes::hasEntries_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QStringList>("values");
    const QPair<const char *, const char *> rows[] = {
        {"CommunicationProtocols", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17"},
        {"TriggerMode", "0 1"},
        {"TriggerSource", "1 2 4 7 8 9 10 13"},
        {"CodeReadMode", "0 1 2 3"},
        {"RunningMode", "0 1 2"},
        {"ArithmeticType", "1 2 3"},
        {"TestPattern", "0 1 2 20"},
        {"PollingEnable", "0 1 2 3"},
        {"PollingParam", "0 1 2 3 4 5 6 7"},
        {"ScreenHomepage", "1 2 3"},
        {"ScreenLanguage", "0 1"},
        {"LightingSelector", "0 1 2 3 4"},
        {"TcpClientEndTriggerFormat", "0 1"},
        {"BalanceWhiteAuto", "0 1 2"},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.first) << row.first << QString::fromLatin1(row.second).split(' ');
    }
}

void tst_CodeReaderNodes::hasEntries()
{
    QFETCH(QString, node);
    QFETCH(QStringList, values);
    QStringList found;
    const QDomNodeList entries = m_nodes.value(node).elementsByTagName("EnumEntry");
    for (int i = 0; i < entries.size(); ++i) {
        found.append(entries.at(i).firstChildElement("Value").text());
    }
    QCOMPARE(found, values);
}

void tst_CodeReaderNodes::conditionNamesWhatItMeans_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("part");
    QTest::newRow("bar code measures") << "Modulation"
                                       << "pIsAvailable"
                                       << "Quality1D";
    QTest::newRow("two-dimensional measures") << "TDCRModulation"
                                              << "pIsAvailable"
                                              << "QualityTDCR";
    QTest::newRow("two-dimensional standard") << "QualityStandard"
                                              << "pIsAvailable"
                                              << "Quality2D";
    QTest::newRow("either grading") << "QualityDisplay"
                                    << "pIsAvailable"
                                    << "QualityEnable_Ava";
    QTest::newRow("one type of board") << "QualityReport"
                                       << "pIsImplemented"
                                       << "OnlyType2_Ava";
    QTest::newRow("text of another protocol") << "UsbStopText"
                                              << "pIsAvailable"
                                              << "UsbSelected";
    QTest::newRow("bytes while text is set") << "TcpStartTriggerHex"
                                             << "pIsAvailable"
                                             << "TcpStartIsBytes";
    QTest::newRow("lock of the image") << "Width"
                                       << "pIsLocked"
                                       << "TLParamsLocked";
}

void tst_CodeReaderNodes::conditionNamesWhatItMeans()
{
    QFETCH(QString, node);
    QFETCH(QString, tag);
    QFETCH(QString, part);
    const QString target = m_nodes.value(node).firstChildElement(tag).text();
    QVERIFY2(target.contains(part), qPrintable(target));
}

void tst_CodeReaderNodes::selectsItsFeatures_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QStringList>("selected");
    QTest::newRow("segment") << "LightingSelector"
                             << QStringList{"LightingEnable", "LightingBrightness"};
    QTest::newRow("region") << "AlgoRegionIndex"
                            << QStringList{"AlgoRegionEnable", "AlgoRegionLeftX", "AlgoRegionLeftY",
                                           "AlgoRegionWidth", "AlgoRegionHeight"};
    QTest::newRow("set of parameters")
        << "PollingParam"
        << QStringList{"PollingParamName",   "PollingParamEnable",  "PollingLightEnable",
                       "PollingIOAction",    "PollingExposureTime", "PollingGain",
                       "PollingGamma",       "PollingFocusPos",     "PollingVertline",
                       "PollingParamChgTime"};
    QTest::newRow("user set") << "UserSetSelector" << QStringList{"UserSetName"};
}

void tst_CodeReaderNodes::selectsItsFeatures()
{
    QFETCH(QString, selector);
    QFETCH(QStringList, selected);
    QStringList found;
    for (QDomElement child = m_nodes.value(selector).firstChildElement("pSelected");
         !child.isNull(); child = child.nextSiblingElement("pSelected")) {
        found.append(child.text());
    }
    for (const QString &name : qAsConst(selected)) {
        QVERIFY2(found.contains(name), qPrintable(name));
    }
}

void tst_CodeReaderNodes::readsByNode()
{
    OpenedDevice device(m_simulated);
    for (const QString &name : qAsConst(m_features)) {
        const QString tag = m_nodes.value(name).tagName();
        if (tag == "Category" || tag == "Command") {
            continue;
        }
        const QVariant value = device.value(name);
        QVERIFY2(device.m_strError.isEmpty(), qPrintable(name + ": " + device.m_strError));
        QVERIFY2(value.isValid(), qPrintable(name));
    }
    QCOMPARE(device.text("TcpFormatString"), QStringLiteral("<codecontent>"));
    QCOMPARE(device.integer("TCPDestPort"), qint64(2001));
    QCOMPARE(device.integer("LightingBitmap"), qint64(0x0B));
    QVERIFY(qAbs(device.number("ExposureTime") - 800.0) < 0.01);
}

void tst_CodeReaderNodes::olderNamesTakeTheirPlace()
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
    OpenedDevice device(older);
    QVERIFY(device.setInteger("Strobe2Delay", 77));
    QCOMPARE(device.integer("Strobe2Delay"), qint64(77));
    QVERIFY(older.source->serial != m_simulated.source->serial);
}

QTEST_GUILESS_MAIN(tst_CodeReaderNodes)
#include "tst_CodeReaderNodes.moc"
