#pragma once

#include "ControlKit/CustomWidget.h"

class CustomComboBox;
class CustomLabel;
class CustomPushButton;
class QTreeWidget;
class QTreeWidgetItem;

/// The devices at the left of the window, with what can be done to the selected one, and the language of the program.
/// It shows and asks; the window acts.
class DeviceListPanel : public CustomWidget
{
    Q_OBJECT
public:
    /// What the list says of a device.
    enum class DeviceState {
        Available,
        Opening,
        Open,
        Starting,
        Grabbing,
        Stopping,
        ReadOnly,
        NotResponding,
        Lost,
        Gone ///< lost, and no longer waited for
    };
    /// Devices stand under a heading each, in this order.
    enum class DeviceGroup { Simulated, Gige, Usb3 };

    explicit DeviceListPanel(QWidget *parent = nullptr);
    ~DeviceListPanel() override;

    void addDevice(DeviceGroup group, const QString &id, const QString &transport,
                   const QString &model);
    void setDeviceState(const QString &id, DeviceState state);
    /// The name that an open camera gives itself, below its id; empty for none. `modified` marks a camera whose
    /// settings were changed and not saved.
    void setDeviceName(const QString &id, const QString &name, bool modified);
    QString currentDevice() const;
    /// Shows "ENG" or "CH" without a signal.
    void setLanguage(const QString &language);
    /// While a search for devices is under way, another one cannot be asked for.
    void setSearching(bool searching);

signals:
    void discoverRequested();
    void openRequested(QString id);
    void closeRequested(QString id);
    void startRequested(QString id);
    void stopRequested(QString id);
    void deviceSelected(QString id);
    void languageChosen(QString language);

protected:
    void changeEvent(QEvent *event) override;

private:
    CustomPushButton *makeButton(const char *objectName, void (DeviceListPanel::*request)(QString));
    int endOfGroup(DeviceGroup group);
    QTreeWidgetItem *itemOf(const QString &id) const;
    void fitStateColumn();
    void retranslate();
    void updateButtons();
    /// A button that had the focus leaves it to the list.
    void enable(CustomPushButton *button, bool possible);

    CustomLabel *m_pTitle;
    QTreeWidget *m_pList;
    CustomPushButton *m_pDiscoverButton;
    CustomPushButton *m_pOpenButton;
    CustomPushButton *m_pCloseButton;
    CustomPushButton *m_pStartButton;
    CustomPushButton *m_pStopButton;
    CustomLabel *m_pLanguageTitle;
    CustomComboBox *m_pLanguageCombo;
    bool m_bSearching = false;
};
