#include "ControlKit/CustomCalendar.h"

#include "host/controlkit/CalendarPopup.h"
#include "host/controlkit/CustomObjectAttributes.h"
#include "host/controlkit/KitIcons.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>

namespace {

constexpr int ICON_SIZE = 16;

} // namespace

class CustomCalendar::Private
{
public:
    void show(CustomCalendar *calendar)
    {
        const QString text = dateTime.toString(strFormat);
        pButton->setText(text);
        pButton->setAccessibleName(
            calendar->accessibleName().isEmpty()
                ? QCoreApplication::translate("ControlKit", "lang_controlkit_date")
                    + QLatin1Char(' ') + text
                : calendar->accessibleName() + QLatin1Char(' ') + text);
    }

    CustomPushButton *pButton = nullptr;
    CalendarPopup *pPopup = nullptr; ///< made when it first opens
    QString strFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");
    QDateTime dateTime = QDateTime::currentDateTime();
};

CustomCalendar::CustomCalendar(int style, QWidget *parent)
    : CustomWidget(parent)
    , d(std::make_unique<Private>())
{
    d->pButton = new CustomPushButton(style, this);
    d->pButton->cSetIcon(KitIcons::path("calendar"));
    d->pButton->cSetIconAlign(Qt::AlignRight, QSize(ICON_SIZE, ICON_SIZE));
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->pButton);
    setFocusProxy(d->pButton);
    d->show(this);
    connect(d->pButton, &QPushButton::clicked, this, [this] {
        if (!d->pPopup) {
            d->pPopup = new CalendarPopup(this);
            cAttributesChanged();
            connect(d->pPopup, &CalendarPopup::chosen, this, [this](const QDateTime &dateTime) {
                cSetDateTime(dateTime);
                emit SigRangedChanged();
            });
        }
        d->pPopup->open(d->pButton, d->dateTime);
    });
}

CustomCalendar::~CustomCalendar() = default;

void CustomCalendar::cSetDateFormat(const QString &format)
{
    d->strFormat = format;
    d->show(this);
}

QDateTime CustomCalendar::cGetDateTime() const
{
    return d->dateTime;
}

void CustomCalendar::cSetDateTime(const QDateTime &dateTime)
{
    d->dateTime = dateTime;
    d->show(this);
}

CustomPushButton *CustomCalendar::cGetLargeButton() const
{
    return d->pButton;
}

void CustomCalendar::cAttributesChanged()
{
    const Attributes &attributes = cAttributes();
    for (const Custom::ItemStatus status : {Custom::STATUS_NORMAL, Custom::STATUS_HOVER,
                                            Custom::STATUS_PRESSED, Custom::STATUS_DISABLED}) {
        const Attributes::Border border = attributes.border(status, Custom::BORDER_LARGE_BUTTON);
        if (border.colour.isValid()) {
            d->pButton->cSetBorderColor(border.colour, status);
        }
        if (border.width >= 0) {
            d->pButton->cSetBorderWidth(border.width, status);
        }
    }
    if (d->pPopup) {
        const Attributes::Border border =
            attributes.border(Custom::STATUS_NORMAL, Custom::BORDER_POPUP);
        d->pPopup->setBorder(border.colour, border.width);
    }
}

void CustomCalendar::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        d->show(this);
    }
}
