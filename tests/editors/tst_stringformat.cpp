#include "ControlKit/CustomMessageBox.h"
#include "editors/VexaStringFormatRules.h"
#include "editors/VexaStringFormatTags.h"
#include "editors/VexaStringFormatWidget.h"
#include "host/translations/Translations.h"
#include "model/CustomNodeNames.h"
#include "tests/editors/FormatFixture.h"
#include "tests/model/PageTexts.h"
#include "tests/support/DataTable.h"

#include <QAction>
#include <QtTest>

namespace {

constexpr int STATUS_OF_A_REFUSAL = 10; // a code of the device itself
const QString TCP = QStringLiteral("TcpFormatString");
const QString DIRECTORY = QStringLiteral("FtpFormatDirectoryString");
const QString CONTENT = QStringLiteral("FtpFormatResultString");
const QString PICTURE = QStringLiteral("ResSet_Ftp_Picture_Name");
const QString BYTES = QStringLiteral("TcpStartTriggerHex");
const QStringList ROWS{TCP, DIRECTORY, CONTENT, PICTURE, BYTES, "ResSet_Emmc_Picture_Name"};

/// The nodes of a code reader that have a row with this editor.
QStringList formatNodes()
{
    const QString xml =
        QString::fromUtf8(SimulatedDevices::builtIn("code-reader").control->description());
    const QRegularExpression text(QStringLiteral("<StringReg Name=\"(\\w+)\""));
    QStringList nodes;
    for (auto it = text.globalMatch(xml); it.hasNext();) {
        const QString node = it.next().captured(1);
        if (!customNodeOf(node).isEmpty()) {
            nodes << node;
        }
    }
    return nodes;
}

} // namespace

class tst_stringformat : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void init();
    void cleanupTestCase() { m_pFixture.reset(); }
    void everyRowIsUsed();
    void tablesFitTheDevice();
    void edits_data();
    void edits();
    void tagsFromTheMenu_data();
    void tagsFromTheMenu();
    void triggerKeys();
    void otherDevices_data();
    void otherDevices();
    void deviceRefuses();
    void refillWritesNothing();
    void lockedWhileTyping();
    void otherWindowsEndNoEdit();
    void keyboardAlone();
    void tableOfCharacters();
    void switchesLanguage();
    void goesAwayInAnEdit_data();
    void goesAwayInAnEdit();

private:
    FormatFixture &fixture() { return *m_pFixture; }
    QTextEdit *box(const QString &strNode) { return fixture().box(strNode); }
    std::unique_ptr<FormatFixture> m_pFixture;
};

void tst_stringformat::init()
{
    const QByteArray function = QTest::currentTestFunction();
    if (function == "otherDevices" || function == "everyRowIsUsed") {
        return;
    }
    if (!m_pFixture) {
        const auto device = SimulatedDevices::builtIn(QStringLiteral("code-reader"));
        m_pFixture = std::make_unique<FormatFixture>(device, ROWS);
        // The bytes of a trigger are there while its format says so.
        QVERIFY(fixture().camera.tree->setFeatureValue("Enumeration", "TcpStartTriFormat", 1));
        QTRY_VERIFY(fixture().feature(BYTES)->visible() && !fixture().feature(BYTES)->readOnly());
        fixture().pages.treeView()->expandAll();
    }
    QVERIFY(fixture().comeUp());
    QTRY_VERIFY(box(BYTES) && box(BYTES)->isEnabled());
    const QStringList texts{"<codecontent>", "<year>/", "<image>,", "name", "02 53"};
    for (int i = 0; i < texts.size(); ++i) {
        QVERIFY(fixture().changeBehind(ROWS.at(i), texts.at(i)));
    }
    fixture().pages.treeView()->setFocus();
    fixture().forget();
}

