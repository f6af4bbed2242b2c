#pragma once

#include "ControlKit/CustomWidget.h"

#include <QQueue>
#include <QTime>

class CustomLabel;
class QPlainTextEdit;

/// The client's message log at the bottom of the window: the last messages with time, level and camera. The program's
/// own words follow its language.
class MessageLogPanel : public CustomWidget
{
    Q_OBJECT
public:
    /// Older messages than this many are dropped.
    static constexpr int MAXIMUM_MESSAGES = 1000;

    explicit MessageLogPanel(QWidget *parent = nullptr);
    ~MessageLogPanel() override;

    /// `level` is one of _MESSAGE_LOG_LEVEL_; an empty `camera` is the client itself. Line ends in the text become
    /// blanks: one message is one line.
    void addMessage(int level, const QString &camera, const QString &text);

    /// Off where something else names the panel.
    void setTitleVisible(bool visible);

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Line
    {
        QTime time;
        int level;
        QString camera;
        QString text;
    };

    void retranslate();
    void show(const Line &line);

    CustomLabel *m_pTitle;
    QPlainTextEdit *m_pText;
    QQueue<Line> m_lines;
};
