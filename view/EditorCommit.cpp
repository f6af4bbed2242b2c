#include "view/EditorCommit.h"

#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "editors/VexaFeatureDrawWidget.h"
#include "editors/VexaHorSpinBox.h"
#include "editors/VexaStringFormatWidget.h"
#include "view/VexaPropertySpinBox.h"
#include "view/VexaPropertyTreeDelegate.h"

#include <QLocale>

namespace {

using Delegate = VexaPropertyTreeDelegate;

/// Calls `act` with each commit signal of the editor and the slot that it goes to.
template<typename Act>
void forEachSignal(QWidget *pEditor, Act act)
{
    if (auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(pEditor)) {
        act(pSpin, &CustomSpinBox::SigSaveParam, &Delegate::on_CommitData);
        act(pSpin, &QAbstractSpinBox::editingFinished, &Delegate::on_CommitData);
    } else if (auto *const pEdit = qobject_cast<QPropertyLineEdit *>(pEditor)) {
        act(pEdit, &QLineEdit::editingFinished, &Delegate::on_CommitData);
    } else if (auto *const pCombo = qobject_cast<CustomComboBox *>(pEditor)) {
        act(pCombo, QOverload<int>::of(&QComboBox::currentIndexChanged),
            &Delegate::on_CommitData_Combox);
    } else if (auto *const pCheck = qobject_cast<CustomCheckBox *>(pEditor)) {
        act(pCheck, &CustomCheckBox::sigStateChanged, &Delegate::on_CommitData_Combox);
    } else if (auto *const pButton = qobject_cast<CustomPushButton *>(pEditor)) {
        act(pButton, &QAbstractButton::clicked, &Delegate::on_CommitData);
    } else if (auto *const pCalendar = qobject_cast<CustomCalendar *>(pEditor)) {
        act(pCalendar, &CustomCalendar::SigRangedChanged, &Delegate::on_CommitData_Time);
    } else if (auto *const pDraw = qobject_cast<VexaFeatureDrawWidget *>(pEditor)) {
        act(pDraw, &VexaFeatureDrawWidget::SigButtonClicked, &Delegate::on_CommitData);
    }
}

} // namespace

void EditorCommit::connectSignals(QWidget *pEditor, const VexaPropertyTreeDelegate *pDelegate)
{
    forEachSignal(pEditor, [pDelegate](auto *pSender, auto signal, auto slot) {
        QObject::connect(pSender, signal, pDelegate, slot, Qt::UniqueConnection);
    });
}

void EditorCommit::disconnectSignals(QWidget *pEditor, const VexaPropertyTreeDelegate *pDelegate)
{
    forEachSignal(pEditor, [pDelegate](auto *pSender, auto signal, auto slot) {
        QObject::disconnect(pSender, signal, pDelegate, slot);
    });
}

bool EditorCommit::isChanged(const QWidget *pEditor, bool bRefillPutOff)
{
    if (const auto *const pEdit = qobject_cast<const QPropertyLineEdit *>(pEditor)) {
        return pEdit->IsChanged();
    }
    if (const auto *const pSpin = qobject_cast<const VexaPropertySpinBox *>(pEditor)) {
        // What was typed may be the former value, which the device has left meanwhile.
        return bRefillPutOff || pSpin->isChanged();
    }
    return true;
}

EditorCommit::Result EditorCommit::takeValue(QWidget *pEditor, const VexaPropertyTreeItem *pItem)
{
    Result result;
    result.bWrite = true;
    result.value = 0;
    if (auto *const pEdit = qobject_cast<QPropertyLineEdit *>(pEditor)) {
        if (!COMMONINTERFACE::isCanSetProperty() || !pEdit->SaveProperty(result.value)) {
            pEdit->Rollback();
            result.bWrite = false;
        }
    } else if (auto *const pCombo = qobject_cast<CustomComboBox *>(pEditor)) {
        if (pItem->tagName() == QLatin1String("Enumeration")) {
            const QVariant entry = pCombo->currentData();
            result.value = entry.isValid() ? entry : QVariant(0);
            result.bStartTimer = true;
        }
    } else if (auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(pEditor)) {
        if (!COMMONINTERFACE::isCanSetProperty()) {
            pSpin->rollback();
            result.bWrite = false;
        } else {
            pSpin->snapValue(pSpin->value());
            result.value = pSpin->value();
        }
    } else if (qobject_cast<CustomPushButton *>(pEditor)) {
        result.bStartTimer = true;
    } else if (const auto *const pDraw = qobject_cast<VexaFeatureDrawWidget *>(pEditor)) {
        if (pItem->tagName() == QLatin1String("CustomDrawFeatureTag")) {
            result.value = pDraw->state();
        }
    } else if (auto *const pCheck = qobject_cast<CustomCheckBox *>(pEditor)) {
        result.value = pCheck->isChecked();
    } else if (auto *const pCalendar = qobject_cast<CustomCalendar *>(pEditor)) {
        result.value = QLocale(QLocale::system().name())
                           .toString(pCalendar->cGetDateTime(), QString::fromLatin1(DATE_FORMAT));
    }
    return result;
}

void EditorCommit::rollback(QWidget *pEditor)
{
    if (auto *const pEdit = qobject_cast<QPropertyLineEdit *>(pEditor)) {
        pEdit->Rollback();
    } else if (auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(pEditor)) {
        pSpin->rollback();
    } else if (auto *const pFormat = qobject_cast<VexaStringFormatWidget *>(pEditor)) {
        pFormat->rollback();
    } else if (auto *const pStep = qobject_cast<VexaHorSpinBox *>(pEditor)) {
        pStep->giveUp();
    }
}

bool EditorCommit::hasUserText(const QWidget *pEditor)
{
    if (const auto *const pEdit = qobject_cast<const QPropertyLineEdit *>(pEditor)) {
        // The window's focus widget: a menu or another window on top ends no typing.
        return pEdit->isModified() && pEdit->window()->focusWidget() == pEdit;
    }
    if (const auto *const pCombo = qobject_cast<const CustomComboBox *>(pEditor)) {
        return pCombo->cIsPopupShown();
    }
    const auto *const pSpin = qobject_cast<const VexaPropertySpinBox *>(pEditor);
    return pSpin && pSpin->cHasUserText();
}
