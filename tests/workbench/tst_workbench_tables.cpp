#include "ShellServicesModule/QVexaEventBus.h"
#include "WindowFixture.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QHeaderView>
#include <QLocale>
#include <QStandardItem>
#include <QTableView>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

/// The tables that the window lends the module for a code reader: what they show, and that they are taken back.
class WorkbenchTablesTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_pFixture.reset(); }
    void writesShowInTheSelectedSet_data();
    void writesShowInTheSelectedSet();
    void selectedSetIsRead();
    void loadedParametersMakeSetsUnknown();
    void tablesGoWithTheCamera_data();
    void tablesGoWithTheCamera();
    void returnedReaderGetsThemAnew();
    void languageReachesTheTables();

private:
    WindowFixture &w() { return *m_pFixture; }
    QTableView &table(const char *name = "PollingTable")
    {
        return *w().window().findChild<QTableView *>(QLatin1String(name));
    }
    /// Row of the feature: the text of the module's first item, which no view shows.
    int rowOf(const QString &feature);
    QString cell(const QString &feature, int column);
    bool write(const QString &feature, const QVariant &value);

    std::unique_ptr<WindowFixture> m_pFixture;
};

namespace {

const QString READER = QStringLiteral("code-reader");
const QString UNKNOWN = QChar(0x2013);
constexpr int CHANGED = 8; ///< behind the eight sets
constexpr int LONG_WAIT = WindowFixture::LONG_WAIT;

VexaMainFeatureWidget &mainWidget()
{
    return *VexaMainFeatureWidget::instance();
}

} // namespace

void WorkbenchTablesTest::init()
{
    m_pFixture = std::make_unique<WindowFixture>(QStringList{READER, WindowFixture::FIRST});
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

void WorkbenchTablesTest::writesShowInTheSelectedSet_data()
{
    QTest::addColumn<QString>("feature");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *feature, const QVariant &value, const char *shown) {
        QTest::newRow(feature) << QString::fromLatin1(feature) << value << shown;
    };
    row("PollingParamEnable", 0, "Off");
    row("PollingFocusEnable", 1, "On");
    row("PollingLightEnable", 0, "Off");
    row("PollingSingleParamTimeout", 250, "250");
    row("PollingSingleParamCodeNum", 3, "3");
    row("PollingSingleParamPeriod", 4, "4");
    row("PollingAlgoROIRegion", 6, "6");
    row("PollingAlgoROIRegionIndex", 5, "5");
    row("PollingFocusPos", 12, "12");
    row("PollingIOAction", 2, "High");
    row("PollingLightSelector", 1, "Left: On, Up: On");
    row("PollingLensType", 0, "Mechanical");
    row("PollingExposureTime", 555.5, "555.50");
    row("PollingGain", 1.25, "1.25");
    row("PollingGamma", 2, "2.00");
    row("PollingParamName", "Gate", "Gate");
}

void WorkbenchTablesTest::writesShowInTheSelectedSet()
{
    QFETCH(QString, feature);
    QFETCH(QVariant, value);
    QFETCH(QString, shown);
    QVERIFY(write(feature, value));
    QTRY_COMPARE(cell(feature, 0), shown);
    QCOMPARE(cell(feature, CHANGED),
             QLocale::system().toString(QDate::currentDate(), "yyyy-MM-dd"));
    QCOMPARE(cell(feature, 1), UNKNOWN);
    // The date and the sets beside it are the module's: an unwritten row has none.
    QCOMPARE(cell("PollingVertline", CHANGED), QString());
    if (feature == "PollingLightEnable") {
        QTRY_COMPARE(cell("PollingLightSelector", 0), QString("Left: Off"));
    } else if (feature == "PollingIOAction") {
        QTRY_COMPARE(cell("PollingIOSelector", 0), QString("Line0: High"));
    } else if (feature == "PollingFocusPos") {
        const QVariant font = table().model()->index(rowOf(feature), 0).data(Qt::FontRole);
        QVERIFY(font.value<QFont>().bold());
    }
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
}

void WorkbenchTablesTest::loadedParametersMakeSetsUnknown()
{
    QVERIFY(write("PollingParam", 5));
    QTRY_COMPARE(cell("PollingGain", 5), QString("6.00"));
    emit QVexaEventBus::Instance()->SigVexaEventLoadParameters();
    QTRY_COMPARE(cell("PollingGain", 0), UNKNOWN);
    QTRY_COMPARE(cell("PollingGain", 5), QString("6.00"));
}

void WorkbenchTablesTest::tablesGoWithTheCamera_data()
{
    QTest::addColumn<bool>("selectedOther");
    QTest::newRow("closed on show") << false;
    QTest::newRow("closed behind another camera") << true;
}

void WorkbenchTablesTest::tablesGoWithTheCamera()
{
    QFETCH(bool, selectedOther);
    const long int cameraId = w().session(READER)->cameraId();
    QVERIFY(table().isVisibleTo(table().parentWidget()));
    QCOMPARE(mainWidget().GetCodeNumMaxMin(cameraId, "LocBarNum"), 200);
    QCOMPARE(mainWidget().GetCodeNumMaxMin(cameraId, "StackBarNum"), 50);
    QCOMPARE(table("CodeTypeTable").model()->rowCount(), 3);
    QCOMPARE(mainWidget().GetPollingMap(cameraId).size(), 18);
    if (selectedOther) {
        w().openAndWait(WindowFixture::FIRST);
        QVERIFY(!table().model());
        QCOMPARE(mainWidget().GetPollingMap(cameraId).size(), 18);
    }
    w().window().closeDevice(READER);
    QVERIFY(!table().model());
    QVERIFY(mainWidget().GetPollingMap(cameraId).isEmpty());
    QCOMPARE(mainWidget().GetCodeNumMaxMin(cameraId, "LocBarNum"), -1);
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
}

void WorkbenchTablesTest::languageReachesTheTables()
{
    w().window().setLanguage("CH");
    const QAbstractItemModel &model = *table().model();
    QCOMPARE(model.headerData(rowOf("PollingGain"), Qt::Vertical).toString(),
             QString::fromUtf8("轮询增益"));
    QCOMPARE(cell("PollingParamEnable", 0), QString::fromUtf8("开"));
    QCOMPARE(cell("PollingLensType", 0), QString::fromUtf8("液态镜头"));
}

QTEST_MAIN(WorkbenchTablesTest)
#include "tst_workbench_tables.moc"
