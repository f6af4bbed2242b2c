#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "tests/support/DataTable.h"

class tst_itemvalues : public QObject
{
    Q_OBJECT
private slots:
    void integerText_data();
    void integerText();
    void fingerprint();
};

void tst_itemvalues::integerText_data()
{
    // The range is value, minimum, maximum.
    const DataTable<QString, QString, QVector<qint64>, int, QString> row("node", "representation",
                                                                         "range", "kind", "text");
    const qint64 top = std::numeric_limits<qint64>::max();
    row("never read", "N", "", {-1, -1, -1}, 2, "-1");
    row("below the minimum shows the minimum", "N", "", {5, 10, 20}, 2, "10");
    row("range upside down: the maximum wins from the minimum on", "N", "", {15, 10, 3}, 2, "3");
    row("64 bits survive", "N", "PureNumber", {0x100000005, 0, top}, 2, "4294967301");
    row("hexadecimal", "N", "HexNumber", {31, 0, 255}, 3, "0x1F");
    row("address by representation", "N", "IPV4Address", {0xC0A80001, 0, top}, 4, "192.168.0.1");
    row("mask name beats MAC representation", "GevPersistentSubnetMask", "MACAddress",
        {0xFF000000, 0, top}, 5, "255.0.0.0");
    row("MAC by name", "GevMACAddress", "HexNumber", {0x0A0B0C0D0E0F, 0, top}, 6,
        "0A:0B:0C:0D:0E:0F");
    row("MAC name without representation is decimal", "GevMACAddress", "", {7, 0, 9}, 2, "7");
}

void tst_itemvalues::integerText()
{
    QFETCH(QString, node);
    QFETCH(QString, representation);
    QFETCH(QVector<qint64>, range);
    CTreeIntergerItemValue value;
    value.m_strNodeName = node;
    value.m_strRepresentation = representation;
    value.m_nValue = range[0];
    value.m_nMinValue = range[1];
    value.m_nMaxValue = range[2];
    QTEST(value.type(), "kind");
    QTEST(value.displayValue(), "text");
}

/// What an editor shows is in it, and nothing that changes while the editor would look the same.
void tst_itemvalues::fingerprint()
{
    CTreeIntergerItemValue integer;
    integer.m_nValue = 5;
    integer.m_nMaxValue = 20;
    integer.m_strRepresentation = "HexNumber";
    const QString before = integer.createCurrentStauts(false);
    QVERIFY(before.endsWith("; NeedRecreateEditor:HexNumber"));
    QVERIFY(integer.createCurrentStauts(true) != before);
    integer.m_nMaxValue = 21;
    QVERIFY(integer.createCurrentStauts(false) != before);
    CTreeFloatItemValue number;
    number.m_fValue = 1.2344F;
    const QString shown = number.displayValue();
    const QString numberBefore = number.createCurrentStauts(true);
    number.m_fValue = 1.2314F; // the third decimal only
    QCOMPARE(number.displayValue(), shown);
    QVERIFY(number.createCurrentStauts(true) != numberBefore);
    CTreeStringItemValue text;
    text.m_strValue = "%1 a text";
    text.updateEditorInfo(false);
    QCOMPARE(text.m_strCurrentStatus, QString("ReadOnly:false;%1 a text"));
    CTreeEnumationItemValue enumeration;
    enumeration.updateDisplayName("Zwei", "Two", 2);
    enumeration.updateDisplayName("Eins", "One", 1);
    QVERIFY(enumeration.createCurrentStauts(true).endsWith(";Zwei;Eins;"));
}

QTEST_GUILESS_MAIN(tst_itemvalues)
#include "tst_itemvalues.moc"