/// All 26 rows at once, as no protocol shows them, by clicks and keys.
void tst_stringformat::everyRowIsUsed()
{
    m_pFixture.reset();
    const QStringList nodes = formatNodes();
    QStringList elements;
    for (const QString &node : nodes) {
        const QString source = sourceDataNodeOf(node);
        const QString trigger = VexaStringFormatRules::triggerFormatNode(customNodeOf(node));
        elements << "s:" + node + "="
                 << (source.isEmpty() ? "e:" + trigger + "=Text,Hex" : "e:" + source + "=a,b");
    }
    QCOMPARE(nodes.size(), 26);
    m_pFixture = std::make_unique<FormatFixture>(
        SimulatedDevices::fromDescription(deviceOf(elements.join(' ')), QStringLiteral("test"),
                                          SimulatorControl::MemoryPattern::Zero),
        nodes);
    QSignalSpy asked(&fixture().pages, &IVexaFeatureWidget::SigFormatEditRequested);
    QMap<QString, int> forms;
    for (const QString &node : nodes) {
        QVERIFY(fixture().comeUp());
        const QString custom = customNodeOf(node);
        auto *const pEditor = qobject_cast<VexaStringFormatWidget *>(fixture().editor(node));
        QVERIFY2(pEditor && pEditor->isEnabled() && pEditor->height() == 160, qPrintable(node));
        const QString title = pEditor->findChild<QLabel *>()->text();
        QCOMPARE(title, QString(VexaStringFormatRules::titleOf(custom)));
        QCOMPARE(box(node)->accessibleName(), title);
        act(box(node), {"ab", "tab"});
        QPushButton *const pButton = fixture().button(node);
        QVERIFY2(pButton->hasFocus() && pButton->accessibleName().contains(title),
                 qPrintable(node));
        QCOMPARE(fixture().deviceText(node), QString("ab"));
        QCOMPARE(fixture().counter(node), QString("2/31"));
        QMenu *const pMenu = menuOf(pEditor);
        ++forms[pMenu ? "menu" : sourceDataNodeOf(node).isEmpty() ? "bytes" : "text"];
        QTest::mouseClick(pButton, Qt::RightButton);
        QVERIFY(asked.isEmpty() && !(pMenu && pMenu->isVisible()));
        QTest::mouseClick(pButton, Qt::LeftButton);
        if (pMenu) {
            QTRY_VERIFY(pMenu->isVisible());
            QTest::keyClick(pMenu, Qt::Key_Down);
            QTest::keyClick(pMenu, Qt::Key_Return);
            QVERIFY2(fixture().deviceText(node).startsWith("ab<a>"), qPrintable(node));
            QVERIFY(pButton->size() == QSize(36, 36) && !pButton->icon().pixmap(24, 24).isNull());
            continue;
        }
        QVERIFY(pButton->size() == QSize(80, 36) && pButton->text() == "Edit");
        const QVariantList request = asked.value(0);
        asked.clear();
        QCOMPARE(request.value(0).value<VexaPropertyTreeItem *>(), fixture().feature(node));
        QCOMPARE(request.value(1).value<VexaPropertyTreeItem *>(),
                 fixture().feature(sourceDataNodeOf(node)));
        if (sourceDataNodeOf(node).isEmpty()) {
            QVERIFY(taskOf(fixture().camera)
                        ->SetEnumerationValue(VexaStringFormatRules::triggerFormatNode(custom), 1,
                                              nullptr));
            act(box(node), {"c", "back", "tab"});
            QCOMPARE(fixture().deviceText(node), QString("a"));
        }
    }
    QCOMPARE(forms, (QMap<QString, int>{{"menu", 3}, {"bytes", 8}, {"text", 15}}));
    m_pFixture.reset();
}

void tst_stringformat::tablesFitTheDevice()
{
    installLanguage(*qApp, QStringLiteral("CH"));
    const QStringList nodes = formatNodes();
    QCOMPARE(nodes.size(), 26);
    for (const QString &node : nodes) {
        const QString custom = customNodeOf(node);
        const char *const pTitle = VexaStringFormatRules::titleOf(custom);
        QVERIFY2(pTitle && VexaStringFormatWidget::tr(pTitle) != pTitle, qPrintable(node));
        const bool bBytes =
            VexaStringFormatRules::formOf(custom) == VexaStringFormatRules::FORM_TRIGGER_BYTES;
        const auto *const pEntries = fixture().entries(
            bBytes ? VexaStringFormatRules::triggerFormatNode(custom) : sourceDataNodeOf(node));
        QVERIFY2(pEntries, qPrintable(node));
        for (const QString &strTag : bBytes ? QStringList() : pEntries->getDisplayList()) {
            QVERIFY2(VexaStringFormatRules::hasIdeographs(VexaStringFormatTags::translated(strTag))
                         || strTag == "OK/NG",
                     qPrintable(strTag));
        }
    }
    QCOMPARE(VexaStringFormatTags::translated(QString::fromUtf8("帧号")),
             VexaStringFormatTags::translated("Frame No."));
    QCOMPARE(VexaStringFormatTags::translated("unknown"), QString("unknown"));
    installLanguage(*qApp, QStringLiteral("ENG"));
}

