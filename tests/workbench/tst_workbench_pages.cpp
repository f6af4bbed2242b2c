#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/devicetask/CameraHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/GuidedPages.h"
#include "host/workbench/WorkbenchWindow.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/DataTable.h"
#include "tests/workbench/WindowFixture.h"
#include "tree/VexaFeatureTree.h"

#include <QCheckBox>
#include <QDialog>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTableWidget>
#include <QTimer>
#include <QTreeView>
#include <QtTest>

namespace {

const QString READER = QStringLiteral("code-reader");
std::atomic<int> s_nGuiCalls{0};

void countGuiCall()
{
    s_nGuiCalls += QThread::currentThread() == qApp->thread();
}

/// The guided pages of the window, as its user sees them.
class PagesFixture : public WindowFixture
{
public:
    explicit PagesFixture(const QString &strDevice)
        : WindowFixture({strDevice})
        , m_strDevice(strDevice)
    {
        window().show();
        openAndWait(strDevice);
        choose(1);
    }
    void choose(int nTab)
    {
        auto *pTabs = window().findChild<QTabBar *>(QStringLiteral("CameraViewTabs"));
        QTest::mouseClick(pTabs, Qt::LeftButton, Qt::NoModifier, pTabs->tabRect(nTab).center());
    }
    /// The button above all features.
    void clickReturn()
    {
        const QString strText =
            QCoreApplication::translate("QFeatureTree", "lang_qfeaturetree_return");
        const QList<QPushButton *> buttons = window().findChildren<QPushButton *>();
        for (QPushButton *pButton : buttons) {
            if (pButton->isVisible() && pButton->text() == strText) {
                QTest::mouseClick(pButton, Qt::LeftButton);
            }
        }
    }
    GuidedPages &pages() { return *window().findChild<GuidedPages *>(); }
    QTreeView &view() { return *pages().findChild<QTreeView *>(); }
    QStringList shownPages() const { return const_cast<PagesFixture *>(this)->shownBelow({}); }
    QStringList shownBelow(const QModelIndex &parent)
    {
        QStringList texts;
        for (int nRow = 0; nRow < view().model()->rowCount(parent); ++nRow) {
            if (!view().isRowHidden(nRow, parent)) {
                texts << view().model()->index(nRow, 0, parent).data().toString();
            }
        }
        return texts;
    }
    /// The row of this node; invalid when there is none.
    QModelIndex row(const QString &strNode, const QModelIndex &parent = {})
    {
        for (int nRow = 0; nRow < view().model()->rowCount(parent); ++nRow) {
            const QModelIndex index = view().model()->index(nRow, 0, parent);
            auto *pItem = static_cast<VexaPropertyTreeItem *>(index.internalPointer());
            const QModelIndex found =
                pItem->value()->m_strNodeName == strNode ? index : row(strNode, index);
            if (found.isValid()) {
                return found;
            }
        }
        return {};
    }
    template<typename Editor>
    Editor *editor(const QString &strNode)
    {
        const QModelIndex index = row(strNode);
        return qobject_cast<Editor *>(view().indexWidget(index.sibling(index.row(), 1)));
    }
    /// A button of a row, or the one that its editor is; in sight and enabled.
    QPushButton *button(const QString &strNode, const QString &strText)
    {
        QPushButton *pFound = nullptr;
        const auto isReady = [&] {
            view().scrollTo(row(strNode)); // the row may just have come
            auto *pEditor = editor<QWidget>(strNode);
            QList<QPushButton *> buttons = pEditor->findChildren<QPushButton *>();
            buttons << qobject_cast<QPushButton *>(pEditor);
            for (QPushButton *pButton : buttons) {
                if (pButton && pButton->text() == strText) {
                    pFound = pButton;
                }
            }
            return pFound && pFound->isVisible() && pFound->isEnabled();
        };
        pages().setExpandAll(true);
        if (!QTest::qWaitFor(isReady)) {
            qFatal("%s has no button %s", qPrintable(strNode), qPrintable(strText));
        }
        return pFound;
    }
    /// Clicks this button of the row, and works in the dialog that comes up.
    void inDialog(const QString &strRow, const QString &strButton,
                  const std::function<void(QDialog &)> &use)
    {
        QPushButton *pButton = button(strRow, strButton);
        bool bSeen = false;
        QTimer::singleShot(0, &window(), [this, &bSeen, use] {
            auto *pDialog = pages().findChild<QDialog *>(QStringLiteral("FormatEditDialog"));
            if (pDialog) {
                bSeen = true;
                use(*pDialog);
            }
        });
        QTest::mouseClick(pButton, Qt::LeftButton);
        QVERIFY(bSeen);
    }
    VexaPropertyTreeItem *feature(const QString &strName)
    {
        return session(m_strDevice)->tree()->propertyItemByName(strName);
    }
    /// What the tree shows of this feature.
    QString shownOf(const QString &strName) const { return shown(m_strDevice, strName); }

private:
    QString m_strDevice;
};

/// Of a format dialog.
QPlainTextEdit &format(const QDialog &dialog)
{
    return *dialog.findChild<QPlainTextEdit *>(QStringLiteral("FormatText"));
}

QPushButton &okButton(const QDialog &dialog)
{
    const QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    return **std::find_if(buttons.cbegin(), buttons.cend(),
                          [](const QPushButton *pButton) { return pButton->text() == "OK"; });
}

} // namespace

