#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QCheckBox>

/// A check box. Styles: 2 box with text, 4 switch without text. Each stands in a button group of its own, which
/// keeps setChecked from searching all its siblings.
class CONTROLKIT_API CustomCheckBox : public QCheckBox, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomCheckBox(int style, QWidget *parent = nullptr);
    CustomCheckBox(int style, const QString &text, QWidget *parent = nullptr);
    ~CustomCheckBox() override;

    int cStyle() const { return m_nStyle; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The check state (Qt::CheckState) changed.
    void sigStateChanged(int state);

protected:
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool hitButton(const QPoint &pos) const override;

private:
    void init();

    int m_nStyle;
};
