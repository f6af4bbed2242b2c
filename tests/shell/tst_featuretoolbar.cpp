#include "ShellServicesModule/QLocalCfg.h"
#include "shell/VexaFeatureToolBar.h"
#include "tests/support/ModuleFixture.h"

#include <QAbstractButton>
#include <QSignalSpy>
#include <QtTest>

class tst_featuretoolbar : public QObject
{
    Q_OBJECT
private slots:
    void enabledButtons_data();
    void enabledButtons();
    void orderOnScreen();
    void refreshPause();
    void widthsFollowTheLanguage();
};

namespace {

/// Enabled buttons from left to right: refresh, expand, import, export, file access.
QString enabledOf(const VexaFeatureToolBar &bar)
{
    QString text;
    const QString letters = QStringLiteral("REIXF");
    const QList<QAbstractButton *> buttons = bar.findChildren<QAbstractButton *>();
    for (int i = 0; i < buttons.size(); ++i) {
        text += buttons.at(i)->isEnabled() ? letters.at(i) : QLatin1Char('-');
    }
    return text;
}

} // namespace

void tst_featuretoolbar::enabledButtons_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("opened");
    QTest::addColumn<bool>("grabbing");
    QTest::addColumn<bool>("busy");
    QTest::addColumn<QString>("expected");
    QTest::newRow("another state than live") << 0 << true << false << false << "-----";
    QTest::newRow("vanished camera") << 1 << false << false << false << "-----";
    QTest::newRow("open") << 1 << true << false << false << "REIXF";
    QTest::newRow("open and busy") << 1 << true << false << true << "RE---";
    QTest::newRow("grabbing") << 1 << true << true << false << "RE---";
}

void tst_featuretoolbar::enabledButtons()
{
    QFETCH(int, state);
    QFETCH(bool, opened);
    QFETCH(bool, grabbing);
    QFETCH(bool, busy);
    QFETCH(QString, expected);
    ModuleFixture fixture;
    const auto device = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    const long int id = fixture.host().openCamera(*device.source).cameraId;
    if (grabbing) {
        QVERIFY(fixture.host().startGrabbing(id));
    }
    if (!opened) {
        fixture.host().closeCamera(id);
    }
    VexaFeatureToolBar bar(nullptr);
    bar.UpdateToolBarBtn(state, static_cast<int>(id), busy);
    QCOMPARE(enabledOf(bar), expected);
    fixture.host().closeCamera(id);
}

void tst_featuretoolbar::orderOnScreen()
{
    VexaFeatureToolBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QSignalSpy clicked(&bar, &VexaFeatureToolBar::SigToolBarBtnClicked);
    QList<QAbstractButton *> buttons = bar.findChildren<QAbstractButton *>();
    std::sort(buttons.begin(), buttons.end(),
              [](auto *left, auto *right) { return left->x() < right->x(); });
    QList<int> ids;
    for (QAbstractButton *button : qAsConst(buttons)) {
        QTest::mouseClick(button, Qt::LeftButton);
        ids.append(clicked.takeFirst().first().toInt());
    }
    QCOMPARE(ids, QList<int>({4, 0, 1, 2, 3}));
}

void tst_featuretoolbar::refreshPause()
{
    VexaFeatureToolBar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QAbstractButton *refresh = bar.findChildren<QAbstractButton *>().first();
    QSignalSpy clicked(&bar, &VexaFeatureToolBar::SigToolBarBtnClicked);
    QTest::mouseClick(refresh, Qt::LeftButton);
    QVERIFY(!refresh->isEnabled());
    QTest::mouseClick(refresh, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(refresh->isEnabled(), 3000);
}

void tst_featuretoolbar::widthsFollowTheLanguage()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("CH");
    VexaFeatureToolBar bar(nullptr);
    const auto widths = [&bar] {
        QList<int> all;
        for (const QAbstractButton *button : bar.findChildren<QAbstractButton *>()) {
            all.append(button->maximumWidth());
        }
        return all;
    };
    QCOMPARE(widths(), QList<int>({76, 104, 76, 76, 104}));
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("ENG");
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&bar, &change);
    QCOMPARE(widths(), QList<int>({95, 120, 90, 90, 115}));
}

QTEST_MAIN(tst_featuretoolbar)
#include "tst_featuretoolbar.moc"
