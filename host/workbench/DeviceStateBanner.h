#pragma once

#include "ControlKit/CustomWidget.h"

#include <QDateTime>

class CustomLabel;

/// The bar over the feature tree that tells what is wrong with the device on show, since when, and what the program
/// does about it. Hidden while nothing is wrong.
class DeviceStateBanner : public CustomWidget
{
    Q_OBJECT
public:
    enum class Trouble {
        None,
        NotResponding,
        Lost, ///< the program waits for the device
        Gone, ///< it waited in vain
        ReadOnly ///< another host controls the device
    };

    explicit DeviceStateBanner(QWidget *parent = nullptr);
    ~DeviceStateBanner() override;

    void setTrouble(Trouble trouble, const QDateTime &since);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void retranslate();

    CustomLabel *m_pTitle;
    CustomLabel *m_pText;
    Trouble m_trouble = Trouble::None;
    QDateTime m_since;
};
