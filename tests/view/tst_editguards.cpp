#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomPushButton.h"
#include "editors/VexaFeatureDrawWidget.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "tests/support/DataTable.h"
#include "tests/view/EditorTexts.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

/// What happens while a write has a box up and other events run; and rows that the plain tree never holds.
class TestEditGuards : public QObject
{
    Q_OBJECT
private slots:
    void secondCommitIsRefused_data();
    void secondCommitIsRefused();
    void refillWaitsForTheWrite();
    void treeGoesInTheWrite_data();
    void treeGoesInTheWrite();
    void drawRow();
    void watermarkRow();
};

/// Each write runs an event loop, as one with a box does, in which this happens.
static void runInWrites(RecordingFeatureWidget &widget, const std::function<void()> &act)
{
    widget.m_inWrite = [act] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [act, &loop] {
            act();
            loop.quit();
        });
        loop.exec();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
}

static std::unique_ptr<ViewFixture> openTree()
{
    auto pFixture = std::make_unique<ViewFixture>(ViewFixture::ONE_OF_EACH);
    pFixture->show();
    pFixture->fillOneOfEach();
    QApplication::setActiveWindow(&pFixture->owner());
    return QTest::qWaitForWindowActive(&pFixture->owner()) ? std::move(pFixture) : nullptr;
}

static void edit(ViewFixture &fixture, const QString &strName, const QString &strText)
{
    static const QMap<QString, Qt::Key> key{
        {"Enum5", Qt::Key_Down}, {"Enum7", Qt::Key_Up}, {"Enum9", Qt::Key_Up}};
    QWidget *const pEditor = fixture.editor(strName);
    pEditor->setFocus();
    if (strName == "Int" || strName == "Float") {
        QTest::keyClick(pEditor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(pEditor, strText);
        QTest::keyClick(pEditor, Qt::Key_Return);
    } else {
        QTest::keyClick(pEditor, key.value(strName + strText, Qt::Key_Space));
    }
}

void TestEditGuards::secondCommitIsRefused_data()
{
    const DataTable<QString, QString, bool> row("name", "write", "taken");
    const char *const writes[][2] = {{"Int", "Integer Int 5"},
                                     {"Float", "Float Float 5"},
                                     {"Enum", "Enumeration Enum 20"},
                                     {"Bool", "Boolean Bool false"},
                                     {"Cmd", "Command Cmd 0"}};
    for (const auto &write : writes) {
        row(QByteArray(write[0]) + ", taken", write[0], write[1], true);
        row(QByteArray(write[0]) + ", refused", write[0], write[1], false);
    }
}

void TestEditGuards::secondCommitIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, write);
    QFETCH(bool, taken);
    const auto pFixture = openTree();
    QVERIFY(pFixture);
    pFixture->owner().m_bAnswer = taken;
    int nInWrite = 0;
    runInWrites(pFixture->owner(), [&] {
        ++nInWrite;
        pFixture->editor(name)->clearFocus(); // as the box takes it
        edit(*pFixture, name, "7");
    });
    edit(*pFixture, name, "5");
    QCOMPARE(pFixture->owner().m_writes, QStringList{write});
    QCOMPARE(nInWrite, 1);
    // The editor shows what the item holds, which the refused second edit is not.
    const std::unique_ptr<CTreeItemValue> value = pFixture->item(name)->valueSnapshot();
    const QString held =
        name == "Bool" ? QString(value->value().toBool() ? "on" : "off") : value->displayValue();
    QVERIFY2(name == "Cmd" || shownText(pFixture->editor(name)) == held, qPrintable(held));
    pFixture->owner().m_inWrite = nullptr;
    pFixture->owner().m_writes.clear();
    if (name != "Cmd") { // its button lets no two clicks pass so soon
        edit(*pFixture, name, "9"); // the row is free again
        QCOMPARE(pFixture->owner().m_writes.size(), 1);
    }
}

void TestEditGuards::refillWaitsForTheWrite()
{
    const auto pFixture = openTree();
    QVERIFY(pFixture);
    auto *const pSpin = qobject_cast<QSpinBox *>(pFixture->editor("Int"));
    auto *const pEdit = qobject_cast<QLineEdit *>(pFixture->editor("Float"));
    QString shown;
    QString shownBeside;
    runInWrites(pFixture->owner(), [&] {
        pFixture->setInteger("Int", 11, 0, 100);
        pFixture->setFloat("Float", 3, 0, 10);
        shown = pSpin->text();
        shownBeside = pEdit->text();
    });
    pFixture->owner().m_bAnswer = false;
    edit(*pFixture, "Int", "55");
    QCOMPARE(shown, QString("55"));
    QCOMPARE(shownBeside, QString("3.00"));
    QCOMPARE(pSpin->text(), QString("11"));
    QCOMPARE(pFixture->owner().m_writes, QStringList{"Integer Int 55"});
}

