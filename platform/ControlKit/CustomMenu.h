#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QMenu>

/// A menu with the client's look.
class CONTROLKIT_API CustomMenu : public QMenu, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomMenu(QWidget *parent = nullptr);
    ~CustomMenu() override;

protected:
    void changeEvent(QEvent *event) override;
};
