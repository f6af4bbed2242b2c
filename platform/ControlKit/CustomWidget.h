#pragma once

#include "ControlKit/CustomObject.h"

#include <QWidget>

/// A plain widget with style attributes: background colour, gradient or image, border.
class CONTROLKIT_API CustomWidget : public QWidget, public CustomObject
{
    Q_OBJECT
public:
    explicit CustomWidget(QWidget *parent = nullptr);
    ~CustomWidget() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
