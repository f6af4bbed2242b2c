#include "model/CTreeItemValue.h"
#include "tests/support/DataTable.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertyTreeModel.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTest>

class TestVexaPropertyTreeModel : public QObject
{
    Q_OBJECT
private slots:
    void structureIsSound();
    void setData_data();
    void setData();
    void rowsFollowARemoval();
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

void TestVexaPropertyTreeModel::setData_data()
{
    const DataTable<QString, QVariant, bool, bool, QString, QString> row(
        "name", "value", "deviceTakesIt", "answer", "writes", "calls");
    const char *const told = "value Width,after Width";
    row("integer", "Width", 6, true, true, "Integer Width 6", told);
    row("equal in its low 32 bits", "Width", qint64(5) + (qint64(1) << 32), true, true,
        "Integer Width 4294967301", told);
    row("float within the tolerance", "Gain", 1.5009, true, true, "", "");
    row("float beyond the tolerance", "Gain", 1.502, true, true, "Float Gain 1.502",
        "value Gain,after Gain");
    row("number of an entry with its top bit set", "PixelFormat", quint32(0x80000001), true, true,
        "Enumeration PixelFormat 2147483649", "value PixelFormat,after PixelFormat");
    row("refused reset", "DeviceReset", 0, false, false, "Command DeviceReset 0", "");
    row("refused while the camera has gone", "Width", 6, false, true, "Integer Width 6", "");
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
    if (deviceTakesIt && !writes.isEmpty() && name != "Gain") {
        QCOMPARE(pItem->valueSnapshot()->value().toLongLong(), value.toLongLong());
    }
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

QTEST_MAIN(TestVexaPropertyTreeModel)
#include "tst_VexaPropertyTreeModel.moc"
