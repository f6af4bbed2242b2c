#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeCommandItemValue.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeFormatStringItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"

#include <QtTest>

#include <typeinfo>

namespace {

constexpr qint64 BEYOND_32_BITS = (qint64(1) << 32) + 5;

} // namespace

class tst_itemvalues : public QObject
{
    Q_OBJECT
private slots:
    void integerText_data();
    void integerText();
    void classOfTag_data();
    void classOfTag();
    void fingerprint();
    void exchange();
    void copyMovesNamesAndValueApart();
    void copyDrawAndFormat();
    void constructionAndAssignmentDiffer();
    void enumerationEntries();
    void enumerationSwap();
    void pageNames();
    void twoNodesOnOneRow();
};

void tst_itemvalues::integerText_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("representation");
    QTest::addColumn<QVector<qint64>>("range"); // value, minimum, maximum
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *fault, const char *node, const char *representation,
                        qint64 value, qint64 min, qint64 max, int kind, const char *text) {
        QTest::newRow(fault) << QString::fromLatin1(node) << QString::fromLatin1(representation)
                             << QVector<qint64>{value, min, max} << kind
                             << QString::fromLatin1(text);
    };
    const qint64 top = std::numeric_limits<qint64>::max();
    row("never read", "N", "", -1, -1, -1, 2, "-1");
    row("below the minimum shows the minimum", "N", "", 5, 10, 20, 2, "10");
    row("above the maximum shows the maximum", "N", "", 25, 10, 20, 2, "20");
    row("range upside down: the maximum wins from the minimum on", "N", "", 15, 10, 3, 2, "3");
    row("range upside down: below the minimum", "N", "", 5, 10, 3, 2, "10");
    row("64 bits survive", "N", "PureNumber", BEYOND_32_BITS, 0, top, 2, "4294967301");
    row("hexadecimal", "N", "HexNumber", 31, 0, 255, 3, "0x1F");
    row("address by representation", "N", "IPV4Address", 0xC0A80001, 0, top, 4, "192.168.0.1");
    row("address by name", "GevSCDA", "HexNumber", 0xEF000001, 0, top, 4, "239.0.0.1");
    row("address name without representation is decimal", "GevSCDA", "", 7, 0, 9, 2, "7");
    row("mask", "GevCurrentSubnetMask", "IPV4Address", 0xFFFFFF00, 0, top, 5, "255.255.255.0");
    row("mask name beats MAC representation", "GevPersistentSubnetMask", "MACAddress", 0xFF000000,
        0, top, 5, "255.0.0.0");
    row("MAC by name", "GevMACAddress", "HexNumber", 0x0A0B0C0D0E0F, 0, top, 6,
        "0A:0B:0C:0D:0E:0F");
    row("MAC name without representation is decimal", "GevMACAddress", "", 7, 0, 9, 2, "7");
    row("MAC by representation", "N", "MACAddress", 1, 0, top, 6, "00:00:00:00:00:01");
}

void tst_itemvalues::integerText()
{
    QFETCH(QVector<qint64>, range);
    CTreeIntergerItemValue value;
    QFETCH(QString, node);
    QFETCH(QString, representation);
    value.m_strNodeName = node;
    value.m_strRepresentation = representation;
    value.m_nValue = range[0];
    value.m_nMinValue = range[1];
    value.m_nMaxValue = range[2];
    QTEST(value.type(), "kind");
    QTEST(value.displayValue(), "text");
}

