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

/// Of the module, which does not export it.
const char *const DIFFERENCE_DIALOG = "VexaFeatureDiff";

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
        } else if (watched->inherits(DIFFERENCE_DIALOG)) {
            takeDifferences(*static_cast<QWidget *>(watched));
        }
    }
    return QObject::eventFilter(watched, event);
}

void HeadlessBoxes::answer(QWidget &dialog, bool yes)
{
    QMetaObject::invokeMethod(&dialog, yes ? "accept" : "reject", Qt::QueuedConnection);
}

void HeadlessBoxes::takeDifferences(QWidget &dialog)
{
    answer(dialog, m_bYes);
    if (!m_bYes) {
        QFunction::Instance()->InsertMessageLog(
            MESSAGE_LOG_WARNING, QString(),
            workbenchText("lang_workbench_declined").arg(dialog.windowTitle()));
    }
}

void HeadlessBoxes::take(CustomMessageBox &box)
{
    const bool question = isQuestion(box);
    answer(box, !question || m_bYes);
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
