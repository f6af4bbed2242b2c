#include "ControlKit/CustomComboBox.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/DataTable.h"
#include "tests/support/WriteTraces.h"
#include "tests/view/EditFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest>

/// What the user has begun and what the device says meanwhile; and what writes nothing at all.
class tst_EditTyping : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_fixture.close(); }
    void typedTextOutlivesARefresh_data();
    void typedTextOutlivesARefresh();
    void formerValueTypedOverANewOne();
    void lockedMeanwhile();
    void openListKeepsItsRows();
    void wheelOverEditorsScrolls();
    void walkingThroughWritesNothing();
    void refillsWriteNothing();

private:
    SharedEditFixture m_fixture;
};

void tst_EditTyping::typedTextOutlivesARefresh_data()
{
    // The writes count the change as one.
    const DataTable<QString, QString, QString, QVariant, int, QString, int> row(
        "device", "name", "typed", "changed", "key", "shown", "writes");
    const auto rows = [&row](const QByteArray &kind, const char *pDevice, const char *pName,
                             const char *pTyped, const QVariant &changed, const char *pNewest) {
        row(kind + ", Escape", pDevice, pName, pTyped, changed, Qt::Key_Escape, pNewest, 1);
        row(kind + ", Enter", pDevice, pName, pTyped, changed, Qt::Key_Return, pTyped, 2);
        row(kind + ", Tab", pDevice, pName, pTyped, changed, Qt::Key_Tab, pTyped, 2);
    };
    rows("hex", "", "BigHex", "0xA5", 0x5A, "0x5A");
    rows("rounded by the device", "", "Coarse", "32", 64, "64");
    rows("spin box", "area-camera", "Brightness", "7", 33, "33");
    rows("float", "area-camera", "Gamma", "2.50", 1.5, "1.50");
    rows("text", "area-camera", "DeviceUserID", "half", "Other", "Other");
}

void tst_EditTyping::typedTextOutlivesARefresh()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(QVariant, changed);
    QFETCH(int, key);
    EditFixture &fixture = m_fixture.of(device);
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    typeText(pEditor, typed);
    fixture.forgetAccesses();
    QVERIFY(fixture.changeBehindTheTree(name, changed));
    QCOMPARE(fixture.shown(name), typed);
    QTest::keyClick(pEditor, Qt::Key(key));
    QTEST(fixture.writes(), "writes");
    QVERIFY(fixture.settle());
    QTEST(fixture.shown(name), "shown");
    QCOMPARE(fixture.deviceValue(name), fixture.shown(name));
    QTEST(fixture.writes(), "writes");
}

void tst_EditTyping::formerValueTypedOverANewOne()
{
    EditFixture &fixture = m_fixture.of("area-camera");
    QWidget *const pEditor = fixture.focusOn("Brightness");
    QVERIFY(fixture.changeBehindTheTree("Brightness", 128));
    typeText(pEditor, "128");
    QVERIFY(fixture.changeBehindTheTree("Brightness", 33));
    QTest::keyClick(pEditor, Qt::Key_Return);
    QCOMPARE(fixture.deviceValue("Brightness"), QString("128"));
    QVERIFY(fixture.settle());
    QCOMPARE(fixture.shown("Brightness"), QString("128"));
}

void tst_EditTyping::lockedMeanwhile()
{
    EditFixture &fixture = m_fixture.of("area-camera");
    for (const char *pName : {"Width", "DeviceUserID"}) {
        const QString before = fixture.shown(pName);
        QWidget *const pEditor = fixture.focusOn(pName);
        QVERIFY(pEditor);
        typeText(pEditor, "640");
        fixture.forgetAccesses();
        // A worker has found the lock, and the editor has not heard of it yet.
        fixture.item(pName)->setReadOnly(fixture.camera().id, true);
        QTest::keyClick(pEditor, Qt::Key_Return);
        QCOMPARE(fixture.shown(pName), before);
        QVERIFY(!pEditor->isEnabled());
        QCOMPARE(fixture.writes(), 0);
        fixture.item(pName)->setReadOnly(fixture.camera().id, false);
    }
}

