#pragma once

#include <QWidget>

class CustomPushButton;

/// Editor of a draw row: a button that turns drawing on and off. The host draws; the row only says what it is to do.
/// GUI thread.
class VexaFeatureDrawWidget : public QWidget
{
    Q_OBJECT
public:
    /// What the row stands for.
    enum State { STATE_OFF = -1, STATE_ON = 0, STATE_BATCH = 2 };

    explicit VexaFeatureDrawWidget(int nDrawType, QWidget *pParent = nullptr);

    int drawType() const { return m_nDrawType; }
    /// After the last click.
    int state() const { return m_nState; }
    void setButtonsEnabled(bool bEnabled);
    /// Shows drawing as on or off, without a signal.
    void setDrawActive(bool bActive);

Q_SIGNALS:
    /// A button was clicked; state() is the new one.
    void SigButtonClicked();

protected:
    void changeEvent(QEvent *event) override;

private:
    void onDrawClicked();
    void onBatchClicked();
    void retranslate();

    int m_nDrawType;
    int m_nState = STATE_OFF;
    CustomPushButton *m_pDrawButton;
    CustomPushButton *m_pBatchButton; ///< hidden
};
