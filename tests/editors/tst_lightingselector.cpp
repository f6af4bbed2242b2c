#include "editors/CLightingSelectorInterWidget.h"
#include "editors/VexaLightingSelectorWidget.h"
#include "host/translations/Translations.h"
#include "tests/editors/RowFixture.h"
#include "tests/support/DataTable.h"

#include <QCheckBox>
#include <QPushButton>

namespace {

/// A light on a page, as a host lays it.
class LightFixture : public RowFixture
{
public:
    explicit LightFixture(const QString &strDevice)
        : RowFixture(strDevice, {"Custom_LightingSelector", "LightingBrightness", "LightingTime"})
        , nSegments(strDevice.section("light", 1).left(1).toInt())
    {
    }
    void show()
    {
        RowFixture::show();
        VexaPropertyTreeItem *const pRow = pages.row("Custom_LightingSelector");
        QVERIFY(pRow);
        pages.setLightingItems(pRow, {feature("LightingBrightness"), feature("LightingTime")},
                               feature("LightingAllOff"), feature("LightingAllOn"));
        QCoreApplication::processEvents();
        QVERIFY(light() && light()->isVisible());
    }
    VexaLightingSelectorWidget *light()
    {
        return editor<VexaLightingSelectorWidget>("Custom_LightingSelector");
    }
    CLightingSelectorInterWidget &picture() { return *light()->picture(); }
    /// Bit of the segment whose entry has this number.
    quint32 bit(int nEntry) { return picture().light().bitOf(nEntry); }
    void click(int nEntry, Qt::MouseButton eButton = Qt::LeftButton)
    {
        QTest::mouseClick(&picture(), eButton, Qt::NoModifier, place(nEntry));
    }
    QPoint place(int nEntry)
    {
        return LightingLayout::of(picture().light().type())
            .rectangles()
            .value(bit(nEntry))
            .center();
    }
    /// "1101": the segments by number of their entry, in the device and in the picture.
    QString inDevice()
    {
        return bits([this](int nEntry) { return RowFixture::inDevice("LightingEnable", nEntry); });
    }
    QString shown()
    {
        return bits([this](int nEntry) { return int(picture().mask() & bit(nEntry)); });
    }
    int selected() { return RowFixture::inDevice("LightingSelector"); }
    QString lightWrites()
    {
        return writes(
            {{"S", "LightingSelector"}, {"E", "LightingEnable"}, {"B", "LightingBrightness"}});
    }
    bool select(int nEntry)
    {
        const bool bDone = tree().setFeatureValue(feature("LightingSelector"), nEntry, true, false);
        return settle() && bDone;
    }

    const int nSegments;

private:
    QString bits(const std::function<int(int)> &state) const
    {
        QString strBits;
        for (int nEntry = 0; nEntry < nSegments; ++nEntry) {
            strBits += QLatin1Char(state(nEntry) ? '1' : '0');
        }
        return strBits;
    }
};

QString flipped(QString strBits, int nIndex)
{
    strBits[nIndex] = QLatin1Char(strBits.at(nIndex) == '1' ? '0' : '1');
    return strBits;
}

const QLatin1String ONES("111111");
const QLatin1String NOUGHTS("000000");

} // namespace

/// The picture of a light, by clicks and keys, against the registers of the device.
class tst_LightingSelector : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void segmentsAreSwitched_data();
    void segmentsAreSwitched();
    void clickFromTheEntryForAll_data();
    void clickFromTheEntryForAll();
    void walkLeavesTheSelectorWhereItStood();
    void sharedSettings();
    void refusalsLeaveTheTruth();
    void readOnlyRow();
    void cameraGoesFirst();
};

void tst_LightingSelector::segmentsAreSwitched_data()
{
    const DataTable<QString> row("device");
    for (const char *pId :
         {"code-reader-light3", "code-reader-light3-all-bitmap-commands", "code-reader-light4",
          "code-reader-light4-all", "code-reader-light4-all-bitmap-stray",
          "code-reader-light4-bitmap-commands", "code-reader-light6-all-bitmap",
          "code-reader-light6-commands"}) {
        row(pId, pId);
    }
}

