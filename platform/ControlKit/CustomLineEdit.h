#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QLineEdit>

class QAction;

/// A line edit. Styles: 1 value of a feature, 2 plain.
class CONTROLKIT_API CustomLineEdit : public QLineEdit, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomLineEdit(int style = 2, QWidget *parent = nullptr);
    ~CustomLineEdit() override;

    int cStyle() const { return m_nStyle; }
    /// Shows a search button inside; it and Enter emit cSigSearchClicked.
    void cSetEnableSearchButton(bool enable);

Q_SIGNALS:
    void cSigSearchClicked();

protected:
    void changeEvent(QEvent *event) override;

private:
    void nameSearchAction();

    int m_nStyle;
    QAction *m_pSearchAction = nullptr;
};