class WorkbenchPagesTest : public QObject
{
    Q_OBJECT
private slots:
    void pagesInBothLanguages();
    void basicPagesOnly();
    void deviceWithoutPages();
    void ownTrigger();
    void focusWithoutTuning();
    void otherDevices_data();
    void otherDevices();
    void guiThreadAsksNothing();
    void rowsOfTheirOwn();
    void formatDialog();
    void triggerBytes();
    void filterRules();
    void followsTheCamera();
};

void WorkbenchPagesTest::pagesInBothLanguages()
{
    PagesFixture f(READER);
    const QStringList english{
        "Image",         "Code Reading", "Lighting",        "Triggers and I/O",
        "Communication", "Polling",      "Screen and Focus"};
    const QStringList chinese{"图像", "读码", "光源",      "触发与输入输出",
                              "通信", "轮询", "屏幕与对焦"};
    QCOMPARE(f.shownPages(), english);
    QVERIFY(f.shownBelow(f.row("Image")).contains("Exposure Time"));
    f.window().setLanguage(QStringLiteral("CH"));
    QCOMPARE(f.shownPages(), chinese);
    for (const QString &strTitle : f.shownBelow(f.row("Image"))) {
        // Rows that draw their own label have none.
        QVERIFY2(strTitle.isEmpty() || strTitle.at(strTitle.size() - 1).unicode() > 0x7F,
                 qPrintable(strTitle));
    }
    QTRY_COMPARE(f.row("Custom_AutoTrigTime").data().toString(), QString("自动触发时间(ms)"));
    f.window().setLanguage(QStringLiteral("ENG"));
    QCOMPARE(f.shownPages(), english);
    QCOMPARE(f.row("Custom_AutoTrigTime").data().toString(), QString("Auto Trigger Time(ms)"));
}

void WorkbenchPagesTest::basicPagesOnly()
{
    PagesFixture f(READER);
    auto *pBox = f.pages().findChild<QCheckBox *>(QStringLiteral("BasicPagesOnly"));
    for (const bool bBasic : {true, false, true}) {
        QTest::mouseClick(pBox, Qt::LeftButton, Qt::NoModifier, QPoint(10, pBox->height() / 2));
        QCOMPARE(pBox->isChecked(), bBasic);
        QCOMPARE(f.shownPages().contains("Polling"), !bBasic);
        QCOMPARE(f.shownBelow(f.row("Communication")).contains("Upload by FTP"), !bBasic);
        // Another look at the tree does not forget it.
        f.choose(0);
        f.clickReturn();
        QCOMPARE(pBox->isChecked(), bBasic);
        QCOMPARE(f.shownPages().contains("Polling"), !bBasic);
    }
}