void TestEditGuards::treeGoesInTheWrite_data()
{
    const DataTable<QString, bool, bool> row("name", "taken", "widgetToo");
    for (const QByteArray name : {"Int", "Float", "Enum", "Bool", "Cmd"}) {
        row(name + ", refused, items", name, false, false);
        row(name + ", taken, items", name, true, false);
        row(name + ", refused, widget", name, false, true);
        row(name + ", taken, widget", name, true, true);
    }
}

void TestEditGuards::treeGoesInTheWrite()
{
    QFETCH(QString, name);
    QFETCH(bool, taken);
    QFETCH(bool, widgetToo);
    auto pFixture = openTree();
    QVERIFY(pFixture);
    QStringList writes;
    pFixture->owner().m_bAnswer = taken;
    runInWrites(pFixture->owner(), [&] {
        writes = pFixture->owner().m_writes;
        pFixture->owner().m_calls.clear();
        pFixture->clear();
    });
    if (widgetToo) {
        // As a tree does whose last call has returned.
        const std::function<void()> inLoop = pFixture->owner().m_inWrite;
        pFixture->owner().m_inWrite = [&pFixture, inLoop] {
            inLoop();
            pFixture->takeOwner()->deleteLater();
        };
    }
    const QPointer<QWidget> pEditor(pFixture->editor(name));
    edit(*pFixture, name, "5");
    QCOMPARE(writes.size(), 1);
    if (!widgetToo) {
        QCOMPARE(pFixture->owner().m_calls, QStringList()); // nobody is told of a row that has gone
    }
    QTRY_VERIFY(!pEditor);
}

void TestEditGuards::drawRow()
{
    ViewFixture fixture("All\n  Unknown CustomDrawFeatureTag\n  Draw CustomDrawFeatureTag\n");
    const auto valueOf = [&fixture](const char *pName) {
        return dynamic_cast<CTreeCustomDrawItemValue *>(fixture.item(pName)->value());
    };
    CTreeCustomDrawItemValue *const pValue = valueOf("Draw");
    valueOf("Unknown")->m_nDrawType = 2;
    pValue->m_nDrawType = 1;
    pValue->m_bDrawOn = true;
    fixture.show();
    auto *const pDraw = qobject_cast<VexaFeatureDrawWidget *>(fixture.editor("Draw"));
    QVERIFY(pDraw && !pDraw->isEnabled() && !fixture.editor("Unknown"));
    fixture.setReadOnly("Draw", false);
    QVERIFY(pDraw->isEnabled());
    auto *const pButton = pDraw->findChild<CustomPushButton *>();
    QSignalSpy clicked(pDraw, &VexaFeatureDrawWidget::SigButtonClicked);
    // A plain widget's write fails, and its row falls back to the item's state, which is on.
    fixture.owner().m_bAnswer = false;
    QTest::mouseClick(pButton, Qt::LeftButton);
    QCOMPARE(pDraw->state(), -1);
    pValue->m_bDrawOn = false;
    fixture.item("Draw")->notifyViewUpdate(ViewFixture::CAMERA, 1, false, false);
    QTest::mouseClick(pButton, Qt::LeftButton);
    QCOMPARE(pDraw->state(), 0);
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(fixture.owner().m_writes,
             QStringList({"CustomDrawFeatureTag Draw -1", "CustomDrawFeatureTag Draw 0"}));
}

void TestEditGuards::watermarkRow()
{
    ViewFixture fixture("All\n  Mark CustomWatermarkFeatureTag\n");
    VexaPropertyTreeItem *const pItem = fixture.root()->child(0)->child(0);
    auto *const pValue = dynamic_cast<CTreeCustomWaterMarkItemValue *>(pItem->value());
    QVERIFY(pValue);
    pValue->m_strFirstNodeName = "Logo";
    pValue->m_strSecondNodeName = "Date";
    pValue->m_nSecondValue = Qt::Checked;
    fixture.show();
    pItem->setReadOnly(ViewFixture::CAMERA, false);
    pItem->notifyViewUpdate(ViewFixture::CAMERA, -1, false, false);
    auto *const pLogo = qobject_cast<CustomCheckBox *>(fixture.editor("Logo", 0));
    auto *const pDate = qobject_cast<CustomCheckBox *>(fixture.editor("Logo", 1));
    QVERIFY(pLogo && pDate && pLogo->isEnabled() && pDate->isEnabled());
    QVERIFY(!pLogo->isChecked() && pDate->isChecked());
    QCOMPARE(fixture.owner().m_writes, QStringList());
    QTest::keyClick(pLogo, Qt::Key_Space);
    QTest::keyClick(pDate, Qt::Key_Space);
    QCOMPARE(fixture.owner().m_writes,
             QStringList(
                 {"CustomWatermarkFeatureTag Logo true", "CustomWatermarkFeatureTag Date false"}));
    QCOMPARE(pValue->m_nFirstValue, int(Qt::Checked));
    QCOMPARE(pValue->m_nSecondValue, int(Qt::Unchecked));
    QVERIFY(pLogo->isChecked() && !pDate->isChecked());
}

QTEST_MAIN(TestEditGuards)
#include "tst_editguards.moc"
