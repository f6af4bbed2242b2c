#pragma once

#include "editors/VexaHorSpinBox.h"

class CTreeHorSpinBoxItemValue;
class VexaPropertyTreeItem;

/// Editor that drives a lens: each press of a button runs a command, the number shows where the focus stands. GUI
/// thread.
class VexaPropFocusStepWidget : public VexaHorSpinBox
{
    Q_OBJECT
public:
    /// `value` is that of the row and outlives the editor, as the items do that it names.
    VexaPropFocusStepWidget(CTreeHorSpinBoxItemValue *value, QWidget *parent);

    /// Shows the integer as the tree knows it; writes nothing.
    void refill();

    void OnMinusClicked() override;
    void OnPlusClicked() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void onTyped();
    /// Has the tree write; the number follows the item when that failed.
    void write(VexaPropertyTreeItem *item, const QVariant &value);

    CTreeHorSpinBoxItemValue *m_pValue;
};