void WorkbenchPagesTest::deviceWithoutPages()
{
    PagesFixture f(QStringLiteral("area-camera"));
    QVERIFY(!f.view().isVisible());
    QVERIFY(f.pages().isVisible());
    QCOMPARE(f.pages().shownCameraID(), -1L);
}

void WorkbenchPagesTest::ownTrigger()
{
    PagesFixture f(READER);
    const auto count = [&f] {
        f.session(READER)->tree()->getFeatureValueFromCamera(f.feature("TriggerSoftwareCount"));
        return f.shown(READER, "TriggerSoftwareCount").toInt();
    };
    const QModelIndex time = f.row("Custom_AutoTrigTime");
    QVERIFY(f.view().model()->setData(time.sibling(time.row(), 1), 20LL));
    const int nBefore = count();
    auto *pSwitch = f.editor<QCheckBox>("Custom_EnableAutoTrig");
    QVERIFY(pSwitch && pSwitch->isEnabled() && !pSwitch->isChecked());
    pSwitch->click();
    QTRY_VERIFY(count() > nBefore + 2);
    pSwitch->click();
    const int nAfter = count();
    QTest::qWait(100); // five periods
    QCOMPARE(count(), nAfter);
}

void WorkbenchPagesTest::focusWithoutTuning()
{
    {
        PagesFixture f(READER);
        QVERIFY(f.row("FocusStep").isValid() && !f.row("Custom_FocusSetting").isValid());
        QVERIFY(f.row("SmartTune").isValid() && !f.row("SelfAdaptParamAdjustStart").isValid());
    }
    PagesFixture f(QStringLiteral("code-reader-without-tuning"));
    QVERIFY(f.row("FocusStep").isValid());
    QVERIFY(!f.row("SmartTune").isValid() && f.row("SelfAdaptParamAdjustStart").isValid());
    const auto *pRow =
        static_cast<VexaPropertyTreeItem *>(f.row("Custom_FocusSetting").internalPointer());
    QVERIFY(pRow);
    QCOMPARE(pRow->tagName(), QString("CustomSpinBox"));
    QVERIFY(pRow->visible() && !pRow->readOnly());
}

void WorkbenchPagesTest::otherDevices_data()
{
    const DataTable<QStringList, QStringList> row("there", "notThere"); // the first is a switch
    row("code-reader-16", {"LightEnable", "LightingEnable", "LightingSelector"},
        {"Custom_LightingSelector"});
    row("code-reader-17", {"LightingEnable", "LightEnable", "LightingSelector"},
        {"Custom_LightingSelector"});
    row("code-reader-older",
        {"ReverseX", "Line0Glitch", "TestImageModel", "LightMode", "TCPDestIp"},
        {"MirrorX", "LineDebouncerTime", "TestPattern", "FlashMode", "TcpDstAddr"});
}

