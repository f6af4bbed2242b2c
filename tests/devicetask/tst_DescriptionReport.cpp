#include "host/devicetask/DescriptionReport.h"
#include "host/simulator/SimulatedDevices.h"

#include <QtTest>

#include <arv.h>

/// The findings of `--lint` about descriptions that are known to be sound, and the counts.
class DescriptionReportTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void knownDescriptionsAreClean_data();
    void knownDescriptionsAreClean();
    void countsWhatIsLeftOut();
    void refusedDescription();
};

void DescriptionReportTest::knownDescriptionsAreClean_data()
{
    QTest::addColumn<QByteArray>("xml");
    const QStringList ids = SimulatedDevices::builtInIds();
    for (const QString &id : ids) {
        QTest::newRow(qPrintable(id)) << SimulatedDevices::builtIn(id).control->description();
    }
    // Any call of the library brings its resources in.
    arv_get_n_interfaces();
    GBytes *bytes = g_resources_lookup_data("/org/aravis/arv-fake-camera.xml",
                                            G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
    QVERIFY(bytes);
    gsize size = 0;
    const auto *text = static_cast<const char *>(g_bytes_get_data(bytes, &size));
    QTest::newRow("fake camera of Aravis") << QByteArray(text, static_cast<int>(size));
    g_bytes_unref(bytes);
}

void DescriptionReportTest::knownDescriptionsAreClean()
{
    QFETCH(QByteArray, xml);
    const DescriptionReport report = DescriptionReport::of(xml);
    QStringList findings;
    for (const DescriptionReport::Finding &finding : report.findings) {
        findings +=
            QStringLiteral("%1: %2: %3").arg(finding.line).arg(finding.node, finding.reason);
    }
    QCOMPARE(findings.join('\n'), QString());
    QCOMPARE(report.leftOut, 0);
    QVERIFY(report.nodes > 60);
}

void DescriptionReportTest::countsWhatIsLeftOut()
{
    const DescriptionReport report = DescriptionReport::of(
        "<RegisterDescription>\n<Integer Name=\"A\"><pValue>B</pValue></Integer>\n"
        "<Integer Name=\"B\"><Value>x</Value><pMax>Gone</pMax></Integer>\n"
        "<Integer Name=\"C\"><Value>1</Value><Inc>0</Inc></Integer></RegisterDescription>");
    QCOMPARE(report.nodes, 3);
    QCOMPARE(report.leftOut, 2);
    QCOMPARE(report.findings.size(), 4);
    QCOMPARE(report.findings[0].node, QString("A"));
    QVERIFY(report.findings[0].isLeftOut);
    QVERIFY(!report.findings[3].isLeftOut);
}

void DescriptionReportTest::refusedDescription()
{
    const DescriptionReport report = DescriptionReport::of("<RegisterDescription>\n\n<a>");
    QCOMPARE(report.nodes, 0);
    QCOMPARE(report.findings.size(), 1);
    QCOMPARE(report.findings[0].line, 3);
    QVERIFY(report.findings[0].reason.startsWith("The device description is not usable: line 3"));
    QVERIFY(!report.findings[0].reason.endsWith('.'));
}

QTEST_GUILESS_MAIN(DescriptionReportTest)
#include "tst_DescriptionReport.moc"
