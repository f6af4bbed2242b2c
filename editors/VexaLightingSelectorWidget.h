#pragma once

#include "ControlKit/CustomWidget.h"

class CLightingSelectorInterWidget;
class CustomCheckBox;
class CustomPushButton;
class VexaPropertyTreeItem;

/// Editor of a light of several segments: its picture, and beside it what switches all of them. GUI thread.
class VexaLightingSelectorWidget : public CustomWidget
{
    Q_OBJECT
public:
    /// `item` is the row. Editor and row go before the items that its value names.
    VexaLightingSelectorWidget(VexaPropertyTreeItem *item, QWidget *parent);

    /// Takes over what the row's value names now.
    void refill();
    CLightingSelectorInterWidget *picture() const { return m_pPicture; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void updateControls();
    void retranslate();

    CLightingSelectorInterWidget *m_pPicture;
    CustomCheckBox *m_pAllCheck;
    CustomPushButton *m_pAllOnButton;
    CustomPushButton *m_pAllOffButton;
};
