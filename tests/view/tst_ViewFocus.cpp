#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"

#include <QApplication>
#include <QLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
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
    void focusedEditorSurvivesScrolling();
    void focusOfAHiddenRowGoesToTheView();
    void rowGoesBehindAnotherWindow();
    void featureFollowsMouseKeyboardAndFocus();
    void givingUpTakesNothingOver();

private:
    QString focused() const
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : "none";
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
    QStringList walked;
    for (int i = 0; i < 60; ++i) {
        walked.append(focused());
        QVERIFY(QApplication::focusWidget()->isVisible());
        const QRect place = QApplication::focusWidget()->geometry();
        QVERIFY2(fixture().view().viewport()->rect().contains(place), qPrintable(focused()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (int i = 0; i < 60; ++i) {
        QCOMPARE(walked.at(i), QString("F%1").arg(i));
    }
    QCOMPARE(focused(), QString("Last")); // past the category
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(focused(), QString("F59"));
    QCOMPARE(fixture().owner().m_writes, QStringList());
}

void TestViewFocus::tabPassesDisabledRowsAndLeavesAtTheEnds()
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(focused(), QString("before"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(focused(), QString("view"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(focused(), QString("F0"));
    fixture().setReadOnly("F1", true);
    fixture().item("F2")->setVisible(false, ViewFixture::CAMERA, true);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(focused(), QString("F3"));
    fixture().view().scrollToFeature("Last");
    fixture().editor("Last")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(focused(), QString("after"));
    fixture().view().setDelegateEnable(false);
    fixture().view().notifyEditorUpdate();
    fixture().view().setFocus();
    QTest::keyClick(&fixture().view(), Qt::Key_Tab);
    QCOMPARE(focused(), QString("after"));
}

void TestViewFocus::focusedEditorSurvivesScrolling()
{
    fixture().view().verticalScrollBar()->setValue(1500);
    QCOMPARE(focused(), QString("F0"));
    QVERIFY(!fixture().view().viewport()->rect().intersects(fixture().editor("F0")->geometry()));
    fixture().view().verticalScrollBar()->setValue(0);
    QVERIFY(fixture().view().viewport()->rect().contains(fixture().editor("F0")->geometry()));
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

void TestViewFocus::featureFollowsMouseKeyboardAndFocus()
{
    QSignalSpy activated(&fixture().view(), &VexaFeatureTreeView::sigFeatureActivated);
    const auto last = [&] {
        return fixture().view().itemAt(activated.last().first().toModelIndex());
    };
    fixture().editor("F2")->setFocus();
    QCOMPARE(last(), fixture().item("F2"));
    const QRect row =
        fixture().view().visualRect(fixture().view().indexOfItem(fixture().item("F4"), 0));
    QTest::mouseMove(fixture().view().viewport(), row.center());
    QTest::mouseMove(fixture().view().viewport(), row.center() + QPoint(3, 2));
    QCOMPARE(last(), fixture().item("F4"));
    fixture().view().setFocus();
    fixture().view().setCurrentIndex(fixture().view().indexOfItem(fixture().item("F5"), 0));
    QTest::keyClick(&fixture().view(), Qt::Key_Down);
    QCOMPARE(last(), fixture().item("F6"));
    QCOMPARE(activated.count(), 4); // once a change
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(fixture().editor("F7"), &enter);
    QCOMPARE(last(), fixture().item("F7"));
}

void TestViewFocus::givingUpTakesNothingOver()
{
    auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(fixture().editor("F0"));
    pSpin->selectAll();
    QTest::keyClicks(pSpin, "9");
    fixture().view().setCurrentIndex(fixture().view().indexOfItem(fixture().item("F0"), 0));
    fixture().view().giveUpEditor();
    QCOMPARE(fixture().owner().m_writes, QStringList());
    QCOMPARE(pSpin->text(), QString("0"));
    QVERIFY(!fixture().view().currentIndex().isValid());
    QCOMPARE(focused(), QString("view"));
}

QTEST_MAIN(TestViewFocus)
#include "tst_ViewFocus.moc"
