#pragma once

#include "ControlKit/CustomMainWindow.h"

#include <memory>

/// A hint that something was saved; it goes by itself. GUI thread.
class CONTROLKIT_API CustomSaveDoneHintDlg : public CustomMainWindow
{
    Q_OBJECT
public:
    /// `argument` names what was saved (a path, or "/select," and a path); a link opens its folder.
    CustomSaveDoneHintDlg(QWidget *parent, const QString &message, const QString &argument);
    ~CustomSaveDoneHintDlg() override;
    /// Sets the texts anew and how long the hint stays, in milliseconds.
    void SetMsgText(const QString &message, const QString &argument, bool showLink,
                    int displayTime);

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
