#include "ShellServicesModule/QVexaEventBus.h"
#include "WindowFixture.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QLocale>
#include <QStandardItem>
#include <QTableView>
#include <QtTest>

/// The tables that the window lends the module for a code reader: what they show, and that they are taken back.
class WorkbenchTablesTest : public WindowTest
{
    Q_OBJECT
private slots:
    void init();
    void writesShowInTheSelectedSet();
    void selectedSetIsRead();
    void tablesGoWithTheCamera();
    void returnedReaderGetsThemAnew();

private:
    QTableView &table(const char *name = "PollingTable")
    {
        return *w().window().findChild<QTableView *>(QLatin1String(name));
    }
    /// Row of the feature: the text of the module's first item, which no view shows.
    int rowOf(const QString &feature);
    QString cell(const QString &feature, int column);
    bool write(const QString &feature, const QVariant &value);
};

namespace {

const QString READER = QStringLiteral("code-reader");
const QString UNKNOWN = QChar(0x2013);
constexpr int CHANGED = 8; ///< behind the eight sets

VexaMainFeatureWidget &mainWidget()
{
    return *VexaMainFeatureWidget::instance();
}

} // namespace

void WorkbenchTablesTest::init()
{
    open({READER, FIRST});
    w().openAndWait(READER);
    QTRY_COMPARE(cell("PollingParamName", 0), QString("Set"));
}

int WorkbenchTablesTest::rowOf(const QString &feature)
{
    const QStandardItem *first =
        mainWidget().GetPollingMap(w().session(READER)->cameraId()).value(feature).value(0);
    return first ? first->row() : -1;
}

QString WorkbenchTablesTest::cell(const QString &feature, int column)
{
    const QAbstractItemModel *model = table().model();
    return model ? model->index(rowOf(feature), column).data().toString() : QString();
}

bool WorkbenchTablesTest::write(const QString &feature, const QVariant &value)
{
    VexaFeatureTree *tree = w().session(READER)->tree();
    return tree->setFeatureValue(tree->propertyItemByName(feature), value, true, false);
}

void WorkbenchTablesTest::writesShowInTheSelectedSet()
{
    static const struct
    {
        const char *feature;
        QVariant value;
        const char *shown;
    } rows[] = {{"PollingParamEnable", 0, "Off"},     {"PollingSingleParamTimeout", 250, "250"},
                {"PollingLensType", 0, "Mechanical"}, {"PollingExposureTime", 555.5, "555.50"},
                {"PollingParamName", "Gate", "Gate"}, {"PollingFocusPos", 12, "12"},
                {"PollingLightEnable", 0, "Off"},     {"PollingIOAction", 2, "High"}};
    for (const auto &row : rows) {
        QVERIFY2(write(row.feature, row.value), row.feature);
        QTRY_COMPARE(cell(row.feature, 0), QString(row.shown));
        QCOMPARE(cell(row.feature, CHANGED),
                 QLocale::system().toString(QDate::currentDate(), "yyyy-MM-dd"));
        QCOMPARE(cell(row.feature, 1), UNKNOWN);
    }
    // The date and the sets beside it are the module's: an unwritten row has none.
    QCOMPARE(cell("PollingVertline", CHANGED), QString());
    QTRY_COMPARE(cell("PollingLightSelector", 0), QString("Left: Off"));
    QTRY_COMPARE(cell("PollingIOSelector", 0), QString("Line0: High"));
    const QVariant font = table().model()->index(rowOf("PollingFocusPos"), 0).data(Qt::FontRole);
    QVERIFY(font.value<QFont>().bold());
}

void WorkbenchTablesTest::selectedSetIsRead()
{
    QVERIFY(write("PollingGain", 1.25));
    QVERIFY(write("PollingParam", 5));
    QTRY_COMPARE(cell("PollingGain", 5), QString("6.00"));
    QVERIFY(write("PollingGain", 2.5));
    QTRY_COMPARE(cell("PollingGain", 5), QString("2.50"));
    QCOMPARE(cell("PollingGain", 0), QString("1.25"));
    QCOMPARE(cell("PollingGain", 4), UNKNOWN);
    QVERIFY(table().model()->headerData(5, Qt::Horizontal, Qt::FontRole).isValid());
    // Changed behind the tree's back: the tree's next reading brings the table up to date too.
    QVERIFY(write("PollingParam", 0));
    QTRY_VERIFY(!table().model()->headerData(5, Qt::Horizontal, Qt::FontRole).isValid());
    QCOMPARE(cell("PollingGain", 5), QString("2.50"));
    // Loaded parameters make the other sets unknown.
    QVERIFY(write("PollingParam", 5));
    QTRY_VERIFY(table().model()->headerData(5, Qt::Horizontal, Qt::FontRole).isValid());
    emit QVexaEventBus::Instance()->SigVexaEventLoadParameters();
    QTRY_COMPARE(cell("PollingGain", 0), UNKNOWN);
    QTRY_COMPARE(cell("PollingGain", 5), QString("2.50"));
}

void WorkbenchTablesTest::tablesGoWithTheCamera()
{
    for (const bool selectedOther : {false, true}) {
        const long int cameraId = w().session(READER)->cameraId();
        QVERIFY(table().isVisibleTo(table().parentWidget()));
        QCOMPARE(mainWidget().GetCodeNumMaxMin(cameraId, "LocBarNum"), 200);
        QCOMPARE(table("CodeTypeTable").model()->rowCount(), 3);
        if (selectedOther) {
            w().openAndWait(FIRST);
            QVERIFY(!table().model());
        }
        QCOMPARE(mainWidget().GetPollingMap(cameraId).size(), 18);
        w().window().closeDevice(READER);
        QVERIFY(!table().model());
        QVERIFY(mainWidget().GetPollingMap(cameraId).isEmpty());
        QCOMPARE(mainWidget().GetCodeNumMaxMin(cameraId, "LocBarNum"), -1);
        w().forgetUpdates();
        w().openAndWait(READER);
    }
}

void WorkbenchTablesTest::returnedReaderGetsThemAnew()
{
    const QAbstractItemModel *former = table().model();
    w().forgetUpdates();
    w().unplug(READER);
    QTRY_COMPARE_WITH_TIMEOUT(w().stateText(READER), QString("Lost"), LONG_WAIT);
    w().control(READER).comeBack();
    QTRY_VERIFY_WITH_TIMEOUT(w().isUpdated(READER), LONG_WAIT);
    QVERIFY(table().model() && table().model() != former);
    QVERIFY(write("PollingGain", 3.5));
    QTRY_COMPARE(cell("PollingGain", 0), QString("3.50"));
    w().window().setLanguage("CH");
    QCOMPARE(table().model()->headerData(rowOf("PollingGain"), Qt::Vertical).toString(),
             QString("轮询增益"));
    QTRY_COMPARE(cell("PollingParamEnable", 0), QString("开"));
}

QTEST_MAIN(WorkbenchTablesTest)
#include "tst_workbench_tables.moc"
