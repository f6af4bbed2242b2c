#include "view/VexaPropertySpinBox.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QTest>

#include <limits>

class TestVexaPropertySpinBox : public QObject
{
    Q_OBJECT
private slots:
    void snaps_data();
    void snaps();
    void textOfAnotherValueEndsWithTheFirstChange();
    void menuTakesNothingBack();
};

void TestVexaPropertySpinBox::snaps_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<qint64>("step");
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("shown");
    const int lowest = std::numeric_limits<int>::min();
    const int highest = std::numeric_limits<int>::max();
    QTest::newRow("grid starts at the minimum") << 10 << 100 << qint64(4) << 17 << 14;
    QTest::newRow("below the minimum") << 10 << 100 << qint64(4) << 9 << 10;
    QTest::newRow("maximum off the grid") << 0 << 10 << qint64(4) << 11 << 8;
    QTest::newRow("step 0 divides by zero") << 0 << 100 << qint64(0) << 7 << 7;
    QTest::newRow("negative step") << 0 << 100 << qint64(-1) << 7 << 7;
    QTest::newRow("step above 32 bits") << 5 << 100 << qint64(1) << 40 << 40;
    QTest::newRow("huge step stays at the minimum") << 5 << 100 << (qint64(1) << 40) << 40 << 5;
    QTest::newRow("distance overflows 32 bits")
        << lowest << highest << qint64(2) << highest << highest - 1;
}

void TestVexaPropertySpinBox::snaps()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(qint64, step);
    QFETCH(int, given);
    VexaPropertySpinBox box;
    box.setLimits(minimum, maximum, step);
    box.snapValue(given);
    QTEST(box.value(), "shown");
    QCOMPARE(box.lastAcceptedValue(), box.value());
    QVERIFY(box.toolTip().contains(QString::number(minimum)));
}

void TestVexaPropertySpinBox::textOfAnotherValueEndsWithTheFirstChange()
{
    VexaPropertySpinBox box;
    box.setLimits(0, std::numeric_limits<int>::max(), 1);
    box.snapValue(box.maximum());
    box.showText("4294967296");
    QCOMPARE(box.text(), QString("4294967296"));
    box.stepBy(-1);
    QCOMPARE(box.text(), QString::number(std::numeric_limits<int>::max() - 1));
}

/// What the user has typed so far may be out of range.
void TestVexaPropertySpinBox::menuTakesNothingBack()
{
    VexaPropertySpinBox box;
    box.setLimits(10, 100, 1);
    box.snapValue(50);
    box.show();
    box.selectAll();
    QTest::keyClicks(&box, "1");
    for (const Qt::FocusReason eReason : {Qt::PopupFocusReason, Qt::OtherFocusReason}) {
        QFocusEvent leaves(QEvent::FocusOut, eReason);
        QCoreApplication::sendEvent(&box, &leaves);
        QCOMPARE(box.text(), QString(eReason == Qt::PopupFocusReason ? "1" : "50"));
    }
}

QTEST_MAIN(TestVexaPropertySpinBox)
#include "tst_VexaPropertySpinBox.moc"
