#include "DeviceFixture.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QPair>
#include <QVector>
#include <QtTest>

#include <algorithm>

/// One description from a stranger, and what has to become of it. Its node "Good" is a sound register at 64.
struct HostileDescription
{
    QByteArray name;
    QByteArray xml;
    QByteArray refusal; ///< a part of the reason why it is not opened at all
    QVector<QPair<QByteArray, QByteArray>> leftOut; ///< nodes, and a part of the reason of each
    QVector<QPair<QByteArray, qint64>> live; ///< nodes that keep their constant value
    QByteArray note; ///< a part of a finding that leaves no node out
};
Q_DECLARE_METATYPE(HostileDescription)

namespace {

QByteArray withGood(const QByteArray &nodes)
{
    return describe(nodes + intReg("Good", 64));
}

struct Rows : QVector<HostileDescription>
{
    /// A node N that is left out.
    void left(const QByteArray &name, const QByteArray &nodes, const QByteArray &reason)
    {
        append({name, withGood(nodes), {}, {{"N", reason}}, {}, {}});
    }
    /// A node N that keeps its value, with a note in the findings unless that is empty.
    void kept(const QByteArray &name, const QByteArray &nodes, const QByteArray &note,
              qint64 value = 1)
    {
        append({name, withGood(nodes), {}, {}, {{"N", value}}, note});
    }
    /// Nodes that are left out beside one that may live.
    void leftOut(const QByteArray &name, const QByteArray &nodes,
                 const QVector<QPair<QByteArray, QByteArray>> &leftOut,
                 const QVector<QPair<QByteArray, qint64>> &live = {})
    {
        append({name, withGood(nodes), {}, leftOut, live, {}});
    }
    void refused(const QByteArray &name, const QByteArray &xml, const QByteArray &reason)
    {
        append({name, xml, reason, {}, {}, {}});
    }
};

/// A way to refer to a node: %R stands for the reference, %K for the kind of the node that refers, %N for its name, %T
/// for what it refers to.
struct ReferenceWay
{
    QByteArray reference; ///< as it stands in the message
    QByteArray kind;
    QByteArray node;
};

const char *const VALUE = "<%K Name='%N'><pValue>%T</pValue></%K>";
const char *const CONSTANT = "<Integer Name='%N'><Value>1</Value><%R>%T</%R></Integer>";
const char *const KNIFE =
    "<%K Name='%N'><pVariable Name='A'>%T</pVariable><Formula>A+1</Formula></%K>";
const char *const ENTRY = "<Enumeration Name='%N'><EnumEntry Name='E'><%R>%T</%R><Value>1</Value>"
                          "</EnumEntry><Value>1</Value></Enumeration>";

const ReferenceWay REFERENCE_WAYS[] = {
    {"pValue", "Integer", VALUE},
    {"pVariable", "Converter",
     "<%K Name='%N'><pVariable Name='A.Max'>%T</pVariable><FormulaTo>FROM-A.Max</FormulaTo>"
     "<FormulaFrom>TO+A.Max</FormulaFrom><pValue>One</pValue></%K>"},
    {"pVariable", "IntSwissKnife", KNIFE},
    {"pMax", "Integer", CONSTANT},
    {"pIsLocked", "Integer", CONSTANT},
    {"pIsAvailable", "EnumEntry", ENTRY},
    {"pValueIndexed", "Integer",
     "<%K Name='%N'><pIndex>One</pIndex><%R Index='1'>%T</%R><ValueDefault>3</ValueDefault></%K>"},
    {"pAddress", "IntReg", "<%K Name='%N'><%R>%T</%R><Length>4</Length><pPort>Device</pPort></%K>"},
    {"pIndex", "IntReg",
     "<%K Name='%N'><%R Offset='4'>%T</%R><Length>4</Length><pPort>Device</pPort></%K>"},
    {"pOffset", "IntReg",
     "<%K Name='%N'><pIndex %R='%T'>One</pIndex><Length>4</Length><pPort>Device</pPort></%K>"},
    {"pLength", "IntReg",
     "<%K Name='%N'><Address>0</Address><%R>%T</%R><pPort>Device</pPort></%K>"},
    {"pAddress", "StructEntry",
     "<StructReg Comment='s'><%R>%T</%R><Length>4</Length><pPort>Device</pPort>"
     "<%K Name='%N'><Bit>1</Bit></%K></StructReg>"},
};

/// References that nobody follows to get a value.
const ReferenceWay MENTIONS[] = {{"pInvalidator", "Integer", CONSTANT},
                                 {"pSelected", "Integer", CONSTANT}};

QByteArray nodeWith(const ReferenceWay &way, const QByteArray &name, const QByteArray &target)
{
    return QByteArray(way.node)
        .replace("%K", way.kind)
        .replace("%R", way.reference)
        .replace("%N", name)
        .replace("%T", target);
}

QByteArray nameOf(int number)
{
    return "N" + QByteArray::number(number);
}

QByteArray circle(const ReferenceWay &way, int size)
{
    QByteArray nodes;
    for (int i = 0; i < size; ++i) {
        nodes += nodeWith(way, nameOf(i), nameOf((i + 1) % size));
    }
    return nodes;
}

QByteArray integer(const QByteArray &inside)
{
    return "<Integer Name='N'>" + inside + "</Integer>";
}

QByteArray registerOf(const QByteArray &inside, const QByteArray &kind = "IntReg")
{
    return '<' + kind + " Name='N'>" + inside + "<pPort>Device</pPort></" + kind + '>';
}

void addReferences(Rows &rows)
{
    const QPair<int, QByteArray> sizes[] = {
        {1, "N0 -> N0"}, {50, "N0 -> N1 -> N2 -> N3 -> N4 -> ... (45 more) -> N0"}};
    for (const ReferenceWay &way : REFERENCE_WAYS) {
        const QByteArray label = way.reference + " of " + way.kind;
        for (const auto &size : sizes) {
            rows.leftOut("circle of " + QByteArray::number(size.first) + " through " + label,
                         circle(way, size.first),
                         {{"N0", size.second}, {nameOf(size.first - 1), "circle"}});
        }
        const QByteArray its = "its " + way.reference;
        rows.left("missing " + label, nodeWith(way, "N", "Nowhere"),
                  its + " refers to Nowhere, which does not exist");
        rows.left("empty " + label, nodeWith(way, "N", way.reference == "pOffset" ? "?" : " "),
                  its);
        rows.left("category as " + label, nodeWith(way, "N", "Root"),
                  its + " refers to Root, which has no value");
    }
    // An inner formula is a node of its own, in the circle too.
    rows.left("circle through an inner formula",
              registerOf("<IntSwissKnife Name='F'><pVariable Name='A'>N</pVariable>"
                         "<Formula>A</Formula></IntSwissKnife><Length>4</Length>"),
              "circle");
    for (const ReferenceWay &way : MENTIONS) {
        rows.leftOut("circle through " + way.reference, circle(way, 2), {}, {{"N0", 1}, {"N1", 1}});
        rows.kept("missing " + way.reference, nodeWith(way, "N", "Nowhere"),
                  "its " + way.reference + " refers to Nowhere");
    }
}

/// Large enough to end the stack of what works itself down the nodes, and the patience of what does so again for each.
void addDeep(Rows &rows)
{
    constexpr int LENGTH = 20000;
    const auto chain = [](int length, const ReferenceWay &way) {
        QByteArray nodes = "<Integer Name='N0'><Value>1</Value></Integer>";
        for (int i = 1; i < length; ++i) {
            nodes += nodeWith(way, nameOf(i), nameOf(i - 1)) + '\n';
        }
        return nodes;
    };
    rows.leftOut("deep chain", chain(LENGTH, REFERENCE_WAYS[0]),
                 {{nameOf(LENGTH - 1), "it needs N19998"}, {"N128", "deeper than 128"}},
                 {{"N127", 1}});
    rows.leftOut("large circle", circle(REFERENCE_WAYS[0], LENGTH),
                 {{"N0", "(19995 more) -> N0"}, {nameOf(LENGTH - 1), "circle"}});
    QByteArray comb = "<Integer Name='L'><pValue>Gone</pValue></Integer>";
    for (int i = 0; i < LENGTH; ++i) {
        comb += nodeWith({"pMax", "Integer", CONSTANT}, nameOf(i), "L") + '\n';
    }
    rows.leftOut("comb", comb, {{nameOf(LENGTH - 1), "it needs L"}});
    const ReferenceWay twice{"pMin", "Integer",
                             "<%K Name='%N'><pValue>%T</pValue><%R>%T</%R></%K>"};
    rows.leftOut("each uses the next twice, 40 levels", chain(40, twice),
                 {{"N39", "it needs"}, {"N16", "too many references"}}, {{"N10", 1}});
}

void addRegisters(Rows &rows)
{
    for (const QByteArray length :
         {"0", "-1", "4294967300", "9223372036854775807", "abc", "", "18446744073709551616"}) {
        for (const QByteArray kind : {"IntReg", "FloatReg", "StringReg", "Register"}) {
            rows.left(kind + " of length " + length,
                      registerOf("<Address>0</Address><Length>" + length + "</Length>", kind),
                      "ength");
        }
    }
    const QByteArray at0 = "<Address>0</Address>";
    const QByteArray four = "<Length>4</Length>";
    rows.left("IntReg of 9 bytes", registerOf(at0 + "<Length>9</Length>"), "length of 9");
    rows.left("no port", "<IntReg Name='N'>" + at0 + four + "</IntReg>", "no port");
    rows.left("register over the end of 64 bits",
              registerOf("<Address>0xFFFFFFFFFFFFFFFD</Address>" + four), "beyond 64 bits");
    rows.left("addresses that add up beyond 64 bits",
              registerOf("<Address>0xFFFFFFFFFFFFFFF0</Address><Address>0x10</Address>" + four),
              "beyond 64 bits");
    for (const QByteArray bits : {"", "<Bit>-1</Bit>", "<LSB>0</LSB><MSB>32</MSB>",
                                  "<LSB>0</LSB><MSB>9223372036854775807</MSB>"}) {
        rows.left("bits outside: " + bits, registerOf(at0 + four + bits, "MaskedIntReg"),
                  "bits lie outside");
    }
}

void addNumbers(Rows &rows)
{
    rows.left("value abc", integer("<Value>abc</Value>"), "\"abc\" is no number");
    rows.left("value 2^64", integer("<Value>18446744073709551616</Value>"),
              "no integer of 64 bits");
    rows.left("no value", integer("<Min>0</Min>"), "no value");
    for (const QByteArray text : {"NaN", "INF", "1e999"}) {
        rows.left("float value " + text, "<Float Name='N'><Value>" + text + "</Value></Float>",
                  "is not finite");
    }
    rows.kept("all 64 bits", integer("<Value>0xFFFFFFFFFFFFFFFF</Value>"), {}, -1);
    rows.kept("min above max", integer("<Value>1</Value><Min>9</Min><Max>2</Max>"),
              "its Min is above its Max");
}

void addFormulas(Rows &rows)
{
    const auto knife = [&rows](const char *name, const QByteArray &inside, const char *reason) {
        rows.left(name, "<IntSwissKnife Name='N'>" + inside + "</IntSwissKnife>", reason);
    };
    knife("formula missing", {}, "no Formula");
    knife("formula that is none", "<Formula>1+*2</Formula>", "its Formula");
    knife("formula with an unknown name", "<Formula>A+1</Formula>", "uses A");
    knife("expressions in a circle",
          "<Expression Name='A'>B</Expression><Expression Name='B'>A</Expression>"
          "<Formula>A</Formula>",
          "leads into a circle: A -> B -> A");
    QByteArray doubling =
        "<Expression Name='E0'>1</Expression><Expression Name='E1'>1</Expression>";
    for (int i = 2; i < 60; ++i) {
        doubling += "<Expression Name='E" + QByteArray::number(i) + "'>E"
            + QByteArray::number(i - 1) + "+E" + QByteArray::number(i - 2) + "</Expression>";
    }
    knife("expressions that double", doubling + "<Formula>E59</Formula>", "uses too many");
}

void addNames(Rows &rows)
{
    rows.left("name twice", integer("<Value>1</Value>") + integer("<Value>2</Value>"),
              "the name stands for two nodes");
    rows.kept("entry value twice",
              "<Enumeration Name='N'><EnumEntry Name='A'><Value>1</Value></EnumEntry>"
              "<EnumEntry Name='B'><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>",
              "its entry B has the value 1 of another one");
    // Two lines long, besides: a finding has to stay one.
    const QByteArray longName(1000000, 'x');
    rows.left("name of a million letters",
              integer("<pValue>A\n" + longName + "</pValue>") + "<Integer Name='A&#10;" + longName
                  + "'/>",
              "it needs A xxxxxxxx");
}

void addDocuments(Rows &rows)
{
    const QByteArray good = withGood({});
    const QByteArray root = good.mid(good.indexOf("<Reg"));
    rows.refused("document type with entities",
                 "<!DOCTYPE RegisterDescription [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]>" + root,
                 "document type");
    rows.refused("nested elements of an extension",
                 withGood(integer("<Extension>" + QByteArray("<x>").repeated(5000)
                                  + QByteArray("</x>").repeated(5000) + "</Extension>")),
                 "nest deeper");
    rows.refused("too many nodes",
                 withGood("<StructReg>"
                          + QByteArray("<StructEntry/>").repeated(NodeTableReader::MAX_NODES + 1)
                          + "</StructReg>"),
                 "more than");
    rows.refused("struct that passes on a thousand references to each of its entries",
                 withGood("<StructReg>" + QByteArray("<pIsLocked>One</pIsLocked>").repeated(1000)
                          + QByteArray("<StructEntry Name='N'/>").repeated(10000) + "</StructReg>"),
                 "more than");
    const QPair<QByteArray, QByteArray> others[] = {
        {QByteArray(NodeTableReader::MAX_SIZE + 1, ' '), "bytes"},
        {"not found", "line 1"},
        {"<html><body/></html>", "RegisterDescription"},
        {good + root, "line"},
        {withGood(QByteArray("<Integer Name='A'>\0</Integer>", 29)), "line"}};
    for (const auto &other : others) {
        rows.refused("no description: " + other.first.left(20), other.first, other.second);
    }
    rows.append({"byte order mark", "\xEF\xBB\xBF" + good, {}, {}, {{"One", 1}}, {}});
    rows.append({"categories in a circle",
                 withGood("<Category Name='A'><pFeature>B</pFeature></Category>"
                          "<Category Name='B'><pFeature>A</pFeature></Category>"),
                 {},
                 {},
                 {{"One", 1}},
                 {}});
    const QByteArray whole = withGood(circle(REFERENCE_WAYS[0], 50));
    for (int eighth = 1; eighth < 8; ++eighth) {
        rows.refused("cut off after " + QByteArray::number(eighth) + " eighths",
                     whole.left(whole.size() * eighth / 8), "line");
    }
}

} // namespace