void WorkbenchPagesTest::otherDevices()
{
    QFETCH(QStringList, there);
    QFETCH(QStringList, notThere);
    const QString device = QTest::currentDataTag();
    PagesFixture f(device);
    for (const QString &strNode : there) {
        QVERIFY2(f.row(strNode).isValid(), qPrintable(strNode));
    }
    for (const QString &strNode : notThere) {
        QVERIFY2(!f.row(strNode).isValid(), qPrintable(strNode));
    }
    f.pages().setExpandAll(true);
    f.view().scrollTo(f.row(there.first()));
    const QPointer<QCheckBox> pSwitch = f.editor<QCheckBox>(there.first());
    QVERIFY(pSwitch && pSwitch->isEnabled());
    const bool bOn = pSwitch->isChecked();
    QTest::mouseClick(pSwitch, Qt::LeftButton, Qt::NoModifier, QPoint(8, pSwitch->height() / 2));
    // What the device has now, whatever kind it calls it.
    const auto inDevice = [&] {
        qint64 nValue = -1;
        _NODE_INT_VALUE_ value{};
        if (QTaskManager::Instance()
                ->GetTaskByIDEx(f.pages().shownCameraID())
                ->_CameraTak()
                ->GetIntegerValue(there.first(), &value, nullptr, true, false)) {
            nValue = value.value;
        }
        return nValue;
    };
    QTRY_COMPARE(inDevice(), qint64(!bOn));
}

/// But for the rows that read on their own: the picture of a light its bitmap when that changes, and the screen its
/// language when it is made.
void WorkbenchPagesTest::guiThreadAsksNothing()
{
    const QString device = QStringLiteral("code-reader-16"); // has no such light
    PagesFixture f(device);
    s_nGuiCalls = 0;
    CameraHost::setCallObserver(countGuiCall);
    f.session(device)->tree()->RefreshFeatures(); // its workers ask meanwhile
    f.pages().setExpandAll(true);
    QScrollBar &bar = *f.view().verticalScrollBar();
    for (int nPlace = 0; nPlace < 20; ++nPlace) {
        bar.setValue(bar.maximum() * nPlace / 19);
        QTest::mouseMove(f.view().viewport(), QPoint(60, 80 + 10 * nPlace));
        QCoreApplication::processEvents();
    }
    f.window().setLanguage(QStringLiteral("CH"));
    f.window().setLanguage(QStringLiteral("ENG"));
    QTest::qWait(200);
    CameraHost::setCallObserver(nullptr);
    QCOMPARE(s_nGuiCalls.load(), 0);
}

void WorkbenchPagesTest::rowsOfTheirOwn()
{
    PagesFixture f(QStringLiteral("code-reader-without-tuning"));
    // The same features in the tree follow what is done on the page.
    QTest::mouseClick(f.button("Custom_LightingSelector", "All On"), Qt::LeftButton);
    QTRY_COMPARE(f.shownOf("LightingBitmap"), QString("0x1F"));
    QTest::mouseClick(f.button("Custom_LightingSelector", "All Off"), Qt::LeftButton);
    QTRY_COMPARE(f.shownOf("LightingBitmap"), QString("0x0"));
    QVERIFY(f.session("code-reader-without-tuning")
                ->tree()
                ->setFeatureValue("Integer", "FocusStep", 25));
    QTest::mouseClick(f.button("Custom_FocusSetting", "+"), Qt::LeftButton);
    QTRY_COMPARE(f.shownOf("FocusPosition"), QString("445"));
    auto *pScreen = f.editor<QWidget>("Custom_ScreenHomepage");
    f.view().scrollTo(f.row("Custom_ScreenHomepage"));
    QVERIFY(pScreen->height() >= 100);
    QTest::mouseClick(pScreen, Qt::LeftButton, Qt::NoModifier, QPoint(10, pScreen->height() / 2));
    QTRY_COMPARE(f.shownOf("ScreenHomepage"), QString("Decode Time"));
}

void WorkbenchPagesTest::filterRules()
{
    PagesFixture f(READER);
    f.inDialog("Custom_RegularExpressionFilterRules", "Set", [](QDialog &dialog) {
        format(dialog).setPlainText("^A.*$");
        dialog.accept();
    });
    QTRY_COMPARE(f.shownOf("RegularExpressionRules"), QString("^A.*$"));
}

