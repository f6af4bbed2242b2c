#include "ControlKit/CustomPushButton.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace {

constexpr int CLICK_PAUSE_MS = 300;

qint64 now()
{
    static const QElapsedTimer s_clock = [] {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }();
    return s_clock.elapsed();
}

bool isClickKey(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Space || event->key() == Qt::Key_Select
        || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

} // namespace

CustomPushButton::CustomPushButton(int style, QWidget *parent)
    : QPushButton(parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
}

CustomPushButton::CustomPushButton(int style, const QString &text, QWidget *parent)
    : QPushButton(text, parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
}

CustomPushButton::~CustomPushButton() = default;

void CustomPushButton::cSetIcon(const QString &path, Custom::ItemStatus status)
{
    if (path.isEmpty()) {
        m_iconPaths.remove(status);
    } else {
        m_iconPaths.insert(status, path);
    }
    if (status == Custom::STATUS_NORMAL) {
        setIcon(path.isEmpty() ? QIcon() : QIcon(path));
    }
    update();
}

QString CustomPushButton::cIconPath(Custom::ItemStatus status) const
{
    return m_iconPaths.value(status, m_iconPaths.value(Custom::STATUS_NORMAL));
}

void CustomPushButton::cSetIconAlign(Qt::Alignment alignment, const QSize &size)
{
    m_iconAlign = alignment;
    setIconSize(size);
    update();
}

void CustomPushButton::cSetControlClickEvent(int mode)
{
    m_nClickMode = mode;
}

bool CustomPushButton::isTooSoon() const
{
    return m_nClickMode == 1 && m_nLastClick >= 0 && now() - m_nLastClick < CLICK_PAUSE_MS;
}

void CustomPushButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}

void CustomPushButton::mousePressEvent(QMouseEvent *event)
{
    // The second press of a double click arrives as a press too, at any interval that the desktop allows.
    if (isTooSoon() || (m_nClickMode == 1 && event->type() == QEvent::MouseButtonDblClick)) {
        event->accept();
        return;
    }
    QPushButton::mousePressEvent(event);
}

// The time is taken after the click: what it runs may block, and presses that waited meanwhile are not new ones.
void CustomPushButton::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointer<CustomPushButton> guard(this);
    const bool clicks = isDown();
    QPushButton::mouseReleaseEvent(event);
    if (guard && clicks) {
        m_nLastClick = now();
    }
}

void CustomPushButton::keyPressEvent(QKeyEvent *event)
{
    if (isClickKey(event) && isTooSoon()) {
        event->accept();
        return;
    }
    const QPointer<CustomPushButton> guard(this);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QPushButton::keyPressEvent(event);
    if (guard && enter && event->isAccepted()) {
        m_nLastClick = now();
    }
}

void CustomPushButton::keyReleaseEvent(QKeyEvent *event)
{
    const QPointer<CustomPushButton> guard(this);
    const bool clicks = isDown() && !event->isAutoRepeat() && isClickKey(event);
    QPushButton::keyReleaseEvent(event);
    if (guard && clicks) {
        m_nLastClick = now();
    }
}
