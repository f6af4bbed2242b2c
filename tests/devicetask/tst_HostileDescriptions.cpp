#include "DeviceFixture.h"
#include "HostileDescriptions.h"
#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeAssigner.h"
#include "host/devicetask/nodes/NodeBounds.h"
#include "host/devicetask/nodes/NodeEvaluator.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QtTest>

#include <algorithm>

Q_DECLARE_METATYPE(HostileDescription)

namespace {

/// Nodes that the check of a description would have refused: the evaluation must hold on its own.
struct UncheckedNodes
{
    NodeId add(NodeKind kind, const QByteArray &name, NodeId value = NO_NODE)
    {
        NodeInfo node;
        node.name = name;
        node.kind = kind;
        node.value.source =
            value == NO_NODE ? NodeOperand::Source::Constant : NodeOperand::Source::Node;
        node.value.node = value;
        return table.add(node);
    }
    /// A swiss knife that adds a node to itself.
    NodeId addDouble(const QByteArray &name, NodeId summand)
    {
        const NodeId id = add(NodeKind::IntSwissKnife, name);
        NodeInfo &node = table.at(id);
        NodeVariable variable;
        variable.name = "V";
        variable.node = summand;
        node.variables = {variable, variable};
        for (int i = 0; i < 2; ++i) {
            NodeFormula::Name meaning;
            meaning.index = i;
            node.formula.names.append(meaning);
        }
        QByteArray reason;
        node.formula.formula = Formula::parse("V+W", &reason);
        return id;
    }

    NodeTable table;
    LocalValues locals;
    std::atomic<unsigned int> answered{0};
    const DeviceSession session{nullptr, table, locals, answered};
};

} // namespace

/// Descriptions from strangers: what is sound lives, what is not says so, nothing is made up.
class HostileDescriptionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void checked_data();
    void checked();
    void textOfACircleStaysShort();
    void circleEnds();
    void doublingEnds();
    void expressionCircleEnds();
};

void HostileDescriptionsTest::checked_data()
{
    QTest::addColumn<HostileDescription>("row");
    for (const HostileDescription &row : hostileDescriptions()) {
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
    const auto opened = host.openCamera(sourceOf(std::make_shared<MemoryDeviceState>(row.xml)));
    QVERIFY2(opened.error.isEmpty(), qPrintable(opened.error));
    for (const auto &live : row.live) {
        _NODE_INT_VALUE_ value{};
        QVERIFY(taskOf(opened.cameraId)
                    .GetIntegerValue(QString::fromUtf8(live.first), &value, nullptr, true, false));
        QCOMPARE(value.value, live.second);
    }
}

void HostileDescriptionsTest::textOfACircleStaysShort()
{
    const QByteArray name = "A\n" + QByteArray(100000, 'a');
    NodeTable table;
    QString refusal;
    QVERIFY(NodeTableReader::read("<RegisterDescription><Integer Name=\"A&#10;" + name.mid(2)
                                      + "\"><pValue>" + name
                                      + "</pValue></Integer></RegisterDescription>",
                                  &table, &refusal));
    const QVector<NodeFault> faults = NodeTableCheck::findProblems(&table);
    QCOMPARE(faults.size(), 1);
    QVERIFY(faults[0].reason.contains("aaa... -> A aaa"));
    QVERIFY(faults[0].reason.size() < 250);
}

void HostileDescriptionsTest::circleEnds()
{
    constexpr int LENGTH = 5000; // more than the depth that is followed
    UncheckedNodes nodes;
    for (int i = 0; i < LENGTH; ++i) {
        nodes.add(NodeKind::Integer, "N" + QByteArray::number(i), (i + 1) % LENGTH);
    }
    FormulaNumber number;
    qint64 integer = 0;
    bool flag = false;
    int mode = 4;
    QCOMPARE(NodeEvaluator(nodes.session).number(0, &number).code(), NODE_LOGICAL);
    NodeEvaluator evaluator(nodes.session);
    QCOMPARE(NodeBounds(evaluator).minimum(0, &number).code(), NODE_LOGICAL);
    QCOMPARE(NodeBounds(evaluator).takesAll64Bits(0, &flag).code(), NODE_LOGICAL);
    QCOMPARE(NodeAssigner(evaluator).number(0, number).code(), NODE_LOGICAL);
    QCOMPARE(evaluator.integer(0, &integer).code(), NODE_LOGICAL);
    QVERIFY(!AccessMode::of(nodes.session, "N0", &mode).failed());
    QCOMPARE(mode, int(NODE_NI));
}

/// 60 levels, each of which uses the next one twice: 2^60 evaluations.
void HostileDescriptionsTest::doublingEnds()
{
    UncheckedNodes nodes;
    NodeId last = nodes.add(NodeKind::Integer, "End");
    for (int i = 0; i < 60; ++i) {
        last = nodes.addDouble("Level" + QByteArray::number(i), last);
    }
    FormulaNumber number;
    int mode = 4;
    const DeviceError error = NodeEvaluator(nodes.session).number(last, &number);
    QCOMPARE(error.code(), NODE_LOGICAL);
    QVERIFY2(error.remark().contains("too many references"), qPrintable(error.remark()));
    AccessMode::of(nodes.session, "Level59", &mode);
    QVERIFY(mode < NODE_WO);
}

void HostileDescriptionsTest::expressionCircleEnds()
{
    UncheckedNodes nodes;
    const NodeId id = nodes.add(NodeKind::IntSwissKnife, "Knife");
    NodeFormula formula;
    QByteArray reason;
    formula.formula = Formula::parse("X+1", &reason);
    NodeFormula::Name name;
    name.source = NodeFormula::Name::Source::Expression;
    formula.names.append(name);
    nodes.table.at(id).expressions.append(formula);
    nodes.table.at(id).formula = formula;
    FormulaNumber number;
    QCOMPARE(NodeEvaluator(nodes.session).number(id, &number).code(), NODE_LOGICAL);
}

QTEST_GUILESS_MAIN(HostileDescriptionsTest)
#include "tst_HostileDescriptions.moc"
