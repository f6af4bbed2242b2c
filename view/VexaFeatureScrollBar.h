#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QScrollBar>

/// Vertical scroll bar of the feature tree. Presses reach the widgets around it as well.
class VexaFeatureScrollBar : public QScrollBar, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit VexaFeatureScrollBar(QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};