void tst_stringformat::edits_data()
{
    // Of the device's writes; the camera counts as changed then. Boxes tell why there is none.
    const DataTable<QString, QStringList, QString, int, int> table("node", "words", "after",
                                                                   "writes", "boxes");
    const auto row = [&table](const char *pFault, const QString &node, const QStringList &words,
                              const QString &after,
                              int nWrites) { table(pFault, node, words, after, nWrites, 0); };
    const auto refused = [&table](const char *pFault, const QString &node, const QString &text) {
        table(pFault, node, {"clear", "paste:" + text}, node == PICTURE ? "name" : "<year>/", 0, 1);
    };
    const QString full(255, 'x');
    row("no edit is no write", TCP, {}, "<codecontent>", 0);
    row("there and back is no write", TCP, {"ab", "back", "back"}, "<codecontent>", 0);
    row("what is typed is written", TCP, {";a"}, "<codecontent>;a", 1);
    row("markup stays text", TCP, {"clear", "<b>&amp;</b>"}, "<b>&amp;</b>", 1);
    row("the limit is written", TCP, {"clear", "paste:" + full}, full, 1);
    row("one more is cut", TCP, {"clear", "paste:" + full + "y"}, full, 1);
    row("an ideograph takes nothing with it", TCP, {";a", QString::fromUtf8("paste:码"), "b"},
        "<codecontent>;ab", 1);
    row("escape gives it up", TCP, {";a", "esc"}, "<codecontent>", 0);
    row("emptied", TCP, {"clear"}, "", 1);
    row("an empty level takes nothing with it", DIRECTORY, {"a", "/", "/", "b"}, "<year>/a/b", 1);
    row("two slashes are no level elsewhere", TCP, {"//"}, "<codecontent>//", 1);
    row("a format takes all", TCP, {"clear", "~!@#%:|"}, "~!@#%:|", 1);
    row("tags, dots and underscores", PICTURE, {"clear", "<codecontent>_a.b"}, "<codecontent>_a.b",
        1);
    row("a directory with a colon", DIRECTORY, {"clear", "C:/a"}, "C:/a", 1);
    row("an empty directory", DIRECTORY, {"clear"}, "", 1);
    refused("a name with a colon", PICTURE, "a:b");
    refused("a name with a slash", PICTURE, "a/b");
    refused("a name with a bracket of a range", PICTURE, "a(b");
    refused("a name with a hyphen", PICTURE, "a-b");
    refused("a name with a wide character", PICTURE, QString::fromUtf8("a￥b"));
    refused("an empty name", PICTURE, "");
    refused("a directory with a bar", DIRECTORY, "a|b");
}

void tst_stringformat::edits()
{
    QFETCH(QString, node);
    QFETCH(QStringList, words);
    QFETCH(QString, after);
    QFETCH(int, writes);
    QFETCH(int, boxes);
    BoxAnswers answers(Qt::Key_Return);
    act(box(node), words);
    QVERIFY(boxes || box(node)->toPlainText() == after);
    QCOMPARE(fixture().writeCount(), 0);
    QTest::keyClick(box(node), Qt::Key_Tab);
    QTRY_COMPARE(answers.count(), boxes);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(fixture().writeCount(), writes);
    QCOMPARE(box(node)->toPlainText(), after);
    QCOMPARE(fixture().deviceText(node), after);
    QCOMPARE(ShellHost::instance()->modifiedCameras().size(), writes);
    QTest::keyClick(fixture().button(node), Qt::Key_Tab);
    QCOMPARE(fixture().writeCount(), writes);
    QTRY_COMPARE(fixture().knownText(node), after);
}

void tst_stringformat::tagsFromTheMenu_data()
{
    const DataTable<QString, QString, QString> row("node", "before", "after");
    const QString longText(242, 'x');
    row("a level", DIRECTORY, "a/", "a/<deviceip>/");
    row("a part of a list", CONTENT, "<image>,", "<image>,<image>,");
    row("a part of a name", ROWS.last(), "a", "a<codecontent>");
    row("to the limit", ROWS.last(), longText, longText + "<codecontent>");
    row("over the limit", ROWS.last(), longText + 'y', longText + 'y');
}

