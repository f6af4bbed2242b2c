// The picture of a light as the user sees and handles it: mouse, keys, painting and its words.

#include "editors/CLightingSelectorInterWidget.h"
#include "editors/VectorPicture.h"
#include "model/CTreeItemValue.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"

#include <QCoreApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QTimerEvent>

namespace {

constexpr int HOVER_PERIOD_MS = 100;
constexpr double DIMMED = 0.4; // opacity of an editor that takes no input

} // namespace

void CLightingSelectorInterWidget::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_hoverTimer.timerId()) {
        CustomWidget::timerEvent(event);
        return;
    }
    const quint32 nBit = LightingLayout::of(m_light.type()).bitAt(mapFromGlobal(QCursor::pos()));
    if (nBit != m_nHoverBit) {
        m_nHoverBit = nBit;
        update();
    }
}

void CLightingSelectorInterWidget::enterEvent(QEvent *event)
{
    m_hoverTimer.start(HOVER_PERIOD_MS, this);
    CustomWidget::enterEvent(event);
}

void CLightingSelectorInterWidget::leaveEvent(QEvent *event)
{
    m_nHoverBit = 0;
    m_hoverTimer.stop();
    update();
    CustomWidget::leaveEvent(event);
}

void CLightingSelectorInterWidget::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointer<CLightingSelectorInterWidget> guard(this);
    const quint32 nBit = event->button() == Qt::LeftButton
        ? LightingLayout::of(m_light.type()).bitAt(event->pos())
        : 0;
    if (nBit != 0) {
        m_nKeyBit = nBit;
        toggle(nBit);
    }
    if (guard) {
        CustomWidget::mouseReleaseEvent(event);
    }
}

void CLightingSelectorInterWidget::keyPressEvent(QKeyEvent *event)
{
    static const struct
    {
        int nKey;
        QPoint direction;
    } arrows[] = {{Qt::Key_Left, {-1, 0}},
                  {Qt::Key_Right, {1, 0}},
                  {Qt::Key_Up, {0, -1}},
                  {Qt::Key_Down, {0, 1}}};
    if (event->modifiers() & ~Qt::KeypadModifier) {
        CustomWidget::keyPressEvent(event);
        return;
    }
    for (const auto &arrow : arrows) {
        if (event->key() == arrow.nKey) {
            m_nKeyBit = LightingLayout::of(m_light.type()).neighbour(m_nKeyBit, arrow.direction);
            window()->setAttribute(
                Qt::WA_KeyboardFocusChange); // the frame shows also after a click
            nameForReaders();
            update();
            return;
        }
    }
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return
        || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            toggle(m_nKeyBit);
        }
        return;
    }
    CustomWidget::keyPressEvent(event);
}

void CLightingSelectorInterWidget::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        update();
    } else if (event->type() == QEvent::LanguageChange) {
        nameForReaders();
    }
}

void CLightingSelectorInterWidget::paintEvent(QPaintEvent *event)
{
    CustomWidget::paintEvent(event);
    const LightingLayout &layout = LightingLayout::of(m_light.type());
    const qreal dRatio = devicePixelRatioF();
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1.0 : DIMMED);
    painter.drawPixmap(0, 0, VectorPicture::pixmap(layout.background(), size(), dRatio));
    for (auto it = layout.rectangles().cbegin(); it != layout.rectangles().cend(); ++it) {
        const LightingLayout::State eState = m_nMask & it.key() ? LightingLayout::STATE_ON
            : it.key() == m_nHoverBit                           ? LightingLayout::STATE_HOVER
                                                                : LightingLayout::STATE_OFF;
        painter.drawPixmap(
            it->topLeft(),
            VectorPicture::pixmap(layout.picture(it.key(), eState), it->size(), dRatio));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = layout.rectangles().value(m_nKeyBit);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void CLightingSelectorInterWidget::takeRowName()
{
    const ItemLock lock(m_pItem);
    if (m_pItem->value()) {
        setAccessibleName(m_pItem->value()->displayName());
    }
}

void CLightingSelectorInterWidget::nameForReaders()
{
    const char *const pKey = m_nMask & m_nKeyBit
        ? QT_TRANSLATE_NOOP("QLightingSelectorWidget", "lang_qlightingselectorwidget_segmenton")
        : QT_TRANSLATE_NOOP("QLightingSelectorWidget", "lang_qlightingselectorwidget_segmentoff");
    setAccessibleDescription(QCoreApplication::translate("QLightingSelectorWidget", pKey)
                                 .arg(m_light.entryName(m_nKeyBit)));
}
