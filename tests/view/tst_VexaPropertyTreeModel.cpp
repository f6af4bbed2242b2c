#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeIntergerItemValue.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertyTreeModel.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QColor>
#include <QFont>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

class TestVexaPropertyTreeModel : public QObject
{
    Q_OBJECT
private slots:
    void structureIsSound();
    void texts_data();
    void texts();
    void roles();
    void flags_data();
    void flags();
    void setData_data();
    void setData();
    void editWithoutACameraIsNoFailure();
    void rowsFollowARemoval();
    void clearRootLeavesNothing();
};

static const char *const TREE = "ImageFormat\n"
                                "  Width Integer\n"
                                "  Gain Float\n"
                                "  ReverseX Boolean\n"
                                "  PixelFormat Enumeration\n"
                                "  DeviceUserID StringReg\n"
                                "  DeviceReset Command\n"
                                "  Inner\n"
                                "    Light CustomLightingSelector\n";

void TestVexaPropertyTreeModel::structureIsSound()
{
    ViewFixture fixture(TREE);
    VexaPropertyTreeModel &model = *fixture.view().propertyModel();
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 1);
    model.setRootItem(nullptr);
    QCOMPARE(model.rowCount(), 0);
    model.setRootItem(fixture.root());
    const std::unique_ptr<VexaPropertyTreeItem> pRemoved(fixture.item("Light"));
    model.removeRowNotify(fixture.item("Inner"), pRemoved.get());
    QCOMPARE(model.rowCount(fixture.view().indexOfItem(fixture.item("Inner"), 0)), 0);
}

void TestVexaPropertyTreeModel::texts_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("tree in English") << 0 << "ENG"
                                     << "Width"
                                     << "Width";
    QTest::newRow("tree in Chinese") << 0 << "CH"
                                     << "Kuan"
                                     << "Kuan";
}

void TestVexaPropertyTreeModel::texts()
{
    QFETCH(int, page);
    QFETCH(QString, language);
    ViewFixture fixture(TREE, page);
    fixture.item("Width")->value()->m_strTranslateName = "Kuan";
    QLocalCfg::Instance()->m_strPropertyLan = language;
    const QModelIndex index = fixture.view().indexOfItem(fixture.item("Width"), 0);
    QTEST(index.data().toString(), "text");
    QTEST(index.data(Qt::ToolTipRole).toString(), "toolTip");
    QVERIFY(!index.sibling(index.row(), 1).data().isValid());
    const QModelIndex hint = fixture.view().indexOfItem(fixture.item("ReverseX"), 0);
    QCOMPARE(hint.data(), QVariant(QString()));
    QCOMPARE(hint.data(Qt::ToolTipRole), QVariant(QString()));
    QLocalCfg::Instance()->m_strPropertyLan = QString("ENG");
}

void TestVexaPropertyTreeModel::roles()
{
    ViewFixture fixture(TREE);
    const QModelIndex category = fixture.view().indexOfItem(fixture.item("ImageFormat"), 0);
    const QModelIndex value = fixture.view().indexOfItem(fixture.item("Width"), 1);
    QCOMPARE(category.data(Qt::SizeHintRole).toSize(), QSize(-1, 56));
    QCOMPARE(category.data(Qt::FontRole).value<QFont>().pixelSize(), 15);
    QCOMPARE(category.data(Qt::ForegroundRole).value<QColor>(), QColor("#F2F2F2"));
    QCOMPARE(value.data(Qt::TextAlignmentRole).toInt(), 129);
    QVERIFY(!value.data(Qt::SizeHintRole).isValid());
    QCOMPARE(value.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::gray));
    fixture.item("Width")->setReadOnly(ViewFixture::CAMERA, false);
    QCOMPARE(value.data(Qt::ForegroundRole).value<QColor>(), QColor("#D1D1D1"));
    fixture.view().propertyModel()->setEditable(false);
    QCOMPARE(value.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::gray));
}

void TestVexaPropertyTreeModel::flags_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<int>("flags");
    const int base = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    QTest::newRow("writable value") << "Width" << 1 << false << int(base | Qt::ItemIsEditable);
    QTest::newRow("read-only value") << "Width" << 1 << true << base;
    QTest::newRow("name is no value") << "Width" << 0 << false << base;
    QTest::newRow("lighting name takes no selection") << "Light" << 0 << false << 0;
    QTest::newRow("lighting value is only editable")
        << "Light" << 1 << true << int(Qt::ItemIsEditable);
}

void TestVexaPropertyTreeModel::flags()
{
    QFETCH(QString, name);
    QFETCH(int, column);
    QFETCH(bool, readOnly);
    ViewFixture fixture(TREE);
    fixture.item(name)->setReadOnly(ViewFixture::CAMERA, readOnly);
    QTEST(int(fixture.view().indexOfItem(fixture.item(name), column).flags()), "flags");
}

