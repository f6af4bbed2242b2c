#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeAssigner.h"
#include "host/devicetask/nodes/NodeBounds.h"
#include "host/devicetask/nodes/NodeEvaluator.h"
#include "host/devicetask/nodes/RegisterCodec.h"

#include <QtTest>

namespace {

/// Tables that the check of a description would have refused: the evaluation must hold on its own.
struct Table
{
    NodeId add(NodeKind kind, const QByteArray &name, NodeId value = NO_NODE)
    {
        NodeInfo node;
        node.name = name;
        node.kind = kind;
        node.value.source =
            value == NO_NODE ? NodeOperand::Source::Constant : NodeOperand::Source::Node;
        node.value.node = value;
        return nodes.add(node);
    }
    /// A swiss knife that adds up these nodes.
    NodeId addSum(const QByteArray &name, const QVector<NodeId> &summands)
    {
        const NodeId id = add(NodeKind::IntSwissKnife, name);
        NodeInfo &node = nodes.at(id);
        QByteArrayList names;
        for (int i = 0; i < summands.size(); ++i) {
            NodeVariable variable;
            variable.name = 'V' + QByteArray::number(i);
            variable.node = summands[i];
            node.variables.append(variable);
            NodeFormula::Name meaning;
            meaning.index = i;
            node.formula.names.append(meaning);
            names.append(variable.name);
        }
        QByteArray reason;
        node.formula.formula = Formula::parse(names.join('+'), &reason);
        return id;
    }

    NodeTable nodes;
    LocalValues locals;
    std::atomic<unsigned int> answered{0};
    const DeviceSession session{nullptr, nodes, locals, answered};
};

} // namespace

class NodeEvaluatorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void circleEnds_data();
    void circleEnds();
    void doublingEnds();
    void expressionCircleEnds();
    void bitFields_data();
    void bitFields();
};

void NodeEvaluatorTest::circleEnds_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("of itself") << 1;
    QTest::newRow("of two") << 2;
    QTest::newRow("longer than the depth") << 5000;
}

void NodeEvaluatorTest::circleEnds()
{
    QFETCH(int, length);
    Table table;
    for (int i = 0; i < length; ++i) {
        table.add(NodeKind::Integer, "N" + QByteArray::number(i), (i + 1) % length);
    }
    FormulaNumber number;
    qint64 integer = 0;
    bool flag = false;
    int mode = 4;
    QCOMPARE(NodeEvaluator(table.session).number(0, &number).code(), NODE_LOGICAL);
    NodeEvaluator evaluator(table.session);
    QCOMPARE(NodeBounds(evaluator).minimum(0, &number).code(), NODE_LOGICAL);
    QCOMPARE(NodeBounds(evaluator).takesAll64Bits(0, &flag).code(), NODE_LOGICAL);
    QCOMPARE(NodeAssigner(evaluator).number(0, number).code(), NODE_LOGICAL);
    QCOMPARE(evaluator.integer(0, &integer).code(), NODE_LOGICAL);
    QVERIFY(!AccessMode::of(table.session, "N0", &mode).failed());
    QCOMPARE(mode, int(NODE_NI));
}

/// 60 levels, each of which uses the next one twice: 2^60 evaluations.
void NodeEvaluatorTest::doublingEnds()
{
    Table table;
    NodeId last = table.add(NodeKind::Integer, "End");
    for (int i = 0; i < 60; ++i) {
        last = table.addSum("Level" + QByteArray::number(i), {last, last});
    }
    FormulaNumber number;
    int mode = 4;
    const DeviceError error = NodeEvaluator(table.session).number(last, &number);
    QCOMPARE(error.code(), NODE_LOGICAL);
    QVERIFY2(error.remark().contains("too many references"), qPrintable(error.remark()));
    AccessMode::of(table.session, "Level59", &mode);
    QVERIFY(mode < NODE_WO);
}

void NodeEvaluatorTest::expressionCircleEnds()
{
    Table table;
    const NodeId id = table.add(NodeKind::IntSwissKnife, "Knife");
    NodeFormula formula;
    QByteArray reason;
    formula.formula = Formula::parse("X+1", &reason);
    NodeFormula::Name name;
    name.source = NodeFormula::Name::Source::Expression;
    formula.names.append(name);
    table.nodes.at(id).expressions.append(formula);
    table.nodes.at(id).formula = formula;
    FormulaNumber number;
    QCOMPARE(NodeEvaluator(table.session).number(id, &number).code(), NODE_LOGICAL);
}

void NodeEvaluatorTest::bitFields_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isBigEndian");
    QTest::addColumn<int>("lsb");
    QTest::addColumn<int>("msb");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<qint64>("written");
    QTest::addColumn<QByteArray>("after"); // empty when it does not fit
    const auto row = [](const char *tag, const char *bytes, bool isBigEndian, int lsb, int msb,
                        bool isSigned, qint64 value, qint64 written, const char *after) {
        QTest::newRow(tag) << QByteArray::fromHex(bytes) << isBigEndian << lsb << msb << isSigned
                           << value << written << QByteArray::fromHex(after);
    };
    row("top bit of 64, big", "8000000000000000", true, 0, 0, false, 1, 0, "0000000000000000");
    row("top bit of 64, little", "0000000000000080", false, 63, 63, false, 1, 0,
        "0000000000000000");
    row("lowest bit of 64, big", "0000000000000001", true, 63, 63, true, -1, 0, "0000000000000000");
    row("all of 64", "8000000000000001", true, 63, 0, true, qint64(0x8000000000000001ULL), -1,
        "ffffffffffffffff");
    row("upper 63", "fffffffffffffffe", true, 62, 0, true, -1, 1, "0000000000000002");
    row("24 bits", "810203", true, -1, -1, true, -0x7efdfd, 0x7fffff, "7fffff");
    row("24 bits, little", "810203", false, -1, -1, false, 0x030281, 0x1000000, "");
    row("bits the other way round", "00ff0000", true, 8, 15, false, 0xff, 0x12, "00120000");
    row("negative number of too many bits", "00", false, 0, 3, true, 0, -9, "");
    row("bits of an unsigned number into a signed field", "00", false, 0, 3, true, 0, 15, "0f");
    row("one bit, signed", "01", false, 0, 0, true, -1, -1, "01");
}

void NodeEvaluatorTest::bitFields()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isBigEndian);
    QFETCH(int, lsb);
    QFETCH(int, msb);
    QFETCH(bool, isSigned);
    QFETCH(qint64, written);
    QFETCH(QByteArray, after);
    NodeInfo node;
    node.isBigEndian = isBigEndian;
    node.lsb = lsb;
    node.msb = msb;
    const RegisterCodec::BitField field = RegisterCodec::fieldOf(node, bytes.size());
    quint64 bits = RegisterCodec::load(bytes, isBigEndian);
    QTEST(RegisterCodec::extract(bits, field, isSigned), "value");
    QCOMPARE(RegisterCodec::insert(written, field, &bits), !after.isEmpty());
    QCOMPARE(RegisterCodec::store(bits, bytes.size(), isBigEndian),
             after.isEmpty() ? bytes : after);
}

QTEST_GUILESS_MAIN(NodeEvaluatorTest)
#include "tst_NodeEvaluator.moc"
