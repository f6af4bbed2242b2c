#include "host/workbench/DeviceStateBanner.h"

#include "ControlKit/CustomLabel.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QAccessible>
#include <QEvent>
#include <QIcon>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int STRIPE_WIDTH = 4;
constexpr QRect ICON{16, 12, 20, 20};
constexpr int TEXT_LEFT = 48;

struct TroubleRow
{
    DeviceStateBanner::Trouble trouble;
    const char *titleKey;
    const char *textKey; ///< %1: since when, %2: how many seconds a lost device is waited for
    const char *icon;
    const char *stripe;
    const char *background;
};

const TroubleRow &rowOf(DeviceStateBanner::Trouble trouble)
{
    using Trouble = DeviceStateBanner::Trouble;
    static const TroubleRow TABLE[] = {
        {Trouble::NotResponding, "lang_workbench_banner_notresponding",
         "lang_workbench_banner_notresponding_text", ":/ControlKit/icons/hint_notice.svg",
         "#F7A600", "#4A4231"},
        {Trouble::Lost, "lang_workbench_banner_lost", "lang_workbench_banner_lost_text",
         ":/ControlKit/icons/hint_failure.svg", "#E5484D", "#4B3537"},
        {Trouble::Gone, "lang_workbench_banner_gone", "lang_workbench_banner_gone_text",
         ":/ControlKit/icons/hint_failure.svg", "#E5484D", "#4B3537"},
        {Trouble::ReadOnly, "lang_workbench_banner_readonly", "lang_workbench_banner_readonly_text",
         ":/ControlKit/icons/hint_advice.svg", "#4A90D9", "#34424F"}};
    for (const TroubleRow &row : TABLE) {
        if (row.trouble == trouble) {
            return row;
        }
    }
    return TABLE[0];
}

QString momentText(const QDateTime &moment)
{
    return moment.date() == QDate::currentDate()
        ? moment.toString(QStringLiteral("HH:mm:ss"))
        : moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace

DeviceStateBanner::DeviceStateBanner(QWidget *parent)
    : CustomWidget(parent)
    , m_pTitle(new CustomLabel(this))
    , m_pText(new CustomLabel(this))
{
    setObjectName(QStringLiteral("DeviceStateBanner"));
    m_pTitle->setObjectName(QStringLiteral("DeviceStateTitle"));
    m_pText->setObjectName(QStringLiteral("DeviceStateText"));
    QFont bold = m_pTitle->font();
    bold.setBold(true);
    m_pTitle->setFont(bold);
    m_pTitle->cSetFontSize(14);
    m_pTitle->cSetFontColor(QColor(QStringLiteral("#F2F2F2")));
    m_pText->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(TEXT_LEFT, 8, 16, 8);
    column->setSpacing(2);
    column->addWidget(m_pTitle);
    column->addWidget(m_pText);
    hide();
}

DeviceStateBanner::~DeviceStateBanner() = default;

void DeviceStateBanner::setTrouble(Trouble trouble, const QDateTime &since,
                                   std::chrono::milliseconds returnTime)
{
    if (m_trouble == trouble && m_since == since) {
        return;
    }
    m_trouble = trouble;
    m_since = since;
    m_returnTime = returnTime;
    setVisible(trouble != Trouble::None);
    if (trouble != Trouble::None) {
        cSetBackgroundColor(QColor(QLatin1String(rowOf(trouble).background)));
        retranslate();
        // Nobody looks at a bar that he cannot see: a screen reader says it.
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void DeviceStateBanner::retranslate()
{
    if (m_trouble == Trouble::None) {
        return;
    }
    const TroubleRow &row = rowOf(m_trouble);
    QString text = workbenchText(row.textKey).arg(momentText(m_since));
    if (m_trouble == Trouble::Lost) {
        text = text.arg(std::chrono::duration<double>(m_returnTime).count());
    }
    m_pTitle->setText(workbenchText(row.titleKey));
    m_pText->setText(text);
    setAccessibleName(m_pTitle->text());
    setAccessibleDescription(text);
    update();
}

void DeviceStateBanner::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    CustomWidget::changeEvent(event);
}

void DeviceStateBanner::paintEvent(QPaintEvent *event)
{
    CustomWidget::paintEvent(event);
    const TroubleRow &row = rowOf(m_trouble);
    QPainter painter(this);
    painter.fillRect(0, 0, STRIPE_WIDTH, height(), QColor(QLatin1String(row.stripe)));
    QIcon(QLatin1String(row.icon)).paint(&painter, ICON);
}
