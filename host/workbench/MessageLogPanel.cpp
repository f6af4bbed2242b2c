#include "host/workbench/MessageLogPanel.h"

#include "ControlKit/CustomLabel.h"
#include "ShellServicesModule/QFunction.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

struct LevelRow
{
    int level;
    const char *textKey;
    const char *colour;
};

const LevelRow &rowOf(int level)
{
    static const LevelRow TABLE[] = {
        {MESSAGE_LOG_INFO, "lang_workbench_level_info", "#D1D1D1"},
        {MESSAGE_LOG_WARNING, "lang_workbench_level_warning", "#FFC04D"},
        {MESSAGE_LOG_ERROR, "lang_workbench_level_error", "#FF7A70"}};
    for (const LevelRow &row : TABLE) {
        if (row.level == level) {
            return row;
        }
    }
    return TABLE[0];
}

} // namespace

MessageLogPanel::MessageLogPanel(QWidget *parent)
    : CustomWidget(parent)
    , m_pTitle(new CustomLabel(this))
    , m_pText(new QPlainTextEdit(this))
{
    m_pTitle->cSetFontSize(14);
    m_pText->setObjectName(QStringLiteral("MessageLog"));
    m_pText->setReadOnly(true);
    m_pText->setUndoRedoEnabled(false);
    m_pText->setMaximumBlockCount(MAXIMUM_MESSAGES);
    m_pText->setTabChangesFocus(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 6, 12, 10);
    column->setSpacing(6);
    column->addWidget(m_pTitle);
    column->addWidget(m_pText, 1);
    retranslate();
}

MessageLogPanel::~MessageLogPanel() = default;

void MessageLogPanel::addMessage(int level, const QString &camera, const QString &text)
{
    m_lines.enqueue({QTime::currentTime(), level, camera, text});
    if (m_lines.size() > MAXIMUM_MESSAGES) {
        m_lines.dequeue();
    }
    show(m_lines.last());
}

void MessageLogPanel::show(const Line &shown)
{
    const LevelRow &row = rowOf(shown.level);
    QString line = shown.time.toString(QStringLiteral("HH:mm:ss.zzz")) + QStringLiteral("  ")
        + workbenchText(row.textKey) + QStringLiteral("  ");
    if (!shown.camera.isEmpty()) {
        line += shown.camera + QStringLiteral(": ");
    }
    line += shown.text.simplified();

    QTextCharFormat format;
    format.setForeground(QColor(QLatin1String(row.colour)));
    QTextCursor cursor(m_pText->document());
    cursor.movePosition(QTextCursor::End);
    if (!m_pText->document()->isEmpty()) {
        cursor.insertBlock();
    }
    cursor.insertText(line, format);
    m_pText->moveCursor(QTextCursor::End);
    m_pText->moveCursor(QTextCursor::StartOfBlock);
}

void MessageLogPanel::setTitleVisible(bool visible)
{
    m_pTitle->setVisible(visible);
}

void MessageLogPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        m_pText->clear();
        for (Line &line : m_lines) {
            line.text = retranslated(line.text);
            show(line);
        }
    }
    CustomWidget::changeEvent(event);
}

void MessageLogPanel::retranslate()
{
    m_pTitle->setText(workbenchText("lang_workbench_messages"));
    m_pText->setAccessibleName(workbenchText("lang_workbench_messages"));
}