void tst_itemvalues::classOfTag_data()
{
    QTest::addColumn<QString>("className");
    const auto row = [](const char *tag, const std::type_info &type) {
        QTest::newRow(tag) << QString::fromLatin1(type.name());
    };
    row("Boolean", typeid(CTreeBooleanItemValue));
    row("Command", typeid(CTreeCommandItemValue));
    row("Integer", typeid(CTreeIntergerItemValue));
    row("Enumeration", typeid(CTreeEnumationItemValue));
    row("Float", typeid(CTreeFloatItemValue));
    row("StringReg", typeid(CTreeStringItemValue));
    row("CustomDrawFeatureTag", typeid(CTreeCustomDrawItemValue));
    row("CustomWatermarkFeatureTag", typeid(CTreeCustomWaterMarkItemValue));
    row("CustomAlgorithmCodeTag", typeid(CTreeCustomAlgorithmCodeItemValue));
    row("CustomLightingSelector", typeid(CTreeCustomLightingSelectorItemValue));
    row("CustomSpinBox", typeid(CTreeHorSpinBoxItemValue));
    row("CustomFormatEdit", typeid(CTreeFormatStringItemValue));
    row("CustomFormatTextEdit", typeid(CTreeFormatStringTextItemValue));
    row("CustomScreen", typeid(CTreeScreenSelectItemValue));
    row("IntReg", typeid(CTreeItemValue));
    row("Category", typeid(CTreeItemValue));
}

void tst_itemvalues::classOfTag()
{
    const auto value = CTreeItemValue::create(QString::fromLatin1(QTest::currentDataTag()));
    const CTreeItemValue &object = *value;
    QTEST(QString::fromLatin1(typeid(object).name()), "className");
}

void tst_itemvalues::fingerprint()
{
    CTreeItemValue plain;
    QCOMPARE(plain.createCurrentStauts(true), QStringLiteral("ReadOnly:true;"));
    CTreeIntergerItemValue integer;
    integer.m_nValue = 5;
    integer.m_nMinValue = 10;
    integer.m_nMaxValue = 20;
    integer.m_strRepresentation = QStringLiteral("HexNumber");
    QCOMPARE(integer.createCurrentStauts(false),
             QStringLiteral("ReadOnly:false;m_nValue:5; m_nMinValue:10; m_nMaxValue:20; "
                            "NeedRecreateEditor:HexNumber"));
    CTreeFloatItemValue number;
    number.m_fValue = 1.2344F;
    const QString shown = number.displayValue();
    const QString before = number.createCurrentStauts(true);
    QCOMPARE(
        before,
        QStringLiteral("ReadOnly:true;m_fValue:1.234; m_fMinValue:-1.000; m_fMaxValue:-1.000"));
    number.m_fValue = 1.2314F; // the third decimal only
    QCOMPARE(number.displayValue(), shown);
    QVERIFY(number.createCurrentStauts(true) != before);
    CTreeStringItemValue text;
    text.m_strValue = QStringLiteral("%1 a text");
    text.updateEditorInfo(false);
    QCOMPARE(text.m_strCurrentStatus, QStringLiteral("ReadOnly:false;%1 a text"));
    CTreeBooleanItemValue flag;
    QCOMPARE(flag.createCurrentStauts(true), QStringLiteral("ReadOnly:true;False"));
    CTreeEnumationItemValue enumeration;
    enumeration.updateDisplayName(QStringLiteral("Zwei"), QStringLiteral("Two"), 2);
    enumeration.updateDisplayName(QStringLiteral("Eins"), QStringLiteral("One"), 1);
    enumeration.m_nValue = 1;
    QCOMPARE(enumeration.createCurrentStauts(true),
             QStringLiteral("ReadOnly:true;m_nValue:1;Zwei;Eins;"));
}

void tst_itemvalues::exchange()
{
    CTreeIntergerItemValue integer;
    integer.setValue(BEYOND_32_BITS);
    QCOMPARE(integer.value(), QVariant(BEYOND_32_BITS));
    CTreeEnumationItemValue enumeration;
    enumeration.setValue(BEYOND_32_BITS);
    QCOMPARE(enumeration.m_nValue, qint64(5)); // through 32 bits
    CTreeFloatItemValue number;
    number.setValue(0.5);
    QCOMPARE(number.value().toFloat(), 0.5F);
    CTreeCommandItemValue command;
    command.setValue(QStringLiteral("Run"));
    QCOMPARE(command.displayValue(), QStringLiteral("Run"));
    CTreeItemValue plain;
    plain.setValue(1);
    QVERIFY(!plain.value().isValid());
}

