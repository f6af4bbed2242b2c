#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QComboBox>

/// A combo box. Styles: 1 value of a feature, 2 plain. `mode` 0 selects from the list only, 1 lets the user type.
/// A wheel turn without the focus changes nothing and scrolls what is around it.
class CONTROLKIT_API CustomComboBox : public QComboBox, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomComboBox(int style = 2, int mode = 0, QWidget *parent = nullptr);
    ~CustomComboBox() override;

    int cStyle() const { return m_nStyle; }
    /// The list is as wide as its longest row, so that no text is cut.
    void showPopup() override;
    void hidePopup() override;
    /// The user has the list open: its rows are not to change under the mouse.
    bool cIsPopupShown() const;

Q_SIGNALS:
    /// The list was closed. A row that the user chose becomes the current one after it.
    void cSigPopupHidden();

protected:
    void changeEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int m_nStyle;
    bool m_bPopupShown = false;
};
