#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"

#include <QApplication>
#include <QLayout>
#include <QLineEdit>
#include <QTest>

/// Keyboard, mouse and focus in a view that is on screen.
class TestViewFocus : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_pFixture.reset(); }
    void tabWalksTheRows();
    void tabPassesDisabledRowsAndLeavesAtTheEnds();
    void focusOfAHiddenRowGoesToTheView();
    void rowGoesBehindAnotherWindow();

private:
    QString focused() const
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : "none";
    }
    /// Where the focus is after a press of the tab key.
    QString tab() const
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        return focused();
    }
    QString tabBack() const
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        return focused();
    }
    ViewFixture &fixture() { return *m_pFixture; }
    std::unique_ptr<ViewFixture> m_pFixture;
};

void TestViewFocus::init()
{
    QString strTree = "A\n";
    for (int i = 0; i < 60; ++i) {
        strTree += QString("  F%1 Integer\n").arg(i);
    }
    m_pFixture = std::make_unique<ViewFixture>(strTree + "B\n  Last Float\n");
    auto *const pBefore = new QLineEdit(&fixture().owner());
    pBefore->setObjectName("before");
    auto *const pAfter = new QLineEdit(&fixture().owner());
    pAfter->setObjectName("after");
    fixture().owner().layout()->addWidget(pBefore);
    fixture().owner().layout()->addWidget(pAfter);
    fixture().view().setObjectName("view");
    fixture().show();
    for (int i = 0; i < 60; ++i) {
        fixture().setReadOnly(QString("F%1").arg(i), false);
        fixture().setInteger(QString("F%1").arg(i), i, 0, 100);
    }
    fixture().setReadOnly("Last", false);
    fixture().setFloat("Last", 1, 0, 10);
    QApplication::setActiveWindow(&fixture().owner());
    QVERIFY(QTest::qWaitForWindowActive(&fixture().owner()));
    QWidget::setTabOrder(pBefore, &fixture().view());
    QWidget::setTabOrder(&fixture().view(), pAfter);
    fixture().editor("F0")->setFocus();
}

void TestViewFocus::tabWalksTheRows()
{
    for (int i = 0; i < 60; ++i) {
        QCOMPARE(focused(), QString("F%1").arg(i));
        QVERIFY(QApplication::focusWidget()->isVisible());
        const QRect place = QApplication::focusWidget()->geometry();
        QVERIFY2(fixture().view().viewport()->rect().contains(place), qPrintable(focused()));
        tab();
    }
    QCOMPARE(focused(), QString("Last")); // past the category
    QCOMPARE(tabBack(), QString("F59"));
    QCOMPARE(fixture().owner().m_writes, QStringList());
}

void TestViewFocus::tabPassesDisabledRowsAndLeavesAtTheEnds()
{
    QCOMPARE(tabBack(), QString("before"));
    QCOMPARE(tab(), QString("view"));
    QCOMPARE(tab(), QString("F0"));
    fixture().setReadOnly("F1", true);
    fixture().item("F2")->setVisible(false, ViewFixture::CAMERA, true);
    QCOMPARE(tab(), QString("F3"));
    fixture().view().scrollToFeature("Last");
    fixture().editor("Last")->setFocus();
    QCOMPARE(tab(), QString("after"));
    fixture().view().setDelegateEnable(false);
    fixture().view().notifyEditorUpdate();
    fixture().view().setFocus();
    QCOMPARE(tab(), QString("after"));
}

void TestViewFocus::focusOfAHiddenRowGoesToTheView()
{
    QTest::keyClicks(fixture().editor("F0"), "5");
    fixture().item("F0")->setVisible(false, ViewFixture::CAMERA, true);
    fixture().view().doItemsLayout();
    QCOMPARE(focused(), QString("view"));
    QVERIFY(!fixture().editor("F0")->isVisible());
    QCOMPARE(fixture().owner().m_writes, QStringList()); // half a number
    fixture().editor("F1")->setFocus();
    fixture().view().collapseAll();
    QCOMPARE(focused(), QString("view"));
}

/// What was begun in it is given up all the same, and is not there when the row comes back.
void TestViewFocus::rowGoesBehindAnotherWindow()
{
    auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(fixture().editor("F0"));
    const QString before = pSpin->text();
    QTest::keyClicks(pSpin, "5");
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(pSpin->text() != before);
    fixture().item("F0")->setVisible(false, ViewFixture::CAMERA, true);
    fixture().view().doItemsLayout();
    QCOMPARE(pSpin->text(), before);
    QCOMPARE(fixture().owner().m_writes, QStringList());
}

QTEST_MAIN(TestViewFocus)
#include "tst_ViewFocus.moc"