void tst_itemvalues::copyMovesNamesAndValueApart()
{
    CTreeItemValue names;
    names.m_strNodeName = QStringLiteral("Name");
    names.m_strTranslateName = QStringLiteral("Uebersetzt");
    names.m_strToolTipCn = QStringLiteral("Tip");
    names.m_strCurrentStatus = QStringLiteral("shown");
    names.m_strStepDisplayNameEn = QStringLiteral("Step");
    CTreeIntergerItemValue source;
    source.m_strNodeName = QStringLiteral("Other");
    source.m_nValue = 3;
    source.m_nIncValue = 2;
    source.m_strRepresentation = QStringLiteral("HexNumber");

    CTreeIntergerItemValue target;
    target.copy(&names, true);
    QCOMPARE(target.m_strNodeName, QStringLiteral("Name"));
    QCOMPARE(target.m_strTranslateName, QStringLiteral("Uebersetzt"));
    QCOMPARE(target.m_strToolTipCn, QStringLiteral("Tip"));
    QCOMPARE(target.m_strCurrentStatus + target.m_strStepDisplayNameEn, QString());
    QCOMPARE(target.m_nValue, qint64(-1));
    target.copy(&source, false);
    QCOMPARE(target.m_strNodeName, QStringLiteral("Name"));
    QCOMPARE(target.m_nValue, qint64(3));
    QCOMPARE(target.m_nIncValue, qint64(2));
    QCOMPARE(target.m_strRepresentation, QStringLiteral("HexNumber"));
    target.copy(nullptr, true);
    QCOMPARE(target.m_strNodeName, QStringLiteral("Name"));
}

void tst_itemvalues::copyDrawAndFormat()
{
    CTreeCustomDrawItemValue drawn;
    drawn.m_bDrawOn = true;
    drawn.m_nDrawType = 4;
    CTreeCustomDrawItemValue draw;
    draw.copy(&drawn, false);
    QCOMPARE(draw.m_nDrawType, 4);
    QVERIFY(!draw.m_bDrawOn);

    CTreeStringItemValue text;
    text.m_strNodeName = QStringLiteral("UdpFormatString");
    text.m_strValue = QStringLiteral("<A>");
    text.m_nMaxLength = 64;
    CTreeFormatStringItemValue format;
    format.copy(&text, false);
    QCOMPARE(format.displayValue(), QStringLiteral("<A>"));
    QCOMPARE(format.m_nMaxLength, 64);
    QCOMPARE(format.m_strFormatNode, QStringLiteral("UdpFormatString"));
    QCOMPARE(format.m_strCustomNode, QStringLiteral("Custom_UdpFormatString"));
    CTreeFormatStringItemValue other;
    other.copy(&format, false); // only a string value is taken
    QCOMPARE(other.displayValue(), QString());
}

void tst_itemvalues::constructionAndAssignmentDiffer()
{
    CTreeStringItemValue source;
    source.m_strNodeName = QStringLiteral("Name");
    source.m_strTranslateName = QStringLiteral("Uebersetzt");
    source.m_strCurrentStatus = QStringLiteral("shown");
    source.m_nStepIndex = 2;
    source.m_stepPageNames.insert(2, QStringLiteral("Page"));
    source.m_strValue = QStringLiteral("text");
    const CTreeStringItemValue constructed(source);
    QCOMPARE(constructed.m_strNodeName, QStringLiteral("Name"));
    QCOMPARE(constructed.m_strValue, QStringLiteral("text"));
    QCOMPARE(constructed.m_strTranslateName + constructed.m_strCurrentStatus, QString());
    QCOMPARE(constructed.m_nStepIndex, 0);
    CTreeStringItemValue assigned;
    assigned = source;
    QCOMPARE(assigned.m_strTranslateName, QStringLiteral("Uebersetzt"));
    QCOMPARE(assigned.m_strCurrentStatus, QStringLiteral("shown"));
    QCOMPARE(assigned.StepPagesTranslateName(), QStringLiteral("Page"));
    QCOMPARE(assigned.m_strValue, QStringLiteral("text"));
}