void tst_stringformat::tagsFromTheMenu()
{
    QFETCH(QString, node);
    QFETCH(QString, before);
    QFETCH(QString, after);
    QVERIFY(fixture().changeBehind(node, before));
    fixture().forget();
    QTest::mouseClick(fixture().button(node), Qt::LeftButton);
    QMenu *const pMenu = menuOf(fixture().editor(node));
    QTRY_VERIFY(pMenu->isVisible());
    QCOMPARE(pMenu->actions().size(),
             fixture().entries(sourceDataNodeOf(node))->getDisplayList().size());
    QTest::keyClick(pMenu, Qt::Key_Down);
    QTest::keyClick(pMenu, Qt::Key_Return);
    QTRY_VERIFY(!pMenu->isVisible());
    QCOMPARE(box(node)->toPlainText(), after);
    QCOMPARE(fixture().deviceText(node), after);
    QCOMPARE(fixture().writeCount(), before == after ? 0 : 1);
}

void tst_stringformat::triggerKeys()
{
    act(box(BYTES), {"paste: 03"});
    const int nCursor = box(BYTES)->textCursor().position();
    QTest::keyClick(box(BYTES), Qt::Key_Left);
    QCOMPARE(box(BYTES)->textCursor().position(), nCursor - 1);
    QTest::keyClick(box(BYTES), Qt::Key_Tab);
    QVERIFY(fixture().button(BYTES)->hasFocus());
    QCOMPARE(fixture().deviceText(BYTES), QString("02 53 03"));
}

void tst_stringformat::otherDevices_data()
{
    const DataTable<QByteArray> row("access"); // to the trigger text
    row("a trigger that tells no format is typed", "RW");
    row("a node that is read only takes no text from an editor that lags", "RO");
}

void tst_stringformat::otherDevices()
{
    QFETCH(QByteArray, access);
    m_pFixture.reset();
    const QString node = QStringLiteral("UdpEndTriggerHex");
    const auto device = SimulatedDevices::fromDescription(
        descriptionOf({node},
                      "<StringReg Name=\"UdpEndTriggerHex\"><Address>64</Address><Length>8"
                      "</Length><AccessMode>"
                          + access + "</AccessMode><pPort>Device</pPort></StringReg>"),
        QStringLiteral("test"), SimulatorControl::MemoryPattern::Zero);
    m_pFixture = std::make_unique<FormatFixture>(device, QStringList{node});
    QVERIFY(box(node));
    const bool bWritable = access == "RW";
    QCOMPARE(box(node)->isEnabled(), bWritable);
    fixture().editor(node)->setEnabled(true);
    act(box(node), {"12345678"});
    QCOMPARE(box(node)->toPlainText(), QString("1234567"));
    QTest::keyClick(box(node), Qt::Key_Tab);
    QCOMPARE(fixture().writeCount(), bWritable ? 1 : 0);
    QCOMPARE(box(node)->toPlainText(), QString(bWritable ? "1234567" : ""));
    m_pFixture.reset();
}