void tst_LightingSelector::segmentsAreSwitched()
{
    QFETCH(QString, device);
    LightFixture f(device);
    f.show();
    QCOMPARE(f.selected(), 1); // also after the walk of a light without a bitmap
    QCOMPARE(f.shown(), f.inDevice());
    QVERIFY(f.settle());
    // Bringing the editor up to date is no edit.
    f.forget();
    for (VexaPropertyTreeItem *pItem :
         {f.pages.row("Custom_LightingSelector"), f.feature("LightingEnable"),
          f.feature("LightingSelector")}) {
        pItem->notifyViewUpdate(f.camera.id, -1, false, false);
    }
    QVERIFY(f.settle());
    QCOMPARE(f.lightWrites(), QString());
    QVERIFY(ShellHost::instance()->modifiedCameras().isEmpty());

    // Twice round, so that each segment goes on and off.
    for (int nClick = 0; nClick < 2 * f.nSegments; ++nClick) {
        const int nEntry = nClick % f.nSegments;
        const QString strAfter = flipped(f.inDevice(), nEntry);
        f.forget();
        if (nClick % 2) {
            f.click(nEntry);
        } else { // the same by keys, from any other segment
            f.picture().setFocus(Qt::TabFocusReason);
            const QString strWanted = f.picture().light().entryName(f.bit(nEntry)) + ":";
            for (int nTry = 0; nTry < 24; ++nTry) {
                if (!f.picture().accessibleDescription().startsWith(strWanted)) {
                    const Qt::Key keys[] = {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up};
                    QTest::keyClick(&f.picture(), keys[nTry / 2 % 4]);
                }
            }
            QVERIFY2(f.picture().accessibleDescription().startsWith(strWanted),
                     qPrintable(strWanted));
            QTest::keyClick(&f.picture(), Qt::Key_Space);
        }
        QCOMPARE(f.inDevice(), strAfter);
        QCOMPARE(f.shown(), strAfter);
        const QString strDirect =
            nEntry ? QStringLiteral("S E%1").arg(nEntry) : QStringLiteral("S E");
        QVERIFY2(f.lightWrites().startsWith(strDirect), qPrintable(f.lightWrites()));
        QCOMPARE(ShellHost::instance()->modifiedCameras().size(), 1);
        // The selector leaves a segment that went dark for the lowest bit that shines; not with three.
        int nStands = nEntry;
        if (strAfter.at(nEntry) == '0' && f.nSegments != 3 && strAfter.contains('1')) {
            quint32 nLowest = 0;
            for (int nOther = 0; nOther < f.nSegments; ++nOther) {
                if (strAfter.at(nOther) == '1' && (!nLowest || f.bit(nOther) < nLowest)) {
                    nLowest = f.bit(nOther);
                    nStands = nOther;
                }
            }
        }
        QCOMPARE(f.selected(), nStands);
        if (nEntry == f.nSegments - 1) {
            f.forget();
            QVERIFY(f.settle());
            QCOMPARE(f.lightWrites(), QString()); // what follows is read only
            QCOMPARE(f.shown(), strAfter);
        }
    }

    // Neither beside the segments nor with another button.
    f.forget();
    const QPoint between(60, 58);
    QTest::mouseClick(&f.picture(), Qt::LeftButton, Qt::NoModifier, between);
    f.click(0, Qt::RightButton);
    f.click(0, Qt::MiddleButton);
    QCOMPARE(f.lightWrites(), QString());

    // All at once, by what this light offers for it.
    auto *const pCheck = f.light()->findChild<QCheckBox *>();
    const QList<QPushButton *> buttons = f.light()->findChildren<QPushButton *>();
    const bool bCommands = device.contains("-commands");
    QCOMPARE(pCheck->isVisible(), !bCommands && f.nSegments != 3);
    for (const bool bOn : {true, false}) {
        const QString strAll = QString(bOn ? ONES : NOUGHTS).left(f.nSegments);
        if (bCommands) {
            QVERIFY(buttons.at(bOn ? 0 : 1)->isVisible());
            QTest::mouseClick(buttons.at(bOn ? 0 : 1), Qt::LeftButton);
        } else if (pCheck->isVisible()) {
            pCheck->setFocus(Qt::TabFocusReason);
            QTest::keyClick(pCheck, Qt::Key_Space);
        } else {
            continue;
        }
        QCOMPARE(f.inDevice(), strAll);
        QCOMPARE(f.shown(), strAll);
        QCOMPARE(pCheck->isChecked(), bOn);
        QVERIFY(f.settle());
        QCOMPARE(f.shown(), strAll);
    }
}

