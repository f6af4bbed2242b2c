#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

/// What an editor shows: its text, "on" or "off"; empty for any other widget.
inline QString shownText(const QWidget *pEditor)
{
    if (const auto *const pCheck = qobject_cast<const QCheckBox *>(pEditor)) {
        return pCheck->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    }
    if (const auto *const pCombo = qobject_cast<const QComboBox *>(pEditor)) {
        return pCombo->currentText();
    }
    if (const auto *const pSpin = qobject_cast<const QAbstractSpinBox *>(pEditor)) {
        return pSpin->text();
    }
    const auto *const pEdit = qobject_cast<const QLineEdit *>(pEditor);
    return pEdit ? pEdit->text() : QString();
}
