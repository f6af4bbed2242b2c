#pragma once

#include "ControlKit/CustomWidget.h"

/// A separator, one pixel thick, in its background colour.
class CONTROLKIT_API CustomLineWidget : public CustomWidget
{
    Q_OBJECT
public:
    enum LineType { LINE_HORIZONTAL = 0, LINE_VERTICAL = 1 };
    explicit CustomLineWidget(QWidget *parent = nullptr);
    ~CustomLineWidget() override;
    void cSetLineType(LineType type);

protected:
    void paintEvent(QPaintEvent *event) override;
};