void tst_LightingSelector::clickFromTheEntryForAll_data()
{
    const DataTable<QString, int, QString, QString> row("before", "clicked", "after", "writes");
    row("all but this one", "1111", 2, "1101", "S E2");
    row("this one alone, on already", "1101", 1, "0100", "S E S E3");
    row("this one alone, off so far", "1001", 1, "0100", "S E S E1 S E3");
    row("nothing to write", "0010", 2, "0010", "S");
}

void tst_LightingSelector::clickFromTheEntryForAll()
{
    QFETCH(QString, before);
    QFETCH(int, clicked);
    for (const char *pDevice : {"code-reader-light4-all-bitmap", "code-reader-light4-all"}) {
        LightFixture f(pDevice);
        int nBits = before == "1111" ? 16 : 0;
        for (int nEntry = 0; nEntry < 4; ++nEntry) {
            f.poke("LightingEnable", nEntry, before.at(nEntry) == '1');
            nBits |= int(before.at(nEntry) == '1') << nEntry;
        }
        f.poke("LightingEnable", 4, before == "1111");
        if (f.feature("LightingBitmap")) {
            f.poke("LightingBitmap", 0, nBits);
        }
        QVERIFY(f.select(4));
        f.show();
        QCOMPARE(f.shown(), before);
        QCOMPARE(f.light()->findChild<QCheckBox *>()->isChecked(), before == "1111");
        f.forget();
        f.click(clicked);
        QTEST(f.inDevice(), "after");
        QTEST(f.shown(), "after");
        QFETCH(QString, writes);
        QVERIFY2(f.lightWrites().startsWith(writes), qPrintable(f.lightWrites()));
        QVERIFY(f.selected() != 4);
        QVERIFY(f.settle());
        QTEST(f.shown(), "after");
    }
}

void tst_LightingSelector::walkLeavesTheSelectorWhereItStood()
{
    LightFixture f("code-reader-light4-all");
    QVERIFY(f.select(3));
    f.forget();
    f.show();
    QCOMPARE(f.lightWrites(), QString("S S S S")); // its last entry is where it stood
    QCOMPARE(f.selected(), 3);
    // A kind of reading is walked once: neither refreshes nor a selector that moves walk again.
    f.forget();
    QVERIFY(f.select(0));
    QVERIFY(f.settle());
    QCOMPARE(f.lightWrites(), QString("S"));
    QCOMPARE(f.shown(), f.inDevice());
    // With "all" chosen it is another kind.
    f.forget();
    QVERIFY(f.select(4));
    QVERIFY(f.settle());
    QCOMPARE(f.lightWrites(), QString("S S S S S S"));
    QCOMPARE(f.selected(), 4);
    // One that is refused half-way goes back too, keeps what was known, and is made up for later.
    f.pages.removeCameraID(f.camera.id);
    QVERIFY(f.select(1));
    f.control().setFailing(f.address("LightingEnable") + 8, 7);
    f.show();
    QCOMPARE(f.shown(), QString("0000"));
    QCOMPARE(f.selected(), 1);
    f.control().setFailing(f.address("LightingEnable") + 8, 0);
    QVERIFY(f.select(3));
    QTRY_COMPARE(f.shown(), f.inDevice());
    QCOMPARE(f.selected(), 3);
}

