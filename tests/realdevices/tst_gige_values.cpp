#include "tests/realdevices/HelperProcess.h"
#include "tests/realdevices/OwnNetwork.h"
#include "tests/workbench/WorkbenchProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>

/// The program on a GigE Vision camera, over the network.
class GigeValuesTest : public QObject
{
    Q_OBJECT
private slots:
    void valuesAreThoseOfTheTool_data();
    void valuesAreThoseOfTheTool();
    void foundDevicesAreListed();
    void refusedCameraTellsWhy();

private:
    WorkbenchProcess m_workbench;
};

namespace {

/// Nodes whose rows in the tree have no value.
const QStringList BARE_TAGS{"IntReg", "IntSwissKnife"};

/// The feature values that arv-tool-0.8 prints of the camera, by name. Categories and commands have none.
QMap<QString, QString> toolValues()
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    tool.start("arv-tool-0.8", {"-a", HelperProcess::cameraAddress(), "values"});
    tool.waitForFinished();
    // "    Float        : [RW] 'Gain' = 6.5 dB"; texts and entries stand in quotes.
    const QRegularExpression line("^\\s*\\w+\\s*: \\[\\w+\\] '(\\w+)' = ('?)(.*)\\2$",
                                  QRegularExpression::MultilineOption);
    QMap<QString, QString> values;
    for (auto it = line.globalMatch(QString::fromUtf8(tool.readAllStandardOutput()));
         it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        values.insert(match.captured(1), match.captured(3));
    }
    return values;
}

/// The tool prints a float with six digits and a unit behind it.
bool sameNumber(const QString &tool, double value)
{
    bool ok = false;
    const double expected = tool.section(' ', 0, 0).toDouble(&ok);
    return ok && std::abs(expected - value) <= 1e-5 * std::abs(expected);
}

/// The names of the entries with this value. The tool says "(null)" for a value without an entry.
QStringList entriesOf(const QJsonObject &item)
{
    QStringList names;
    for (const QJsonValue &entry : item["entries"].toArray()) {
        if (entry["value"].toVariant().toLongLong() == item["value"].toVariant().toLongLong()) {
            names += entry["name"].toString();
        }
    }
    return names.isEmpty() ? QStringList{"(null)"} : names;
}

/// What is wrong with one row of the tree, empty when it is as the tool says.
QString compare(const QString &tool, const QJsonObject &item)
{
    const QVariant value = item["value"].toVariant();
    if (value.isNull()) {
        return QStringLiteral("nothing instead of ") + tool;
    }
    bool same = false;
    const QString tag = item["tag"].toString();
    if (tag == "Float" || tag == "SwissKnife" || tag == "Converter") {
        same = sameNumber(tool, value.toDouble());
    } else if (tag == "Enumeration") {
        same = entriesOf(item).contains(tool);
    } else if (tag == "Boolean") {
        same = value.toBool() == (tool == "true");
    } else if (tag == "String" || tag == "StringReg") {
        same = value.toString() == tool;
    } else {
        same = value.toString() == tool.section(' ', 0, 0);
    }
    return same ? QString() : QStringLiteral("%1 instead of %2").arg(value.toString(), tool);
}

} // namespace

void GigeValuesTest::valuesAreThoseOfTheTool_data()
{
    QTest::addColumn<QStringList>("description");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("description of Aravis' fake camera") << QStringList() << 20;
    QTest::newRow("description of the area camera") << QStringList{"area-camera"} << 220;
    QTest::newRow("description of the line camera") << QStringList{"line-camera"} << 20;
}

void GigeValuesTest::valuesAreThoseOfTheTool()
{
    QFETCH(QStringList, description);
    QFETCH(int, atLeast);
    HelperProcess camera;
    QVERIFY(camera.startCamera(description));
    const QMap<QString, QString> tool = toolValues();
    const WorkbenchProcess::Result result =
        m_workbench.run({"--gige", HelperProcess::cameraAddress(), "--dump", "-"});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());

    QStringList wrong; // all of them: one fault seldom comes alone
    int compared = 0;
    QSet<QString> seen;
    for (const QJsonValue &row : QJsonDocument::fromJson(result.out).array()) {
        const QJsonObject item = row.toObject();
        const QString name = item["name"].toString();
        const auto expected = tool.constFind(name);
        seen.insert(name);
        if (BARE_TAGS.contains(item["tag"].toString())) {
            continue;
        }
        if (expected == tool.constEnd()) {
            if (!item["value"].isNull()) {
                wrong += name + ": a value that the tool does not have";
            }
            continue;
        }
        const QString difference = compare(*expected, item);
        if (!difference.isEmpty()) {
            wrong += name + ": " + difference;
        }
        ++compared;
    }
    for (auto it = tool.cbegin(); it != tool.cend(); ++it) {
        if (!seen.contains(it.key())) {
            wrong += it.key() + ": not in the tree";
        }
    }
    QCOMPARE(wrong.join('\n'), QString());
    QVERIFY2(compared >= atLeast, QByteArray::number(compared));
}

void GigeValuesTest::foundDevicesAreListed()
{
    HelperProcess camera;
    QVERIFY(camera.startCamera());
    const WorkbenchProcess::Result result = m_workbench.run({"--list"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.err, QByteArray());
    const QByteArrayList lines = result.out.chopped(1).split('\n');
    QVERIFY(lines.size() > 1);
    QVERIFY2(('\n' + result.out).contains("\narea-camera\t"), result.out.constData());
    QCOMPARE(lines.last(),
             QByteArray("127.0.0.1\tGigE\tFake\t" + HelperProcess::cameraSerial().toUtf8()
                        + "\t127.0.0.1"));
}

void GigeValuesTest::refusedCameraTellsWhy()
{
    // Nothing but the loopback interface is there.
    WorkbenchProcess::Result result = m_workbench.run({"--gige", "10.9.8.7", "--dump", "-"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains("10.9.8.7") && result.err.contains("unreachable"),
             result.err.constData());

    // A description of more bytes than any process can have: taken at its word it ends the program.
    HelperProcess camera;
    QVERIFY(camera.startCamera({"area-camera", "ffffffffffffff"}));
    result = m_workbench.run({"--gige", HelperProcess::cameraAddress(), "--dump", "-"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains("72057594037927935 bytes"), result.err.constData());
}

int main(int argc, char *argv[])
{
    OwnNetwork::enter(argv);
    QCoreApplication application(argc, argv);
    GigeValuesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_gige_values.moc"
