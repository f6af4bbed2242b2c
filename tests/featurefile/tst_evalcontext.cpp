#include "featurefile/RegisterDump.h"
#include "tests/featurefile/EvalFixture.h"
#include "tests/support/DataTable.h"

namespace {

/// A selector of 0 to `max`, its value in the description itself, and what it selects.
QByteArray selector(const QByteArray &name, const QByteArray &selected, const QByteArray &max = "3")
{
    return integer(name,
                   "<Value>0</Value><Min>0</Min><Max>" + max + "</Max><Inc>1</Inc><pSelected>"
                       + selected + "</pSelected>");
}

QByteArray knife(const QByteArray &name, const QByteArray &variables, const QByteArray &formula)
{
    return "<IntSwissKnife Name=\"" + name + "\">" + variables + "<Formula>" + formula
        + "</Formula></IntSwissKnife>";
}

QByteArray variable(const QByteArray &name, const QByteArray &node)
{
    return "<pVariable Name=\"" + name + "\">" + node + "</pVariable>";
}

QByteArray converted(const QByteArray &variables, const QByteArray &from)
{
    return "<Converter Name=\"X\">" + variables + "<FormulaTo>FROM</FormulaTo><FormulaFrom>" + from
        + "</FormulaFrom><pValue>R</pValue></Converter>";
}

/// The lines of a dump without its frame, or the outcome.
QString dumpOf(EvalContext &context, const QString &name = "X")
{
    context.beginNode(name);
    context.collectSelectors(name);
    QString text;
    const auto outcome = RegisterDump::write(context, name, &text);
    if (outcome != RegisterDump::Outcome::Done) {
        return outcome == RegisterDump::Outcome::NoLength ? "no length" : "failed";
    }
    QStringList lines = text.split("\r\n");
    lines.removeFirst();
    QString all = lines.join(' ');
    for (const char *noise : {"<RegValue address=", "</RegValue>", "</ComplexFeature>", "\""}) {
        all.remove(noise);
    }
    return all.replace(" variables=", " ").simplified();
}

} // namespace

class tst_EvalContext : public QObject
{
    Q_OBJECT
private slots:
    void dumps_data();
    void dumps();
    void readsAtAnyAddress_data();
    void readsAtAnyAddress();
    void readsNodes_data();
    void readsNodes();
    void endsHostileDescriptions_data();
    void endsHostileDescriptions();
};

