#include "DeviceFixture.h"
#include "HostileDescriptions.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QtTest>

#include <algorithm>

Q_DECLARE_METATYPE(HostileDescription)

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
