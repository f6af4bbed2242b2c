#include "host/shellservices/RefusalMark.h"

#include <QTimer>
#include <QTimerEvent>
#include <QToolTip>
#include <QWidget>

namespace {
constexpr int kShowMs = 6000;
}

RefusalMark::RefusalMark(QWidget *widget, const QString &reason)
    : m_pWidget(widget)
    , m_strBubble(QLatin1String("<p style=\"white-space:pre\">") + reason.toHtmlEscaped()
                  + QLatin1String("</p>"))
    , m_strFormerDescription(widget->accessibleDescription())
{
    m_pWidget->setAccessibleDescription(reason);
    m_expiry.start(kShowMs, this);
    // The focus change that often brings the refusal would hide a bubble that is there already.
    QTimer::singleShot(0, this, &RefusalMark::showBubble);
}

RefusalMark::~RefusalMark()
{
    end();
}

void RefusalMark::end()
{
    if (!m_pWidget) {
        return;
    }
    m_pWidget->setAccessibleDescription(m_strFormerDescription);
    if (QToolTip::text() == m_strBubble) {
        QToolTip::hideText();
    }
    m_pWidget = nullptr;
}

void RefusalMark::showBubble()
{
    if (m_pWidget && m_pWidget->isVisible()) {
        QToolTip::showText(m_pWidget->mapToGlobal(m_pWidget->rect().bottomLeft()), m_strBubble,
                           m_pWidget, QRect(), kShowMs);
    }
}

void RefusalMark::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_expiry.timerId()) {
        m_expiry.stop();
        emit expired();
    }
}
