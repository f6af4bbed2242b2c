#include "HostileDescriptions.h"
#include "ProcessCost.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QtTest>

#include <algorithm>
#include <ctime>
#include <limits>

/// What reading and checking makes of descriptions from strangers, without a device.
class HostileTablesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void checked_data();
    void checked();
    void textOfACircleStaysShort();
    void findingsComeByLine();
    void timeGrowsWithTheSizeOnly();
};

void HostileTablesTest::checked_data()
{
    QTest::addColumn<int>("place");
    const auto &rows = hostileDescriptions();
    for (int i = 0; i < rows.size(); ++i) {
        if (ProcessCost::isMeasured() || !rows[i].isForCosts) {
            QTest::newRow(rows[i].name.constData()) << i;
        }
    }
}

void HostileTablesTest::checked()
{
    QFETCH(int, place);
    const HostileDescription &row = hostileDescriptions()[place];
    const QByteArray xml = row.make();
    ProcessCost cost;
    NodeTable table;
    QString refusal;
    int line = 0;
    const bool isRead = NodeTableReader::read(xml, &table, &refusal, &line);
    QVector<NodeFault> faults;
    if (isRead) {
        faults = NodeTableCheck::findProblems(&table);
    }
    cost.verifyGrowth(256);
    cost.verifyTime(1000);
    QCOMPARE(isRead, row.refusal.isEmpty());
    QVERIFY2(refusal.contains(QString::fromUtf8(row.refusal)), qPrintable(refusal));
    if (!isRead) {
        QVERIFY(line >= 1 && line <= xml.count('\n') + 1);
        return;
    }
    for (const HostileDescription::LeftOut &left : row.leftOut) {
        const NodeId id = table.find(left.node);
        QVERIFY(id != NO_NODE);
        QVERIFY(!table.at(id).problem.isEmpty());
        const bool isFound =
            std::any_of(faults.cbegin(), faults.cend(), [&left](const NodeFault &fault) {
                return fault.node == left.node && fault.line > 0 && !fault.isHarmless
                    && fault.reason.contains(left.reason);
            });
        QVERIFY2(isFound, table.at(id).problem.constData());
    }
    for (const HostileDescription::Live &live : row.live) {
        const NodeId id = table.find(live.node);
        QVERIFY(id != NO_NODE);
        QCOMPARE(table.at(id).problem, QByteArray());
    }
    QCOMPARE(table.at(table.find("Good")).problem, QByteArray());
    bool isNoted = row.note.isEmpty();
    for (const NodeFault &fault : qAsConst(faults)) {
        isNoted = isNoted || (fault.isHarmless && fault.reason.contains(row.note));
        // Lines of a log and of --lint: one line each, whatever the description holds.
        QVERIFY(fault.reason.size() < 1000 && !fault.reason.contains('\n'));
    }
    QVERIFY(isNoted);
}

void HostileTablesTest::textOfACircleStaysShort()
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

void HostileTablesTest::findingsComeByLine()
{
    NodeTable table;
    QString refusal;
    QVERIFY(NodeTableReader::read("<RegisterDescription>\n"
                                  "<Integer Name=\"A\">\n<pValue>B</pValue></Integer>\n"
                                  "<Integer Name=\"B\"><Value>1</Value>\n<Inc>0</Inc>\n"
                                  "<pInvalidator>X</pInvalidator>\n<pMax>Y</pMax></Integer>\n"
                                  "</RegisterDescription>",
                                  &table, &refusal));
    QStringList lines;
    for (const NodeFault &fault : NodeTableCheck::findProblems(&table)) {
        lines += QStringLiteral("%1 %2 %3: %4")
                     .arg(fault.line)
                     .arg(QString::fromUtf8(fault.node), fault.isHarmless ? "note" : "left out",
                          QString::fromUtf8(fault.reason));
    }
    QCOMPARE(lines.join('\n'),
             QString("3 A left out: it needs B, which cannot be evaluated\n"
                     "4 B note: its Inc is not positive and counts as none\n"
                     "6 B note: its pInvalidator refers to X, which does not exist\n"
                     "7 B left out: its pMax refers to Y, which does not exist"));
}

void HostileTablesTest::timeGrowsWithTheSizeOnly()
{
    if (!ProcessCost::isMeasured()) {
        QSKIP("times mean nothing under a sanitizer");
    }
    // A comb: every node refers to the same few, which is where careless bookkeeping turns quadratic.
    const auto timeOf = [](int count) {
        QByteArray nodes;
        for (int i = 0; i < count; ++i) {
            nodes += "<Integer Name=\"N" + QByteArray::number(i)
                + "\"><pIsLocked>L</pIsLocked><pMax>M</pMax><Value>1</Value></Integer>";
        }
        const QByteArray xml = "<RegisterDescription>" + nodes
            + "<Integer Name=\"L\"><pValue>Gone</pValue></Integer><Integer "
              "Name=\"M\"><Value>1</Value></Integer></RegisterDescription>";
        qint64 best = std::numeric_limits<qint64>::max();
        for (int run = 0; run < 3; ++run) {
            const std::clock_t start = std::clock();
            NodeTable table;
            QString refusal;
            if (NodeTableReader::read(xml, &table, &refusal)
                && NodeTableCheck::findProblems(&table).size() == count + 1) {
                best = qMin<qint64>(best, std::clock() - start);
            }
        }
        return best;
    };
    const qint64 small = timeOf(5000);
    const qint64 large = timeOf(20000);
    QVERIFY2(large < 8 * small, qPrintable(QString("%1, %2").arg(small).arg(large)));
}

QTEST_GUILESS_MAIN(HostileTablesTest)
#include "tst_HostileTables.moc"