void tst_stringformat::deviceRefuses()
{
    SimulatorControl &control = *fixture().camera.device.control;
    act(box(TCP), {"1", "tab"});
    QCOMPARE(fixture().writeCount(), 1);
    const quint64 nAddress = writesOf(fixture().camera).first().address;
    control.setFailing(nAddress, STATUS_OF_A_REFUSAL);
    act(box(TCP), {"2", "tab"});
    control.setFailing(nAddress, 0);
    auto *const pBox = qobject_cast<CustomMessageBox *>(QApplication::activeModalWidget());
    QVERIFY(pBox);
    QVERIFY2(pBox->cContent().contains("'&lt;codecontent&gt;12'")
                 && pBox->cContent().contains("\r\n0x9000"),
             qPrintable(pBox->cContent()));
    QTest::keyClick(pBox, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(fixture().comeUp());
    QCOMPARE(box(TCP)->toPlainText(), QString("<codecontent>12"));
    QCOMPARE(fixture().deviceText(TCP), QString("<codecontent>1"));

    const int nTried = fixture().writeCount();
    act(box(TCP), {"tab"});
    QCOMPARE(fixture().writeCount(), nTried); // the same text is not tried again
    act(box(TCP), {"3", "back", "tab"});
    QCOMPARE(fixture().deviceText(TCP),
             QString("<codecontent>12")); // a new edit is
}

void tst_stringformat::refillWritesNothing()
{
    QSignalSpy changed(box(TCP), &QTextEdit::textChanged);
    for (const QString &strText : {QString("a\r\nb"), QString("<x>"), QString(255, 'x'),
                                   QString::fromUtf8("条码"), QString(), QString("<last>")}) {
        QVERIFY(fixture().changeBehind(TCP, strText));
        fixture().forget();
        QCOMPARE(box(TCP)->toPlainText(), QString(strText).remove('\r'));
        act(box(TCP), {"tab"});
        QCOMPARE(fixture().writeCount(), 0);
    }
    QCOMPARE(changed.count(), 0);

    act(box(TCP), {";typed"});
    QVERIFY(fixture().changeBehind(TCP, "<other>"));
    fixture().forget();
    QCOMPARE(box(TCP)->toPlainText(), QString("<last>;typed"));
    QTest::keyClick(box(TCP), Qt::Key_Escape);
    QCOMPARE(box(TCP)->toPlainText(), QString("<other>"));
    QTest::keyClick(box(TCP), Qt::Key_Tab);
    QCOMPARE(fixture().writeCount(), 0);
}

void tst_stringformat::lockedWhileTyping()
{
    VexaPropertyTreeItem *const pFeature = fixture().feature(TCP);
    const long lCameraID = fixture().camera.id;
    act(box(TCP), {";typed"});
    pFeature->setReadOnly(lCameraID, true);
    QVERIFY(!box(TCP)->isEnabled() && !fixture().button(TCP)->isEnabled());
    QCOMPARE(box(TCP)->toPlainText(), QString("<codecontent>"));
    QCOMPARE(box(TCP)->textColor(), QColor("#60CCCCCC"));
    QCOMPARE(fixture().writeCount(), 0);
    pFeature->setReadOnly(lCameraID, false);
    QVERIFY(box(TCP)->isEnabled());
    QCOMPARE(box(TCP)->textColor(), QColor("#CCCCCC"));
    auto *const pEditor = static_cast<VexaStringFormatWidget *>(fixture().editor(TCP));
    emit pEditor->SigReadOnlyChanged(lCameraID + 1, true); // of another camera
    QVERIFY(pEditor->isEnabled());
}

void tst_stringformat::otherWindowsEndNoEdit()
{
    act(box(TCP), {";a"});
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(fixture().changeBehind(TCP, "<other>"));
    fixture().forget();
    QVERIFY(fixture().comeUp());
    QCOMPARE(box(TCP)->toPlainText(), QString("<codecontent>;a"));
    QCOMPARE(fixture().writeCount(), 0);
    QTest::keyClick(box(TCP), Qt::Key_Tab);
    QCOMPARE(fixture().deviceText(TCP), QString("<codecontent>;a"));
}

void tst_stringformat::keyboardAlone()
{
    // Row by row, the box and then the button; back the same way.
    QTest::keyClick(fixture().pages.treeView(), Qt::Key_Tab);
    for (const QString &strNode : ROWS) {
        QVERIFY2(box(strNode)->hasFocus(), qPrintable(strNode));
        QTest::keyClick(box(strNode), Qt::Key_Tab);
        QVERIFY(fixture().button(strNode)->hasFocus());
        if (strNode != ROWS.last()) {
            QTest::keyClick(fixture().button(strNode), Qt::Key_Tab);
        }
    }
    QTest::keyClick(fixture().button(ROWS.last()), Qt::Key_Backtab);
    QVERIFY(box(ROWS.last())->hasFocus());
    QInputMethodEvent typed;
    typed.setCommitString("x");
    QCoreApplication::sendEvent(box(ROWS.last()), &typed);
    QVERIFY(!box(ROWS.last())->toPlainText().contains('x'));
    QCOMPARE(fixture().writeCount(), 0);
}

void tst_stringformat::tableOfCharacters()
{
    // A table of characters adds to what is there, until it is full.
    auto *const pEditor = static_cast<VexaStringFormatWidget *>(fixture().editor(BYTES));
    QStringList rows[] = {{" 03", "ETX"}, {QString(60, 'x')}, {" 0D"}};
    for (QStringList &row : rows) {
        QVERIFY(QMetaObject::invokeMethod(pEditor, "OnAsciiTableItemClicked",
                                          Q_ARG(QStringList &, row)));
    }
    QCOMPARE(box(BYTES)->toPlainText(), QString("02 53 03 0D"));
    act(box(BYTES), {"tab"});
    QCOMPARE(fixture().deviceText(BYTES), QString("02 53 03 0D"));
}

void tst_stringformat::switchesLanguage()
{
    const auto texts = [this] {
        QTest::mouseClick(fixture().button(DIRECTORY), Qt::LeftButton);
        QMenu *const pMenu = menuOf(fixture().editor(DIRECTORY));
        const QString strTexts = fixture().editor(DIRECTORY)->findChild<QLabel *>()->text() + ' '
            + pMenu->actions().at(0)->text() + ' ' + pMenu->actions().at(5)->text() + ' '
            + fixture().button(TCP)->text();
        pMenu->close();
        return strTexts;
    };
    act(box(TCP), {";typed"});
    const QString english = texts();
    QCOMPARE(english, QString("FTP Upload Directory String Device ip Station Name Edit"));
    fixture().forget();
    installLanguage(*qApp, QStringLiteral("CH"));
    QCoreApplication::processEvents();
    QCOMPARE(texts(), QString::fromUtf8("FTP 上传目录字符串 IP地址 站名 编辑"));
    installLanguage(*qApp, QStringLiteral("ENG"));
    QCoreApplication::processEvents();
    QCOMPARE(texts(), english);
    QCOMPARE(fixture().writeCount(), 0);
}

void tst_stringformat::goesAwayInAnEdit_data()
{
    const DataTable<QString> row("what");
    for (const char *pWhat :
         {"row", "page", "menu", "warning page", "warning camera", "dialog page"}) {
        row(pWhat, pWhat);
    }
}

void tst_stringformat::goesAwayInAnEdit()
{
    QFETCH(QString, what);
    const auto leave = [this, what] {
        fixture().forget();
        if (what == "row") {
            fixture().feature(TCP)->setVisible(false, fixture().camera.id, false);
            return;
        }
        fixture().pages.removeCameraID(fixture().camera.id);
        if (what.endsWith("camera")) {
            fixture().module.close(fixture().camera);
            fixture().camera.tree = nullptr;
        }
    };
    if (what.startsWith("warning")) {
        act(box(PICTURE), {":"});
        QTimer looks;
        connect(&looks, &QTimer::timeout, this, [&] {
            if (QApplication::activeModalWidget()) {
                looks.stop();
                leave();
            }
        });
        looks.start(5);
        const QPointer<QWidget> guard(box(PICTURE));
        QTest::keyClick(box(PICTURE), Qt::Key_Tab);
        QTRY_VERIFY(!guard);
        QVERIFY(!QApplication::activeModalWidget());
    } else if (what.startsWith("dialog")) {
        const QPointer<QWidget> guard(fixture().editor(TCP));
        connect(&fixture().pages, &IVexaFeatureWidget::SigFormatEditRequested, this, [&] {
            QEventLoop loop; // of the host's dialog
            QTimer::singleShot(0, this, leave);
            connect(guard, &QObject::destroyed, &loop, &QEventLoop::quit);
            loop.exec();
        });
        act(box(TCP), {});
        QTest::mouseClick(fixture().button(TCP), Qt::LeftButton);
        QVERIFY(!guard);
    } else if (what == "menu") {
        QTest::mouseClick(fixture().button(DIRECTORY), Qt::LeftButton);
        const QPointer<QMenu> pMenu = menuOf(fixture().editor(DIRECTORY));
        QVERIFY(pMenu->isVisible());
        leave();
        QVERIFY(!pMenu || !pMenu->isVisible());
    } else {
        act(box(TCP), {";a"});
        leave();
        QCoreApplication::processEvents();
    }
    if (fixture().camera.tree) {
        QCOMPARE(fixture().writeCount(), 0);
        fixture().feature(TCP)->setReadOnly(fixture().camera.id,
                                            true); // nobody listens
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        fixture().feature(TCP)->setReadOnly(fixture().camera.id, false);
    }
    m_pFixture.reset();
}

QTEST_MAIN(tst_stringformat)
#include "tst_stringformat.moc"