void WorkbenchPagesTest::formatDialog()
{
    PagesFixture f(READER);
    const auto put = [](QAbstractItemView &list, const QString &strText) {
        const QModelIndexList found =
            list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, strText);
        QVERIFY2(!found.isEmpty(), qPrintable(strText));
        list.setCurrentIndex(found.first());
        QTest::keyClick(&list, Qt::Key_Return);
    };
    const QString strRow = "Custom_TcpFormatString";
    f.inDialog(strRow, "Edit", [&](QDialog &dialog) {
        put(*dialog.findChild<QTableWidget *>("AsciiTable"), ";");
        put(*dialog.findChild<QListWidget *>("FormatTags"), "Angle");
        QVERIFY(dialog.isVisible());
        okButton(dialog).click();
    });
    QTRY_COMPARE(f.shown(READER, "TcpFormatString"), QString("<codecontent>;<angle>"));
    // What does not fit is not put in, and cannot be written.
    f.inDialog(strRow, "Edit", [&](QDialog &dialog) {
        format(dialog).setPlainText(QString(250, 'x'));
        put(*dialog.findChild<QListWidget *>("FormatTags"), "Angle");
        QCOMPARE(format(dialog).toPlainText().size(), 250);
        format(dialog).setPlainText(QString(256, 'x'));
        QVERIFY(!okButton(dialog).isEnabled());
        dialog.reject();
    });
    // What the row would refuse the dialog refuses, with the reason in its place of the count.
    f.inDialog("Custom_ResSet_Ftp_Picture_Name", "Edit", [](QDialog &dialog) {
        const QMap<QString, bool> texts{
            {"", false}, {"a:b", false}, {QString(QChar(0x4E2D)), false}, {"name", true}};
        for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
            format(dialog).setPlainText(it.key());
            QVERIFY2(okButton(dialog).isEnabled() == it.value(), qPrintable(it.key()));
        }
        dialog.reject();
    });
    // The camera may go while the dialog is up.
    f.inDialog(strRow, "Edit", [&f](QDialog &dialog) {
        format(dialog).setPlainText("gone");
        f.window().closeDevice(READER);
        dialog.accept();
    });
    QVERIFY(!f.view().isVisible());
}

void WorkbenchPagesTest::triggerBytes()
{
    PagesFixture f(READER);
    QVERIFY(f.session(READER)->tree()->setFeatureValue("Enumeration", "TcpStartTriFormat", 1));
    QTRY_VERIFY(f.feature("TcpStartTriggerHex")->visible()
                && !f.feature("TcpStartTriggerHex")->readOnly());
    f.inDialog("Custom_TcpStartTriggerHex", "Edit", [](QDialog &dialog) {
        auto *pTable = dialog.findChild<QTableWidget *>("AsciiTable");
        QCOMPARE(pTable->rowCount(), 128);
        QVERIFY(!dialog.findChild<QListWidget *>("FormatTags")->isVisible());
        pTable->setCurrentCell(0x0D, 0);
        QTest::keyClick(pTable, Qt::Key_Return);
        dialog.accept();
    });
    QTRY_COMPARE(f.shown(READER, "TcpStartTriggerHex"), QString("02 53 03 0D"));
}

void WorkbenchPagesTest::followsTheCamera()
{
    PagesFixture f(READER);
    QVERIFY(f.view().isVisible());
    f.unplug(READER);
    QTRY_COMPARE(f.session(READER)->state(), CameraSession::State::Lost);
    f.forgetUpdates();
    f.control(READER).comeBack();
    QTRY_VERIFY_WITH_TIMEOUT(f.isUpdated(READER), WindowFixture::LONG_WAIT);
    QCOMPARE(f.shownPages().size(), 7);
    QCOMPARE(static_cast<VexaPropertyTreeItem *>(f.row("Gain").internalPointer()),
             f.feature("Gain"));
    f.window().closeDevice(READER);
    QVERIFY(!f.view().isVisible());
    QCOMPARE(f.view().model()->rowCount(), 0);
}

QTEST_MAIN(WorkbenchPagesTest)
#include "tst_workbench_pages.moc"
