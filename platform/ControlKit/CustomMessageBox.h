#pragma once

#include "ControlKit/CustomMainWindow.h"

/// A message box. The static forms block and answer 1 for yes or OK and 0 otherwise; they run an event loop, so
/// the caller guards what it touches afterwards. GUI thread.
class CONTROLKIT_API CustomMessageBox : public CustomMainWindow
{
    Q_OBJECT
public:
    explicit CustomMessageBox(QWidget *parent = nullptr);
    ~CustomMessageBox() override;

    /// `buttons`: 1 OK, 2 cancel, 3 yes and no. `checkText`: text of a check box, none when empty.
    static int ask(QWidget *parent, const QString &text, const QString &title, int buttons = 3,
                   const QString &checkText = QString(), bool *checked = nullptr);
    static int warning(QWidget *parent, const QString &text, const QString &title, int buttons = 1,
                       const QString &checkText = QString());
    static int information(QWidget *parent, const QString &text, const QString &title,
                           int buttons = 1, const QString &checkText = QString());

    void cSetButtons(int buttons);
    void cSetOpenExternalLinks(bool open);
    /// Rich text when it holds markup.
    void cSetContent(const QString &content);
    void cSetTextTitle(const QString &title);
    /// Icon: 1 advice, 2 notice, 3 failure, 4 question, 5 success.
    void cSetHintStyle(int style);
    /// Lays the box out; call it after the setters.
    void cEndSetParameter();
    QString cContent() const;
    QString cTextTitle() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    static int run(int hintStyle, QWidget *parent, const QString &text, const QString &title,
                   int buttons, const QString &checkText, bool *checked);

    class Private;
    std::unique_ptr<Private> d;
};