/// Descriptions from strangers: what is sound lives, what is not says so, nothing is made up.
class HostileDescriptionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void checked_data();
    void checked();
};

void HostileDescriptionsTest::checked_data()
{
    QTest::addColumn<HostileDescription>("row");
    Rows rows;
    addReferences(rows);
    addDeep(rows);
    addRegisters(rows);
    addNumbers(rows);
    addFormulas(rows);
    addNames(rows);
    addDocuments(rows);
    for (const HostileDescription &row : qAsConst(rows)) {
        QTest::newRow(row.name.constData()) << row;
    }
}

void HostileDescriptionsTest::checked()
{
    QFETCH(HostileDescription, row);
    NodeTable table;
    QString refusal;
    int line = 0;
    const bool isRead = NodeTableReader::read(row.xml, &table, &refusal, &line);
    QCOMPARE(isRead, row.refusal.isEmpty());
    if (!isRead) {
        QVERIFY2(refusal.contains(QString::fromUtf8(row.refusal)), qPrintable(refusal));
        QVERIFY(line >= 1 && line <= row.xml.count('\n') + 1);
        return;
    }
    const QVector<NodeFault> faults = NodeTableCheck::findProblems(&table);
    for (const auto &left : row.leftOut) {
        const NodeId id = table.find(left.first);
        QVERIFY(id != NO_NODE);
        QVERIFY(!table.at(id).problem.isEmpty());
        const bool isFound =
            std::any_of(faults.cbegin(), faults.cend(), [&left](const NodeFault &fault) {
                return fault.node == left.first && fault.line > 0 && !fault.isHarmless
                    && fault.reason.contains(left.second);
            });
        QVERIFY2(isFound, table.at(id).problem.constData());
    }
    bool isNoted = row.note.isEmpty();
    for (const NodeFault &fault : faults) {
        isNoted = isNoted || (fault.isHarmless && fault.reason.contains(row.note));
        // Lines of a log and of --lint: one line each, whatever the description holds.
        QVERIFY(fault.reason.size() < 1000 && !fault.reason.contains('\n'));
    }
    QVERIFY(isNoted);
    QCOMPARE(table.at(table.find("Good")).problem, QByteArray());
    if (row.live.isEmpty()) {
        return;
    }
    QLoggingCategory::setFilterRules("vexa.devicetask.description=false");
    CameraHost host;
    const auto opened = host.openCamera(*deviceWith(row.xml).source);
    QVERIFY2(opened.error.isEmpty(), qPrintable(opened.error));
    for (const auto &live : row.live) {
        _NODE_INT_VALUE_ value{};
        QVERIFY(taskOf(opened.cameraId)
                    .GetIntegerValue(QString::fromUtf8(live.first), &value, nullptr, true, false));
        QCOMPARE(value.value, live.second);
    }
}

QTEST_GUILESS_MAIN(HostileDescriptionsTest)
#include "tst_HostileDescriptions.moc"