void TestVexaPropertyTreeModel::setData_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("deviceTakesIt");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QString>("writes");
    QTest::addColumn<QString>("calls");
    QTest::newRow("integer as it is") << "Width" << QVariant(5) << true << true << ""
                                      << "";
    QTest::newRow("integer") << "Width" << QVariant(6) << true << true << "Integer Width 6"
                             << "value Width,after Width";
    QTest::newRow("integer equal in its low 32 bits")
        << "Width" << QVariant(qint64(5) + (qint64(1) << 32)) << true << true
        << "Integer Width 4294967301"
        << "value Width,after Width";
    QTest::newRow("float within the tolerance") << "Gain" << QVariant(1.5009) << true << true << ""
                                                << "";
    QTest::newRow("float beyond the tolerance")
        << "Gain" << QVariant(1.502) << true << true << "Float Gain 1.502"
        << "value Gain,after Gain";
    QTest::newRow("command always runs")
        << "DeviceReset" << QVariant(0) << true << true << "Command DeviceReset 0"
        << "value DeviceReset,after DeviceReset";
    QTest::newRow("refused reset")
        << "DeviceReset" << QVariant(0) << false << false << "Command DeviceReset 0"
        << "";
    QTest::newRow("refused while the camera has gone")
        << "Width" << QVariant(6) << false << true << "Integer Width 6"
        << "";
}

void TestVexaPropertyTreeModel::setData()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(bool, deviceTakesIt);
    QFETCH(QString, writes);
    QFETCH(QString, calls);
    ViewFixture fixture(TREE);
    fixture.setInteger("Width", 5, 0, 100);
    fixture.setFloat("Gain", 1.5F, 0, 10);
    fixture.owner().m_calls.clear();
    fixture.owner().m_bAnswer = deviceTakesIt;
    VexaPropertyTreeItem *const pItem = fixture.item(name);
    QTEST(fixture.view().propertyModel()->setData(fixture.view().indexOfItem(pItem, 1), value),
          "answer");
    QCOMPARE(fixture.owner().m_writes.join(','), writes);
    QCOMPARE(fixture.owner().m_calls.join(','), calls);
    if (deviceTakesIt && !writes.isEmpty() && name == "Width") {
        QCOMPARE(static_cast<CTreeIntergerItemValue *>(pItem->value())->m_nValue,
                 value.toLongLong());
    }
}

void TestVexaPropertyTreeModel::editWithoutACameraIsNoFailure()
{
    ViewFixture fixture(TREE);
    VexaPropertyTreeModel &model = *fixture.view().propertyModel();
    const QModelIndex index = fixture.view().indexOfItem(fixture.item("Width"), 1);
    QVERIFY(model.setData(index, 7, Qt::DisplayRole));
    QVERIFY(model.setData(QModelIndex(), 7));
    model.setCameraID(-1);
    QVERIFY(model.setData(index, 7));
    QVERIFY(fixture.owner().m_writes.isEmpty());
}

void TestVexaPropertyTreeModel::rowsFollowARemoval()
{
    ViewFixture fixture("A\n  One Integer\n  Two Integer\n  Three Integer\n");
    VexaFeatureTreeView &view = fixture.view();
    QCOMPARE(view.indexOfItem(fixture.item("Three"), 0).row(), 2); // now all rows are known
    VexaPropertyTreeItem *const pOne = fixture.item("One");
    view.propertyModel()->removeRowNotify(fixture.item("A"), pOne);
    delete pOne;
    QCOMPARE(view.indexOfItem(fixture.item("Three"), 0).row(), 1);
    QCOMPARE(view.indexOfItem(fixture.item("Two"), 1).row(), 0);
    auto *const pFour = new VexaPropertyTreeItem(fixture.item("A"));
    view.propertyModel()->insertRowNotify(fixture.item("A"), 2);
    QCOMPARE(view.indexOfItem(pFour, 0).row(), 2);
}

void TestVexaPropertyTreeModel::clearRootLeavesNothing()
{
    ViewFixture fixture(TREE);
    QSignalSpy reset(fixture.view().propertyModel(), &QAbstractItemModel::modelReset);
    fixture.clear();
    QCOMPARE(reset.count(), 1);
    QCOMPARE(fixture.root()->childCount(), 0);
    QVERIFY(!fixture.view().propertyModel()->rootItem());
    QVERIFY(!fixture.view().indexAt(QPoint(1, 1)).isValid());
}

int main(int argc, char *argv[])
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    TestVexaPropertyTreeModel test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_VexaPropertyTreeModel.moc"
