#pragma once

#include <QDateTime>
#include <QFrame>

class CustomPushButton;
class QCalendarWidget;
class QTimeEdit;

/// What opens under a CustomCalendar: a month, a time and the button that takes both over.
class CalendarPopup : public QFrame
{
    Q_OBJECT
public:
    explicit CalendarPopup(QWidget *parent);
    ~CalendarPopup() override;

    /// Shows it under `anchor`, on the screen as a whole.
    void open(const QWidget *anchor, const QDateTime &dateTime);
    void setBorder(const QColor &colour, int width);

Q_SIGNALS:
    void chosen(const QDateTime &dateTime);

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void translate();
    void choose();

    QCalendarWidget *m_pCalendar;
    QTimeEdit *m_pTime;
    CustomPushButton *m_pButton;
    QColor m_border;
    int m_nBorderWidth = 1;
};