void tst_EvalContext::dumps_data()
{
    const DataTable<QByteArray, QString> row("elements", "dump"); // of the words 258, 0, 7, 0
    const QByteArray index = selector("I", "X");
    const QByteArray offset = knife("K", variable("V", "I"), "V*4");
    const QByteArray x = integer("X", "<pValue>R</pValue>");
    row("one address", x + intReg("R", "0x1000"), "4096 >258");
    row("address and four values",
        x + index + offset + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>"),
        "4096 [I:0]>258 4100 [I:1]>0 4104 [I:2]>7 4108 [I:3]>0");
    row("constants add up", x + intReg("R", "<Address>4096</Address><Address> 0x8 </Address>"),
        "4104 >7");
    row("two selectors, every combination",
        x + selector("I", "X", "1") + selector("J", "X", "1")
            + knife("K", variable("B", "J") + variable("A", "I"), "A*8+B*4")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>"),
        "4096 [I:0][J:0]>258 4100 [I:0][J:1]>0 4104 [I:1][J:0]>7 4108 [I:1][J:1]>0");
    row("one failing combination leaves the others",
        x + selector("I", "X", "2") + knife("K", variable("V", "I"), "8/V-4")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>"),
        "4100 [I:1]>0 4096 [I:2]>258");
    row("address beyond 64 bits",
        x + index + knife("K", variable("V", "I"), "1e30+V")
            + intReg("R", "<Address>0</Address><pAddress>K</pAddress>"),
        "failed");
    row("a node named like a number",
        x + integer("ADD", "<Value>8</Value>")
            + intReg("R", "<Address>0x1000</Address><pAddress> ADD </pAddress>"),
        "4104 >7");
    const auto bits = [&](const QByteArray &range) {
        return x + intReg("M", "0x1000", "4", "MaskedIntReg", range)
            + knife("K", variable("V", "M"), "V-129+8")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>");
    };
    row("bits of a register", bits("<LSB>1</LSB><MSB>8</MSB>"), "4104 [M:129]>7");
    row("bits the other way round", bits("<LSB>8</LSB><MSB>1</MSB>"), "4104 [M:129]>7");
    row("bit beyond the register", bits("<Bit>40</Bit>"), "failed");
    row("port of a chunk",
        x + intReg("R", "0x1000").replace("<pPort>Device", "<pPort>Chunk")
            + "<Port Name=\"Chunk\"><ChunkID>1</ChunkID></Port>",
        "failed");
    row("negative text replaced",
        x + integer("N", "<Value>0</Value>") + knife("M", variable("V", "N"), "V-8")
            + integer("P", "<pValue>M</pValue>") + knife("K", variable("V", "P"), "-V--0")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>"),
        "4104 [P:-8]>7");
    row("length 0", x + intReg("R", "0x1000", "0"), "no length");
    row("length from a node",
        x + integer("L", "<Value>8</Value>")
            + intReg("R", "0x1000").replace("<Length>4</Length>", "<pLength>L</pLength>"),
        "4096 >33619968,0"); // 8 bytes are not swapped
    row("converter, its own register by name",
        converted(variable("RAW", "R"), "RAW/10") + intReg("R", "0x1000"),
        "4096 to=258 from=TO/10>25.800000");
    row("converter without variables", converted("", "TO*2") + intReg("R", "0x1000"),
        "4096 to=258 from=TO*2>516.000000");
    row("converter with one variable",
        index + offset + integer("G", "<Value>3</Value>") + converted(variable("G", "G"), "TO*G")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>"),
        "4096 [I:0] to=258 from=TO*3>774.000000 4100 [I:1] to=0 from=TO*3>0.000000 "
        "4104 [I:2] to=7 from=TO*3>21.000000 4108 [I:3] to=0 from=TO*3>0.000000");
    row("StructEntry",
        "<StructReg Comment=\"S\"><Address>0x1000</Address><Length>4</Length>"
        "<AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess>"
        "<StructEntry Name=\"X\"><Bit>3</Bit></StructEntry></StructReg>",
        "4096 >258");
}

void tst_EvalContext::dumps()
{
    QFETCH(QByteArray, elements);
    QFETCH(QString, dump);
    EvalFixture fixture(elements);
    QVERIFY(fixture.task);
    fixture.poke(0x1000, "0000010200000000000000070000000000000000");
    EvalContext context = fixture.context();
    QCOMPARE(dumpOf(context), dump);
}

void tst_EvalContext::readsAtAnyAddress_data()
{
    // The word is one of the bytes 00 01 02 03 04 05 06 07.
    const DataTable<bool, QByteArray, bool, quint32> row("isGigE", "address", "alignedOnly",
                                                         "word");
    row("aligned, GigE", true, "0x1000", true, 0x00010203U);
    row("misaligned, GigE", true, "0x1002", true, 0x02030405U);
    row("misaligned, U3V", false, "0x1002", false, 0x05040302U);
}

void tst_EvalContext::readsAtAnyAddress()
{
    QFETCH(bool, isGigE);
    QFETCH(QByteArray, address);
    QFETCH(bool, alignedOnly);
    QFETCH(quint32, word);
    for (const bool isConverted : {false, true}) {
        EvalFixture fixture((isConverted ? converted(variable("RAW", "R"), "RAW+0")
                                         : integer("X", "<pValue>R</pValue>"))
                            + intReg("R", address));
        fixture.poke(0x1000, "0001020304050607");
        fixture.device.control->setAlignedOnly(alignedOnly);
        EvalContext context = fixture.context(isGigE);
        const QString dump = dumpOf(context);
        QVERIFY2(dump.contains((isConverted ? " to=" : " >") + QString::number(word)),
                 qPrintable(dump));
    }
    EvalFixture fixture(integer("X", "<pValue>R</pValue>") + intReg("R", address));
    fixture.device.control->setFailing(0x1003, 7);
    EvalContext context = fixture.context(isGigE);
    QCOMPARE(dumpOf(context), QString("failed"));
}

