#include "host/workbench/HeadlessBoxes.h"

#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/QFunction.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMainWindow>
#include <QPushButton>

#include <algorithm>

namespace {

bool isQuestion(const CustomMessageBox &box)
{
    const QString no = QCoreApplication::translate("ControlKit", "lang_controlkit_no");
    const QList<QPushButton *> buttons = box.findChildren<QPushButton *>();
    return std::any_of(buttons.cbegin(), buttons.cend(),
                       [&no](const QPushButton *button) { return button->text() == no; });
}

} // namespace

HeadlessBoxes::HeadlessBoxes(bool yes, QObject *parent)
    : QObject(parent)
    , m_bYes(yes)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool HeadlessBoxes::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *box = qobject_cast<CustomMessageBox *>(watched)) {
            take(*box);
        }
    }
    return QObject::eventFilter(watched, event);
}

void HeadlessBoxes::take(CustomMessageBox &box)
{
    ++m_nCount;
    const bool question = isQuestion(box);
    const char *answer = !question || m_bYes ? "accept" : "reject";
    // Once the box is up: one that blocks is about to start its event loop.
    QMetaObject::invokeMethod(&box, answer, Qt::QueuedConnection);
    // The window's own boxes show prompts, which stand in the log already.
    if (!question && qobject_cast<const QMainWindow *>(box.parent())) {
        return;
    }
    const QString text = messageLine(box.cTextTitle(), box.cContent(), true);
    const bool declined = question && !m_bYes;
    QFunction::Instance()->InsertMessageLog(
        question && m_bYes ? MESSAGE_LOG_INFO : MESSAGE_LOG_WARNING, QString(),
        declined ? workbenchText("lang_workbench_declined").arg(text) : text);
}
