#include "ControlKit/CustomCheckBox.h"

#include "host/controlkit/StyleButtons.h"

#include <QButtonGroup>
#include <QEvent>

namespace {

constexpr int SWITCH_STYLE = 4;
constexpr int FOCUS_MARGIN = 4;

} // namespace

CustomCheckBox::CustomCheckBox(int style, QWidget *parent)
    : QCheckBox(parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
    init();
}

CustomCheckBox::CustomCheckBox(int style, const QString &text, QWidget *parent)
    : QCheckBox(text, parent)
    , CustomQssHelper(this)
    , m_nStyle(style)
{
    init();
}

CustomCheckBox::~CustomCheckBox() = default;

void CustomCheckBox::init()
{
    auto *const group = new QButtonGroup(this);
    group->setExclusive(false);
    group->addButton(this);
    connect(this, &QCheckBox::stateChanged, this, &CustomCheckBox::sigStateChanged);
}

QSize CustomCheckBox::sizeHint() const
{
    return m_nStyle == SWITCH_STYLE ? QSize(StyleButtons::SWITCH_WIDTH + FOCUS_MARGIN,
                                            StyleButtons::SWITCH_HEIGHT + FOCUS_MARGIN)
                                    : QCheckBox::sizeHint();
}

QSize CustomCheckBox::minimumSizeHint() const
{
    return m_nStyle == SWITCH_STYLE ? sizeHint() : QCheckBox::minimumSizeHint();
}

bool CustomCheckBox::hitButton(const QPoint &pos) const
{
    return m_nStyle == SWITCH_STYLE
        ? pos.x() >= 0 && pos.x() < sizeHint().width() && pos.y() >= 0 && pos.y() < height()
        : QCheckBox::hitButton(pos);
}

void CustomCheckBox::focusInEvent(QFocusEvent *event)
{
    // Qt gives the button of a group that has the focus the Tab key back, whatever its owner took from it.
    const Qt::FocusPolicy policy = focusPolicy();
    QCheckBox::focusInEvent(event);
    setFocusPolicy(policy);
}

void CustomCheckBox::changeEvent(QEvent *event)
{
    QCheckBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}