void tst_LightingSelector::sharedSettings()
{
    LightFixture f("code-reader-light4-bitmap");
    for (int nEntry = 0; nEntry < 4; ++nEntry) {
        f.poke("LightingBrightness", nEntry, 10 * (nEntry + 1));
    }
    f.show();
    f.tree().updateFeature(f.feature("LightingBrightness"), QGetFeaturesThread::UPDATE_EVERYTHING);
    QVERIFY(f.settle());
    f.forget();
    // Neither a selector that moves nor the device's own change is spread.
    QVERIFY(f.select(2));
    f.poke("LightingBrightness", 2, 77);
    f.tree().OnAddValueChangedNodes({"LightingBrightness"});
    QVERIFY(f.settle());
    QCOMPARE(f.lightWrites(), QString("S"));
    // The user's is, twice the same too when a segment was changed in between.
    for (const int nValue : {55, 60}) {
        f.forget();
        VexaFeatureTreeView &view = *f.pages.treeView();
        QVERIFY(view.model()->setData(view.indexOfItem(f.feature("LightingBrightness"), 1), nValue,
                                      Qt::EditRole));
        QTRY_COMPARE(f.inDevice(), f.shown());
        QCoreApplication::processEvents();
        for (int nEntry = 0; nEntry < 4; ++nEntry) {
            QCOMPARE(f.RowFixture::inDevice("LightingBrightness", nEntry), nValue);
        }
        QCOMPARE(f.selected(), 2);
        QVERIFY(f.settle());
        QCOMPARE(f.lightWrites(), QString("B2 S B S B1 S B3 S"));
    }
}

void tst_LightingSelector::refusalsLeaveTheTruth()
{
    LightFixture f("code-reader-light4-all");
    f.show();
    QVERIFY(f.settle());
    const QString strBefore = f.inDevice();
    // A switch that is refused: the picture keeps what the device has.
    f.control().setFailing(f.address("LightingEnable"), 7);
    f.click(0);
    QCOMPARE(f.shown(), strBefore);
    f.control().setFailing(f.address("LightingEnable"), 0);
    QVERIFY(f.settle());
    // While polling is on the selector stays away from the device, so that no other segment may be switched.
    f.click(1);
    f.click(1);
    QVERIFY(f.settle());
    QVERIFY(f.tree().setFeatureValue("Enumeration", "PollingEnable", 1));
    QVERIFY(f.settle());
    const QString strPolling = f.inDevice();
    const int nStood = f.selected();
    auto *const pCheck = f.light()->findChild<QCheckBox *>();
    QTest::mouseClick(pCheck, Qt::LeftButton, Qt::NoModifier, QPoint(8, pCheck->height() / 2));
    QCOMPARE(f.inDevice(), strPolling);
    QCOMPARE(f.shown(), strPolling);
    QCOMPARE(f.selected(), nStood);
    QVERIFY(!pCheck->isChecked());
}

void tst_LightingSelector::readOnlyRow()
{
    LightFixture f("code-reader-light4-bitmap");
    f.show();
    QVERIFY(f.settle()); // or the refresh takes it back
    f.feature("LightingSelector")->setReadOnly(f.camera.id, true);
    QTRY_VERIFY(!f.light()->isEnabled());
    f.forget();
    f.click(0);
    QTest::keyClick(&f.picture(), Qt::Key_Space);
    QCOMPARE(f.lightWrites(), QString());
    QVERIFY(!f.light()->grab().isNull());
}

void tst_LightingSelector::cameraGoesFirst()
{
    LightFixture f("code-reader-light6-all");
    f.show();
    f.click(3);
    f.pages.removeCameraID(f.camera.id);
    QVERIFY(!f.pages.root());
    QVERIFY(f.settle()); // changes come to items that have no picture any more
    f.show();
    QCOMPARE(f.shown(), f.inDevice());
    f.camera.device.control->vanish();
    f.click(1);
    QVERIFY(f.light());
    f.camera.device.control->comeBack();
}

QTEST_MAIN(tst_LightingSelector)
#include "tst_lightingselector.moc"