void tst_EvalContext::readsNodes_data()
{
    const DataTable<QByteArray, QString, bool> row("elements", "text", "isNodeValue");
    const QByteArray reg = intReg("R", "0x1000");
    const QByteArray x = integer("X", "<pValue>R</pValue>") + reg;
    row("integer", x, "258", true);
    row("the other byte order", QByteArray(x).replace("BigEndian", "LittleEndian"), "258", false);
    row("converter", converted(variable("RAW", "R"), "RAW/4") + reg, "64.500000", true);
}

void tst_EvalContext::readsNodes()
{
    QFETCH(QByteArray, elements);
    EvalFixture fixture(elements);
    fixture.poke(0x1000, "00000102ffffffff");
    EvalContext context = fixture.context();
    bool isNodeValue = false;
    QTEST(RegisterDump::readNodeFromRegisters(context, "X", &isNodeValue), "text");
    QTEST(isNodeValue, "isNodeValue");
    EvalContext without(fixture.builder.elementMap(), fixture.links, nullptr, true, nullptr);
    QCOMPARE(RegisterDump::readNodeFromRegisters(without, "X", &isNodeValue), QString());
}

void tst_EvalContext::endsHostileDescriptions_data()
{
    const DataTable<QByteArray> row("elements");
    const QByteArray x = integer("X", "<pValue>R</pValue>");
    const QByteArray address = intReg("R", "<Address>0</Address><pAddress>K</pAddress>");
    row("circle of pValue",
        integer("X", "<pValue>Y</pValue>") + integer("Y", "<pValue>X</pValue>"));
    row("circle through an address", x + address + knife("K", variable("V", "R"), "V"));
    QByteArray chain, bush = intReg("R", "<Address>1</Address><pAddress>K0</pAddress>");
    for (int level = 0; level < 200; ++level) {
        chain += integer("N" + QByteArray::number(level),
                         "<pValue>N" + QByteArray::number(level + 1) + "</pValue>");
    }
    for (int level = 0; level < 40; ++level) {
        const QByteArray next = "K" + QByteArray::number(level + 1);
        bush += knife("K" + QByteArray::number(level), variable("A", next) + variable("B", next),
                      "A+B");
    }
    row("chain of 200", integer("X", "<pValue>N0</pValue>") + chain + intReg("N200", "0x1000"));
    row("every level twice", x + bush + integer("K40", "<Value>1</Value>"));
    row("a selector without end",
        x + selector("I", "X", "9223372036854775807") + knife("K", variable("V", "I"), "V*4")
            + address);
    QByteArray many;
    for (int index = 0; index < 5000; ++index) {
        many += variable("V" + QByteArray::number(index), "C");
    }
    row("a formula that grows with each variable",
        converted(variable("1", "C").repeated(100), "1") + integer("C", "<Value>111111</Value>")
            + intReg("R", "0x1000"));
    row("thousands of variables",
        x + integer("C", "<Value>1</Value>") + knife("K", many, "V1") + address);
}

void tst_EvalContext::endsHostileDescriptions()
{
    QFETCH(QByteArray, elements);
    EvalFixture fixture(elements + integer("Y9", "<pValue>R9</pValue>") + intReg("R9", "0x1000"));
    QVERIFY(fixture.task);
    EvalContext context = fixture.context();
    QCOMPARE(dumpOf(context), QString("failed"));
    bool isNodeValue = false;
    QCOMPARE(RegisterDump::readNodeFromRegisters(context, "X", &isNodeValue), QString());
    // The next node has all the limits to itself.
    QCOMPARE(dumpOf(context, "Y9"), QString("4096 >0"));
}

QTEST_GUILESS_MAIN(tst_EvalContext)
#include "tst_evalcontext.moc"