void tst_EditTyping::openListKeepsItsRows()
{
    EditFixture &fixture = m_fixture.of("area-camera");
    auto *const pCombo = qobject_cast<CustomComboBox *>(fixture.focusOn("TestPattern"));
    QVERIFY(pCombo);
    const int nRows = pCombo->count();
    pCombo->showPopup();
    QVERIFY(pCombo->cIsPopupShown());
    fixture.forgetAccesses();
    QVERIFY(fixture.changeBehindTheTree("TestPattern", pCombo->itemData(2)));
    QLocalCfg::Instance()->m_strPropertyLan = "CH"; // other words in the same rows
    fixture.tree().notifyEditorUpdate();
    QCOMPARE(pCombo->currentIndex(), 0);
    QCOMPARE(pCombo->count(), nRows);
    QTest::keyClick(pCombo->view(), Qt::Key_Escape);
    QTRY_COMPARE(pCombo->currentIndex(), 2);
    QCOMPARE(fixture.writes(), 1); // the change
    QLocalCfg::Instance()->m_strPropertyLan = "ENG";
}

void tst_EditTyping::walkingThroughWritesNothing()
{
    for (const char *pDevice : {"area-camera", "code-reader"}) {
        EditFixture &fixture = m_fixture.of(pDevice);
        QVERIFY(fixture.focusOn("DeviceUserID"));
        fixture.forgetAccesses();
        QSet<QString> walked;
        QWidget *pFocus = QApplication::focusWidget();
        while (pFocus && fixture.view().isAncestorOf(pFocus)) {
            walked.insert(pFocus->objectName());
            QVERIFY(!pFocus->visibleRegion().isEmpty());
            QTest::keyClick(pFocus, Qt::Key_Tab);
            QVERIFY(QApplication::focusWidget() != pFocus);
            pFocus = QApplication::focusWidget();
        }
        for (const char *pName :
             {"Width", "ExposureTime", "TriggerMode", "GevPersistentIPAddress"}) {
            QVERIFY2(walked.contains(pName), pName);
        }
        QVERIFY(walked.size() > 120);
        QCOMPARE(fixture.writes(), 0);
        QCOMPARE(ShellHost::instance()->modifiedCameras(), QStringList());
    }
}

void tst_EditTyping::refillsWriteNothing()
{
    EditFixture &fixture = m_fixture.of("code-reader");
    QSet<QString> tags;
    const QMap<QString, VexaPropertyTreeItem *> items = fixture.tree().AllTreeItemsMap();
    for (VexaPropertyTreeItem *pItem : items) {
        if (!pItem->tagName().isEmpty() && fixture.view().indexOfItem(pItem, 1).isValid()) {
            tags.insert(pItem->tagName());
            for (const int nType : {-1, 1, 3}) {
                pItem->notifyViewUpdate(fixture.camera().id, nType, nType == 3, false);
            }
        }
    }
    for (const char *pLanguage : {"CH", "ENG"}) {
        QLocalCfg::Instance()->m_strPropertyLan = pLanguage;
        fixture.tree().notifyEditorUpdate();
        fixture.view().flushEditorUpdates();
    }
    for (const char *pTag :
         {"Boolean", "Integer", "Enumeration", "Float", "StringReg", "Command"}) {
        QVERIFY2(tags.contains(pTag), pTag);
    }
    QCOMPARE(fixture.writes(), 0);
    QCOMPARE(ShellHost::instance()->modifiedCameras(), QStringList());
}

void tst_EditTyping::wheelOverEditorsScrolls()
{
    EditFixture &fixture = m_fixture.of("area-camera");
    for (const char *pName :
         {"Brightness", "ExposureMode", "GammaEnable", "BlackLevel", "DeviceUserID"}) {
        fixture.view().scrollTo(fixture.view().indexOfItem(fixture.item(pName), 0),
                                QAbstractItemView::PositionAtTop);
        fixture.view().setFocus();
        QWidget *const pEditor = fixture.editor(pName);
        QVERIFY2(pEditor->isVisible() && pEditor->isEnabled(), pName);
        const QString before = fixture.shown(pName);
        const int nPlace = fixture.view().verticalScrollBar()->value();
        const QPointF middle(pEditor->rect().center());
        QWheelEvent wheel(middle, pEditor->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(pEditor, &wheel);
        QVERIFY2(fixture.view().verticalScrollBar()->value() > nPlace, pName);
        QCOMPARE(fixture.shown(pName), before);
    }
    QCOMPARE(fixture.writes(), 0);
}

QTEST_MAIN(tst_EditTyping)
#include "tst_edittyping.moc"
