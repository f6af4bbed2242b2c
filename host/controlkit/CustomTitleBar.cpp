#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomMainWindow.h"
#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QToolButton>
#include <QWindow>

namespace {

constexpr int BUTTON_SIZE = 28;
constexpr int ICON_SIZE = 16;
constexpr int SIDE_MARGIN = 14;
constexpr int TITLE_SIZE = 14;

struct ControlRow
{
    int bit;
    const char *icon;
    const char *textKey;
};

const ControlRow CONTROLS[] = {
    {CustomTitleBar::MINIMISE, "minimise",
     QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_minimise")},
    {CustomTitleBar::MAXIMISE, "maximise",
     QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_maximise")},
    {CustomTitleBar::CLOSE, "close", QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_close")},
};

} // namespace

class CustomTitleBar::Private
{
public:
    QToolButton *button(int bit) const { return buttons.value(bit); }
    void translate()
    {
        for (const ControlRow &row : CONTROLS) {
            const QString text = QCoreApplication::translate("ControlKit", row.textKey);
            button(row.bit)->setToolTip(text);
            button(row.bit)->setAccessibleName(text);
        }
    }

    CustomLabel *pTitle = nullptr;
    QMap<int, QToolButton *> buttons;
    QPoint grabbed; ///< where the window was taken hold of, relative to its corner
    bool bDragging = false;
};

namespace {

void toggleMaximised(QWidget *window)
{
    window->setWindowState(window->windowState() ^ Qt::WindowMaximized);
}

} // namespace

CustomTitleBar::CustomTitleBar(QWidget *parent)
    : CustomWidget(parent)
    , d(std::make_unique<Private>())
{
    setMinimumHeight(HEIGHT);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    cSetBackgroundColor(KitColour::of(KitColour::WINDOW_DARK));
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(SIDE_MARGIN, 0, 6, 0);
    layout->setSpacing(2);
    d->pTitle = new CustomLabel(this);
    d->pTitle->cSetFontSize(TITLE_SIZE);
    d->pTitle->cSetFontColor(KitColour::of(KitColour::TEXT_BRIGHT));
    d->pTitle->setTextFormat(Qt::PlainText);
    layout->addWidget(d->pTitle, 1);
    for (const ControlRow &row : CONTROLS) {
        auto *const button = new QToolButton(this);
        button->setAutoRaise(true);
        button->setFixedSize(BUTTON_SIZE, BUTTON_SIZE);
        button->setIconSize(QSize(ICON_SIZE, ICON_SIZE));
        button->setIcon(QIcon(KitIcons::path(row.icon)));
        button->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(button);
        d->buttons.insert(row.bit, button);
    }
    connect(d->button(MINIMISE), &QToolButton::clicked, this,
            [this] { window()->showMinimized(); });
    connect(d->button(MAXIMISE), &QToolButton::clicked, this,
            [this] { toggleMaximised(window()); });
    connect(d->button(CLOSE), &QToolButton::clicked, this, &CustomTitleBar::closeClicked);
    d->translate();
    cSetTitleControls(CLOSE);
}

CustomTitleBar::~CustomTitleBar() = default;

void CustomTitleBar::cSetTitleText(const QString &text)
{
    d->pTitle->setText(text);
}

void CustomTitleBar::cSetTitleControls(int controls)
{
    for (const ControlRow &row : CONTROLS) {
        d->button(row.bit)->setVisible(controls & row.bit);
    }
}

void CustomTitleBar::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        d->translate();
    }
}

void CustomTitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !d->button(MAXIMISE)->isHidden()) {
        toggleMaximised(window());
    }
    event->accept();
}

void CustomTitleBar::mousePressEvent(QMouseEvent *event)
{
    d->bDragging = false;
    if (event->button() != Qt::LeftButton || window()->isMaximized()) {
        event->ignore();
        return;
    }
    event->accept();
    // Where the window system moves windows itself, it does so with its own snapping.
    QWindow *const handle = window()->windowHandle();
    if (!handle || !handle->startSystemMove()) {
        d->bDragging = true;
        d->grabbed = event->globalPos() - window()->pos();
    }
}

void CustomTitleBar::mouseMoveEvent(QMouseEvent *event)
{
    if (d->bDragging && event->buttons() & Qt::LeftButton) {
        window()->move(event->globalPos() - d->grabbed);
    }
    event->accept();
}
