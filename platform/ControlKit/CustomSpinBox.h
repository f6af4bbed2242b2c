#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QSpinBox>

/// A spin box. Style 2: value of a feature. A wheel turn without the focus changes nothing and
/// scrolls what is around it. A value counts when its text is committed, not while it is typed. A refill never
/// overwrites what the user is typing: cHasUserText tells that a typed text waits for its commit.
class CONTROLKIT_API CustomSpinBox : public QSpinBox, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomSpinBox(int style, QWidget *parent = nullptr);
    ~CustomSpinBox() override;

    int cStyle() const { return m_nStyle; }
    /// The inner line edit.
    QLineEdit *cInterLineEdit() const;
    /// True while the box has the focus and its text was typed and not yet committed or given up.
    bool cHasUserText() const;

Q_SIGNALS:
    /// The user stepped with the arrows, the wheel or the arrow keys.
    void SigSaveParam();

public:
    void stepBy(int steps) override;

protected:
    void changeEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int m_nStyle;
};
