#include "ShellServicesModule/VexaPropertyComboBox.h"

VexaPropertyComboBox::VexaPropertyComboBox(QWidget *parent)
    : CustomComboBox(2, 0, parent)
{
}

VexaPropertyComboBox::~VexaPropertyComboBox() = default;

void VexaPropertyComboBox::SetCurrentSel(const QVariant &data)
{
    const int nRow = findData(data);
    if (nRow >= 0) {
        setCurrentIndex(nRow);
    }
}
