#include "editors/VexaPropFocusStepWidget.h"

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomPushButton.h"
#include "editors/EditorHost.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CustomItemValues.h"
#include "model/ItemLocks.h"
#include "tree/VexaFeatureTree.h"

#include <QKeyEvent>
#include <QPointer>

VexaPropFocusStepWidget::VexaPropFocusStepWidget(CTreeHorSpinBoxItemValue *value, QWidget *parent)
    : VexaHorSpinBox(parent)
    , m_pValue(value)
{
    m_pEdit->setAccessibleName(value->m_strDisplayName);
    connect(this, &VexaHorSpinBox::SigValueTyped, this, &VexaPropFocusStepWidget::onTyped);
}

void VexaPropFocusStepWidget::refill()
{
    if (!m_pValue->m_pIntegerItem) {
        return;
    }
    const bool bLocked = m_pValue->m_nValue != 0;
    setButtonsEnabled(!bLocked);
    {
        qint64 limits[2] = {};
        qint64 nValue = 0;
        {
            const ItemLock lock(m_pValue->m_pIntegerItem);
            const auto *const pInteger =
                dynamic_cast<const CTreeIntergerItemValue *>(m_pValue->m_pIntegerItem->value());
            if (!pInteger) {
                return;
            }
            limits[0] = pInteger->m_nMinValue;
            limits[1] = pInteger->m_nMaxValue;
            nValue = pInteger->m_nValue;
        }
        setRange(limits[0], limits[1]);
        setValue(nValue);
    }
    setStep(m_pValue->m_nStep);
    if (bLocked) {
        setButtonsEnabled(false); // the range opened them
    }
}

void VexaPropFocusStepWidget::OnMinusClicked()
{
    if (m_pValue->m_pMinusItem) {
        VexaHorSpinBox::OnMinusClicked();
        write(m_pValue->m_pMinusItem, false);
    }
}

void VexaPropFocusStepWidget::OnPlusClicked()
{
    if (m_pValue->m_pPlusItem) {
        VexaHorSpinBox::OnPlusClicked();
        write(m_pValue->m_pPlusItem, false);
    }
}

void VexaPropFocusStepWidget::onTyped()
{
    if (m_pValue->m_pIntegerItem) {
        write(m_pValue->m_pIntegerItem, value());
    }
}

void VexaPropFocusStepWidget::write(VexaPropertyTreeItem *item, const QVariant &value)
{
    const QPointer<VexaPropFocusStepWidget> guard(this);
    EditorHost::markCameraModified();
    VexaFeatureTree *const pTree = EditorHost::featureTree(m_pValue->m_nCameraID);
    const bool bWritten = pTree && pTree->setFeatureValue(item, value, true, false);
    // The row may have gone meanwhile; its editor is hidden then, and deleted later.
    if (guard && !isHidden() && !bWritten) {
        refill();
    }
}

void VexaPropFocusStepWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isTyping()) {
        showValue();
        event->accept();
    } else {
        VexaHorSpinBox::keyPressEvent(event);
    }
}
