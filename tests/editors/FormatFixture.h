#pragma once

#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "tests/editors/RowFixture.h"
#include "tests/view/EditFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>

/// One page of format rows over a simulated device, on screen.
class FormatFixture : public RowFixture
{
public:
    FormatFixture(const SimulatedDevices::Simulated &device, const QStringList &nodes)
        : RowFixture(device, nodes)
    {
        show(QSize(520, 900));
    }
    /// The page is the active window, after a box or a menu too.
    bool comeUp()
    {
        pages.activateWindow();
        return QTest::qWaitForWindowActive(&pages);
    }

    QWidget *editor(const QString &strNode)
    {
        auto *const pEditor = RowFixture::editor<QWidget>("Custom_" + strNode);
        if (pEditor) {
            pages.treeView()->scrollTo(
                pages.treeView()->indexOfItem(pages.row("Custom_" + strNode), 0),
                QAbstractItemView::PositionAtCenter);
        }
        return pEditor;
    }
    QTextEdit *box(const QString &strNode)
    {
        return editor(strNode) ? editor(strNode)->findChild<QTextEdit *>() : nullptr;
    }
    QPushButton *button(const QString &strNode)
    {
        return editor(strNode) ? editor(strNode)->findChild<QPushButton *>() : nullptr;
    }
    QString counter(const QString &strNode)
    {
        return editor(strNode)->findChildren<QLabel *>().last()->text();
    }
    /// The enumeration of this name; null for any other node.
    CTreeEnumationItemValue *entries(const QString &strNode)
    {
        return feature(strNode) ? dynamic_cast<CTreeEnumationItemValue *>(feature(strNode)->value())
                                : nullptr;
    }
    /// What the tree knows of the text.
    QString knownText(const QString &strNode)
    {
        return dynamic_cast<CTreeStringItemValue &>(*feature(strNode)->value()).m_strValue;
    }
    QString deviceText(const QString &strNode)
    {
        QString strText = QStringLiteral("none");
        taskOf(camera)->GetStringValue(strNode, &strText, nullptr, nullptr, true, false);
        return strText;
    }
    /// The device's text changes without the editor, and the row has taken it over.
    bool changeBehind(const QString &strNode, const QString &strText)
    {
        taskOf(camera)->SetStringValue(strNode, strText, nullptr);
        tree().updateFeature(feature(strNode), QGetFeaturesThread::UPDATE_EVERYTHING);
        QCoreApplication::processEvents();
        return knownText(strNode) == strText;
    }
};

/// Clicks into the box and does what the words say: "paste:...", "clear" or a key; any other is typed.
inline void act(QTextEdit *pBox, const QStringList &words)
{
    static const QMap<QString, Qt::Key> keys{
        {"esc", Qt::Key_Escape}, {"back", Qt::Key_Backspace}, {"tab", Qt::Key_Tab}};
    QTest::mouseClick(pBox->viewport(), Qt::LeftButton);
    pBox->moveCursor(QTextCursor::End);
    for (const QString &strWord : words) {
        if (strWord.startsWith("paste:")) {
            QGuiApplication::clipboard()->setText(strWord.mid(6));
            QTest::keyClick(pBox, Qt::Key_V, Qt::ControlModifier);
        } else if (strWord == "clear") {
            QTest::keyClick(pBox, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(pBox, Qt::Key_Backspace);
        } else if (keys.contains(strWord)) {
            QTest::keyClick(pBox, keys.value(strWord));
        } else {
            QTest::keyClicks(pBox, strWord);
        }
    }
}

inline QMenu *menuOf(const QWidget *pEditor)
{
    return pEditor->findChild<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
}
