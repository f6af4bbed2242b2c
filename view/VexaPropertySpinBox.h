#pragma once

#include "ControlKit/CustomSpinBox.h"

/// Spin box for the value of an Integer node. Its value lies on the grid of the node's increment (GenICam Inc) that
/// starts at the minimum. GUI thread.
class VexaPropertySpinBox : public CustomSpinBox
{
    Q_OBJECT
public:
    explicit VexaPropertySpinBox(QWidget *parent = nullptr);

    /// Range and step; a step below 1 counts as 1.
    void setLimits(int nMinimum, int nMaximum, qint64 nStep);
    /// Sets the value, rounded down to the grid, and takes it as accepted.
    void snapValue(int nValue);
    int lastAcceptedValue() const { return m_nLastAccepted; }
    /// Shows this text in place of the value: a value that the box cannot hold, or none. A number that the user types,
    /// and any other change of the value, ends it.
    void showText(const QString &strText);
    /// The user has set a value since the last refill, other than the accepted one.
    bool isChanged() const;
    /// Back to what the last refill showed.
    void rollback();

protected:
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QString textFromValue(int nValue) const override;
    int valueFromText(const QString &strText) const override;
    QValidator::State validate(QString &strInput, int &nPosition) const override;

private:
    /// The value on the grid, rounded down, inside the limits.
    int snapped(int nValue) const;
    void updateToolTip();
    void onTextEdited(const QString &strText);
    bool takeBackRefused();
    void showLimits();

    int m_nLastAccepted = -1;
    bool m_bOwnText = false;
    bool m_bOwnTextReplaced = false; ///< by a number that the user typed
    QString m_strOwnText;
};
