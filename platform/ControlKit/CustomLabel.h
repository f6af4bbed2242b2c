#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QLabel>

/// A label with style attributes. Its text elides instead of being cut; the whole text is then the tool tip.
class CONTROLKIT_API CustomLabel : public QLabel, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomLabel(QWidget *parent = nullptr);
    explicit CustomLabel(const QString &text, QWidget *parent = nullptr);
    ~CustomLabel() override;

    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isElidable() const;
    QString shownText() const;
};