void tst_itemvalues::enumerationEntries()
{
    CTreeEnumationItemValue value;
    value.updateDisplayName(QStringLiteral("On"), QStringLiteral("Always"), 1);
    value.updateDisplayName(QStringLiteral("Off"), QStringLiteral("Never"), 0);
    value.updateDisplayName(QStringLiteral("On"), QStringLiteral("Sometimes"), 7);
    QCOMPARE(value.getDisplayList(), QStringList({QStringLiteral("On"), QStringLiteral("Off")}));
    QCOMPARE(value.getDisplayListCN(),
             value.getDisplayList()); // no translator: row for row the same
    QCOMPARE(value.getAllNameMap().value(QStringLiteral("Sometimes")), QStringLiteral("On"));
    value.m_nValue = 7;
    QCOMPARE(value.displayValue(), QStringLiteral("On"));
    value.m_nValue = 8;
    QCOMPARE(value.displayValue(), QString());
    value.clearItems();
    QVERIFY(value.getAllEnumationMap().isEmpty() && value.getAllNameMap().isEmpty()
            && value.getDisplayList().isEmpty() && value.getDisplayListCN().isEmpty());
}

void tst_itemvalues::enumerationSwap()
{
    CTreeEnumationItemValue read;
    read.updateDisplayName(QStringLiteral("New"), QStringLiteral("New"), 3);
    read.m_nValue = 3;
    CTreeEnumationItemValue shown;
    shown.m_strNodeName = QStringLiteral("Name");
    shown.updateDisplayName(QStringLiteral("Old"), QStringLiteral("Old"), 1);
    shown.swapEntries(read);
    QCOMPARE(shown.displayValue(), QStringLiteral("New"));
    QCOMPARE(shown.getDisplayList(), QStringList(QStringLiteral("New")));
    QCOMPARE(shown.m_strNodeName, QStringLiteral("Name"));
}

void tst_itemvalues::pageNames()
{
    CTreeItemValue value;
    value.m_strDisplayName = QStringLiteral("plain");
    QCOMPARE(value.StepPagesTranslateName(), QStringLiteral("plain"));
    QCOMPARE(value.translateName(), QStringLiteral("plain"));
    value.m_strStepDisplayNameEn = QStringLiteral("step");
    QCOMPARE(value.StepPagesTranslateName(), QStringLiteral("step"));
    value.m_strStepDisplayNameCn = QStringLiteral("Schritt");
    QCOMPARE(value.StepPagesTranslateName(), QStringLiteral("Schritt"));
    QCOMPARE(value.StepPagesDisplayName(), QStringLiteral("step"));
    value.m_stepPageNames = {{0, QString()}, {1, QStringLiteral("page one")}};
    QCOMPARE(value.StepPagesTranslateName(), QStringLiteral("Schritt"));
    value.m_nStepIndex = 1;
    QCOMPARE(value.StepPagesTranslateName(), QStringLiteral("page one"));
}

void tst_itemvalues::twoNodesOnOneRow()
{
    CTreeCustomWaterMarkItemValue value;
    value.m_strFirstNodeName = QStringLiteral("A");
    value.m_strSecondNodeName = QStringLiteral("B");
    value.m_strSecondToolTip = QStringLiteral("tip B");
    QCOMPARE(value.nodeName(0) + value.nodeName(1) + value.nodeName(2), QStringLiteral("ABB"));
    QCOMPARE(value.toolTip(1), QStringLiteral("tip B"));
}

QTEST_GUILESS_MAIN(tst_itemvalues)
#include "tst_itemvalues.moc"
