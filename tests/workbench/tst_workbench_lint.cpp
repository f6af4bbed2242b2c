#include "WorkbenchProcess.h"

#include <QtTest>

/// `--lint FILE` as a script sees it.
class WorkbenchLintTest : public QObject
{
    Q_OBJECT
private slots:
    void findings();
    void files_data();
    void files();

private:
    WorkbenchProcess m_workbench;
};

void WorkbenchLintTest::findings()
{
    const QString file = m_workbench.write(
        "bad.xml",
        "<RegisterDescription>\n<Integer Name=\"A\">\n<pValue>B</pValue></Integer>\n"
        "<Integer Name=\"B\"><Value>1</Value>\n<pMax>C</pMax></Integer>\n"
        "<Integer Name=\"Step\"><Value>1</Value><Inc>0</Inc></Integer></RegisterDescription>");
    const WorkbenchProcess::Result result = m_workbench.run({"--lint", file});
    QCOMPARE(result.exitCode, 1);
    const QString expected =
        QStringLiteral("%1:3: A: it needs B, which cannot be evaluated\n"
                       "%1:5: B: its pMax refers to C, which does not exist\n"
                       "%1:6: Step: its Inc is not positive and counts as none\n")
            .arg(file);
    QCOMPARE(QString::fromUtf8(result.out), expected);
    QCOMPARE(QString::fromUtf8(result.err), file + ": 3 findings, 2 of 3 nodes are left out\n");
}

void WorkbenchLintTest::files_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("sound") << m_workbench.write("sound.xml", "<RegisterDescription/>") << 0
                           << QByteArray() << QByteArray("0 findings");
    QTest::newRow("cut off") << m_workbench.write("cut.xml", "<RegisterDescription>\n<Integer") << 1
                             << QByteArray(":2: RegisterDescription: The device description is not")
                             << QByteArray("1 findings");
    QTest::newRow("empty") << m_workbench.write("empty.xml", {}) << 1
                           << QByteArray(":1: RegisterDescription: The device description is empty")
                           << QByteArray("1 findings");
    QTest::newRow("over 64 MiB") << m_workbench.write("large.xml", QByteArray(67108865, ' ')) << 1
                                 << QByteArray("at most 67108864 are read")
                                 << QByteArray("1 findings");
    QTest::newRow("missing") << m_workbench.path("nowhere.xml") << 1 << QByteArray()
                             << QByteArray("nowhere.xml: ");
    QTest::newRow("folder") << m_workbench.path({}) << 1 << QByteArray() << QByteArray(": ");
}

void WorkbenchLintTest::files()
{
    QFETCH(QString, file);
    const WorkbenchProcess::Result result = m_workbench.run({"--lint", file});
    QVERIFY(result.ended);
    QTEST(result.exitCode, "exitCode");
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QVERIFY2(result.out.contains(out) && result.out.isEmpty() == out.isEmpty(),
             result.out.constData());
    QVERIFY2(result.err.contains(err), result.err.constData());
}

QTEST_GUILESS_MAIN(WorkbenchLintTest)
#include "tst_workbench_lint.moc"
