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
    auto pTester = std::make_unique<QAbstractItemModelTester>(
        &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 1);
    model.setRootItem(nullptr);
    QCOMPARE(model.rowCount(), 0);
    model.setRootItem(fixture.root());
    VexaFeatureTreeView &view = fixture.view();
    VexaPropertyTreeItem *const pBranch = fixture.item("ImageFormat");
    QCOMPARE(view.indexOfItem(fixture.item("DeviceReset"), 0).row(), 5); // now all rows are known
    const std::unique_ptr<VexaPropertyTreeItem> pRemoved(fixture.item("Width"));
    model.removeRowNotify(pBranch, pRemoved.get());
    QCOMPARE(view.indexOfItem(fixture.item("DeviceReset"), 0).row(), 4);
    QCOMPARE(view.indexOfItem(fixture.item("Gain"), 1).row(), 0);
    pTester.reset(); // it expects a row to come between the two signals
    auto *const pAdded = new VexaPropertyTreeItem(pBranch);
    model.insertRowNotify(pBranch, 6);
    QCOMPARE(view.indexOfItem(pAdded, 0).row(), 6);
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

QTEST_MAIN(TestVexaPropertyTreeModel)
#include "tst_VexaPropertyTreeModel.moc"
