#include "host/controlkit/CalendarPopup.h"

#include "ControlKit/CustomPushButton.h"
#include "UtilityKit/VexaInterface.h"
#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QTextCharFormat>
#include <QTimeEdit>
#include <QVBoxLayout>

namespace {

constexpr int MARGIN = 8;
constexpr int ACCENT_STYLE = 1;

} // namespace

CalendarPopup::CalendarPopup(QWidget *parent)
    : QFrame(parent, Qt::Popup)
    , m_pCalendar(new QCalendarWidget(this))
    , m_pTime(new QTimeEdit(this))
    , m_pButton(new CustomPushButton(ACCENT_STYLE, this))
    , m_border(KitColour::of(KitColour::FRAME))
{
    m_pCalendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_pCalendar->setGridVisible(false);
    for (const Qt::DayOfWeek weekend : {Qt::Saturday, Qt::Sunday}) {
        m_pCalendar->setWeekdayTextFormat(weekend, QTextCharFormat()); // Qt's is red
    }
    // Qt paints the bar with the month in the colour of selections.
    if (auto *const bar =
            m_pCalendar->findChild<QWidget *>(QStringLiteral("qt_calendar_navigationbar"))) {
        QPalette palette = bar->palette();
        palette.setColor(QPalette::Highlight, KitColour::of(KitColour::WINDOW_DARK));
        palette.setColor(QPalette::HighlightedText, KitColour::of(KitColour::TEXT_BRIGHT));
        bar->setPalette(palette);
    }
    QTextCharFormat header;
    header.setForeground(KitColour::of(KitColour::TEXT_HINT));
    header.setBackground(KitColour::of(KitColour::WINDOW_DARK));
    m_pCalendar->setHeaderTextFormat(header);
    m_pTime->setDisplayFormat(QStringLiteral("HH:mm:ss"));

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    layout->setSpacing(MARGIN);
    layout->addWidget(m_pCalendar);
    auto *const row = new QHBoxLayout;
    row->addWidget(m_pTime, 1);
    row->addWidget(m_pButton);
    layout->addLayout(row);
    connect(m_pButton, &QPushButton::clicked, this, &CalendarPopup::choose);
    connect(m_pCalendar, &QCalendarWidget::activated, this, &CalendarPopup::choose);
    translate();
}

CalendarPopup::~CalendarPopup() = default;

void CalendarPopup::open(const QWidget *anchor, const QDateTime &dateTime)
{
    m_pCalendar->setSelectedDate(dateTime.date());
    m_pTime->setTime(dateTime.time());
    adjustSize();
    const QRect area = anchor->screen()->availableGeometry();
    QPoint corner = anchor->mapToGlobal(QPoint(0, anchor->height()));
    if (corner.y() + height() > area.bottom()) {
        corner.setY(anchor->mapToGlobal(QPoint(0, 0)).y() - height());
    }
    corner.setX(qBound(area.left(), corner.x(), qMax(area.left(), area.right() - width())));
    corner.setY(qMax(area.top(), corner.y()));
    move(corner);
    show();
    m_pCalendar->setFocus();
}

void CalendarPopup::setBorder(const QColor &colour, int width)
{
    m_border = colour.isValid() ? colour : KitColour::of(KitColour::FRAME);
    m_nBorderWidth = width >= 0 ? width : 1;
    update();
}

void CalendarPopup::choose()
{
    hide();
    emit chosen(QDateTime(m_pCalendar->selectedDate(), m_pTime->time()));
}

void CalendarPopup::translate()
{
    m_pButton->setText(QCoreApplication::translate("ControlKit", "lang_controlkit_ok"));
    m_pTime->setAccessibleName(QCoreApplication::translate("ControlKit", "lang_controlkit_time"));
    m_pCalendar->setAccessibleName(
        QCoreApplication::translate("ControlKit", "lang_controlkit_date"));
    const bool chinese = VexaInterface::language(false) == QLatin1String("CH");
    m_pCalendar->setLocale(chinese ? QLocale(QLocale::Chinese, QLocale::China)
                                   : QLocale(QLocale::English, QLocale::UnitedStates));
}

void CalendarPopup::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        translate();
    }
}

void CalendarPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        choose();
    } else if (event->key() == Qt::Key_Escape) {
        hide();
    } else {
        QFrame::keyPressEvent(event);
    }
}

void CalendarPopup::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    BoxLook look;
    look.background = KitColour::of(KitColour::WINDOW_DARK);
    look.border = m_border;
    look.borderWidth = m_nBorderWidth;
    look.radius = 0;
    BoxPainter::draw(&painter, rect(), look);
}
