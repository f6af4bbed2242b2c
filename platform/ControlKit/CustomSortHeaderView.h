#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QHeaderView>

/// A header with the client's look.
class CONTROLKIT_API CustomSortHeaderView : public QHeaderView, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomSortHeaderView(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CustomSortHeaderView() override;

protected:
    void changeEvent(QEvent *event) override;
};
