#pragma once

#include "ControlKit/CustomWidget.h"

class CustomLabel;

/// Takes the place of the name of a few rows: a short text and a notice icon whose tool tip warns about the setting.
/// It has no value and emits nothing.
class QCustomReverseHintWidget : public CustomWidget
{
    Q_OBJECT
public:
    /// `kind` is one of the hint rows, 0 to 8; any other shows nothing.
    QCustomReverseHintWidget(QWidget *parent, int kind);

    /// Texts for "CH" or any other language.
    void setLanguage(const QString &language);

protected:
    void changeEvent(QEvent *event) override;

private:
    void translateTexts();

    CustomLabel *iconLabel;
    CustomLabel *textLabel;
    int kind;
};
