#pragma once

#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomWidget.h"

#include <QDateTime>

#include <memory>

/// A button that shows a date and time and opens a calendar to choose them. Style 2: value of a feature.
class CONTROLKIT_API CustomCalendar : public CustomWidget
{
    Q_OBJECT
public:
    explicit CustomCalendar(int style, QWidget *parent = nullptr);
    ~CustomCalendar() override;

    /// Format of QDateTime::toString.
    void cSetDateFormat(const QString &format);
    QDateTime cGetDateTime() const;
    void cSetDateTime(const QDateTime &dateTime);
    /// The button; never null.
    CustomPushButton *cGetLargeButton() const;

Q_SIGNALS:
    /// The user chose another date or time.
    void SigRangedChanged();

protected:
    void cAttributesChanged() override;
    void changeEvent(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
