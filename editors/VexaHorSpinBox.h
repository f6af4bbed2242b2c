#pragma once

#include "ControlKit/CustomWidget.h"

class CustomLineEdit;
class CustomPushButton;

/// A number between a minus and a plus button. GUI thread.
class VexaHorSpinBox : public CustomWidget
{
    Q_OBJECT
public:
    explicit VexaHorSpinBox(QWidget *parent = nullptr);

    /// Limits of the number, which goes to the nearer end when it lies outside. Ignored with `max` below `min`.
    void setRange(qint64 min, qint64 max);
    /// Shown as it is, even outside of the limits; no edit.
    void setValue(qint64 value);
    /// Size of one press.
    void setStep(qint64 step);
    qint64 value() const { return m_nValue; }
    /// Drops what is being typed.
    void giveUp();

    virtual void OnMinusClicked();
    virtual void OnPlusClicked();

Q_SIGNALS:
    /// The user has typed another number; value() is it, within the limits.
    void SigValueTyped();

protected:
    /// Shuts both buttons, whatever the limits say.
    void setLocked(bool locked);
    /// The user is typing, so that the text is not to change.
    bool isTyping() const;
    /// The number as text, in place of what was being typed.
    void showValue();

    CustomPushButton *m_pMinusButton;
    CustomPushButton *m_pPlusButton;
    CustomLineEdit *m_pEdit;
    qint64 m_nMinimum = 0;
    qint64 m_nMaximum = 1;
    qint64 m_nValue = 0;
    qint64 m_nStep = 1;
    bool m_bLocked = false;

private Q_SLOTS:
    void onEditingFinished();

private:
    void updateButtons();
    void moveTo(qint64 value);
};
