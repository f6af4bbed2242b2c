#pragma once

#include "ControlKit/CustomComboBox.h"
#include "ShellServicesModule/ShellServicesModuleGlobal.h"

/// A combo box whose rows carry item data. GUI thread.
class SHELLSERVICESMODULE_API VexaPropertyComboBox : public CustomComboBox
{
    Q_OBJECT
public:
    explicit VexaPropertyComboBox(QWidget *parent = nullptr);
    ~VexaPropertyComboBox() override;
    /// Selects the row that holds this item data; without one the selection stays.
    void SetCurrentSel(const QVariant &data);
};
