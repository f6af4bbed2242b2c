#include "editors/VexaPropFocusStepWidget.h"

#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomPushButton.h"
#include "editors/EditorHost.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CustomItemValues.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QKeyEvent>
#include <QPointer>

VexaPropFocusStepWidget::VexaPropFocusStepWidget(CTreeHorSpinBoxItemValue *value, QWidget *parent)
    : VexaHorSpinBox(parent)
    , m_pValue(value)
{
    m_pEdit->setAccessibleName(value->m_strDisplayName);
    m_pEdit->clear(); // until the integer has been read
    connect(this, &VexaHorSpinBox::SigValueTyped, this, &VexaPropFocusStepWidget::onTyped);
}

void VexaPropFocusStepWidget::refill()
{
    if (!m_pValue->m_pIntegerItem) {
        return;
    }
    setLocked(m_pValue->m_nValue != 0);
    setStep(m_pValue->m_nStep);
    const std::unique_ptr<CTreeItemValue> snapshot = m_pValue->m_pIntegerItem->valueSnapshot();
    const auto *const pInteger = dynamic_cast<const CTreeIntergerItemValue *>(snapshot.get());
    if (pInteger && m_pValue->m_pIntegerItem->isValueCached()) {
        setRange(pInteger->m_nMinValue, pInteger->m_nMaxValue);
        setValue(pInteger->m_nValue);
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
