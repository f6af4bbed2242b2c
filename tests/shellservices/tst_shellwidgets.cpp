#include "ShellServicesModule/QVexaProgressDialog.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "host/translations/Translations.h"

#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QtTest>
#include <qtestspontaneevent.h>

class tst_ShellWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void comboSelectsByData_data();
    void comboSelectsByData();
    void progress_data();
    void progress();
    void theUserCannotEndATransfer();
};

void tst_ShellWidgets::comboSelectsByData_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<int>("row");
    QTest::newRow("int") << QVariant(2) << 2;
    QTest::newRow("64-bit number of the same value") << QVariant(0LL) << 0;
    QTest::newRow("unknown data empties the box") << QVariant(9) << 1;
    QTest::newRow("nothing selects the row without data") << QVariant() << 3;
    QTest::newRow("text of a row taken for data") << QVariant("Guru") << 1;
}

void tst_ShellWidgets::comboSelectsByData()
{
    QFETCH(QVariant, data);
    QFETCH(int, row);
    VexaPropertyComboBox combo;
    combo.addItem("Guru", 0);
    combo.addItem("Expert", 1);
    combo.addItem("Beginner", 2);
    combo.addItem("None");
    combo.setCurrentIndex(1);
    combo.SetCurrentSel(data);
    QCOMPARE(combo.currentIndex(), row);
}

void tst_ShellWidgets::progress_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("current");
    QTest::addColumn<bool>("isBusy");
    QTest::addColumn<double>("share");
    const qint64 nHuge = Q_INT64_C(1) << 40;
    QTest::newRow("half") << Q_INT64_C(1000) << Q_INT64_C(500) << false << 0.5;
    QTest::newRow("beyond 32 bits") << nHuge << nHuge / 4 << false << 0.25;
    QTest::newRow("largest number overflows")
        << std::numeric_limits<qint64>::max() << std::numeric_limits<qint64>::max() << false << 1.0;
    QTest::newRow("more than all") << Q_INT64_C(10) << Q_INT64_C(20) << false << 1.0;
    QTest::newRow("unknown total divides by zero") << Q_INT64_C(0) << Q_INT64_C(20) << true << 0.0;
    QTest::newRow("no numbers yet") << Q_INT64_C(-1) << Q_INT64_C(-1) << true << 0.0;
    QTest::newRow("current unknown") << Q_INT64_C(10) << Q_INT64_C(-1) << false << 0.0;
}

void tst_ShellWidgets::progress()
{
    QFETCH(qint64, total);
    QFETCH(qint64, current);
    QFETCH(bool, isBusy);
    QFETCH(double, share);
    QVexaProgressDialog dialog(true);
    dialog.setTotalBytes(total);
    dialog.setCurBytes(current);
    const auto *pBar = dialog.findChild<QProgressBar *>();
    QVERIFY(pBar);
    QCOMPARE(pBar->maximum() == pBar->minimum(), isBusy);
    if (!isBusy) {
        QCOMPARE(double(pBar->value()) / pBar->maximum(), share);
    }
    const QString strImport = dialog.windowTitle();
    dialog.initInfo(false);
    QVERIFY(dialog.windowTitle() != strImport);
    QCOMPARE(pBar->maximum(), pBar->minimum());
}

void tst_ShellWidgets::theUserCannotEndATransfer()
{
    QVexaProgressDialog dialog(true);
    dialog.setTotalBytes(100);
    dialog.setCurBytes(50);
    dialog.show();
    const auto closeByUser = [&dialog] {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(&dialog, &close); // sendEvent would make it the program's own
        return close.isAccepted();
    };
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QVERIFY(!closeByUser());
    dialog.setCurBytes(100);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());

    dialog.initInfo(false);
    dialog.show();
    QVERIFY(!closeByUser());
    dialog.close(); // the program ends it at any time
    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(tst_ShellWidgets)
#include "tst_shellwidgets.moc"
