#pragma once

#include "ControlKit/CustomWidget.h"

#include <QDateTime>

#include <chrono>

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

    /// `returnTime`: how long a lost device is waited for.
    void setTrouble(Trouble trouble, const QDateTime &since, std::chrono::milliseconds returnTime);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void retranslate();

    CustomLabel *m_pTitle;
    CustomLabel *m_pText;
    Trouble m_trouble = Trouble::None;
    QDateTime m_since;
    std::chrono::milliseconds m_returnTime{0};
};
