#include "ControlKit/CustomMainWindow.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/WindowStretch.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>

#include <array>

namespace {

constexpr int SHADOW = 10;
constexpr int BAR_MARGIN = 16;
constexpr int BUTTON_SPACING = 10;
constexpr int BUTTON_MIN_WIDTH = 84;
constexpr int ACCENT_STYLE = 1;
constexpr int PLAIN_STYLE = 2;

struct StandardRow
{
    int bit;
    const char *textKey;
    int style;
    int result; ///< of the dialog
};

const std::array<StandardRow, 2> STANDARD = {{
    {1, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_ok"), ACCENT_STYLE, QDialog::Accepted},
    {2, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_cancel"), PLAIN_STYLE, QDialog::Rejected},
}};

} // namespace

class CustomMainWindow::Private
{
public:
    explicit Private(CustomMainWindow *window)
        : stretch(window)
    {
    }

    void translate()
    {
        for (const StandardRow &row : STANDARD) {
            if (CustomPushButton *const button = standard.value(row.bit)) {
                button->setText(QCoreApplication::translate("ControlKit", row.textKey));
            }
        }
    }

    int shadow() const { return bShadow ? SHADOW : 0; }
    void applyMargins()
    {
        // The frame line, and beside it what the mouse takes hold of.
        const int frame = stretch.grips() != 0 ? WindowStretch::GRIP : 1;
        const int side = shadow() + frame;
        pLayout->setContentsMargins(side, shadow() + 1, side, side);
    }

    WindowStretch stretch;
    QVBoxLayout *pLayout = nullptr;
    CustomTitleBar *pTitleBar = nullptr;
    QWidget *pCentral = nullptr;
    QWidget *pButtonBar = nullptr;
    QHBoxLayout *pButtonLayout = nullptr;
    QMap<int, CustomPushButton *> standard; ///< by bit
    QList<CustomPushButton *> custom;
    bool bShadow = false;
};

CustomMainWindow::CustomMainWindow(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , CustomObject(this)
    , d(std::make_unique<Private>(this))
{
    setMouseTracking(true);
    d->pLayout = new QVBoxLayout(this);
    d->pLayout->setSpacing(0);
    d->pTitleBar = new CustomTitleBar(this);
    d->pLayout->addWidget(d->pTitleBar);
    d->pButtonBar = new QWidget(this);
    d->pButtonLayout = new QHBoxLayout(d->pButtonBar);
    d->pButtonLayout->setContentsMargins(BAR_MARGIN, 8, BAR_MARGIN, BAR_MARGIN);
    d->pButtonLayout->setSpacing(BUTTON_SPACING);
    d->pButtonLayout->addStretch();
    d->pButtonBar->setVisible(false);
    d->pLayout->addWidget(d->pButtonBar);
    d->applyMargins();
    connect(d->pTitleBar, &CustomTitleBar::closeClicked, this, &QWidget::close);
}

CustomMainWindow::~CustomMainWindow() = default;

CustomTitleBar *CustomMainWindow::cTitleBar() const
{
    return d->pTitleBar;
}

void CustomMainWindow::cSetCentralWidget(QWidget *widget)
{
    if (widget == d->pCentral) {
        return;
    }
    delete d->pCentral;
    d->pCentral = widget;
    if (widget) {
        d->pLayout->insertWidget(1, widget, 1);
        widget->setCursor(Qt::ArrowCursor); // not that of the edge which the mouse came over
    }
}

void CustomMainWindow::cSetButtons(int buttons)
{
    qDeleteAll(d->standard);
    d->standard.clear();
    for (const StandardRow &row : STANDARD) {
        if (!(buttons & row.bit)) {
            continue;
        }
        auto *const button = new CustomPushButton(row.style, d->pButtonBar);
        button->setMinimumWidth(BUTTON_MIN_WIDTH);
        d->pButtonLayout->addWidget(button);
        const int result = row.result;
        connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
        d->standard.insert(row.bit, button);
    }
    d->translate();
    if (CustomPushButton *const ok = d->standard.value(1)) {
        ok->setDefault(true);
    }
    cSetEnableButtonBar(!d->standard.isEmpty() || !d->custom.isEmpty());
}

void CustomMainWindow::cAddCustomButtons(const QStringList &texts)
{
    for (const QString &text : texts) {
        const int index = d->custom.size();
        auto *const button = new CustomPushButton(PLAIN_STYLE, text, d->pButtonBar);
        button->setMinimumWidth(BUTTON_MIN_WIDTH);
        button->setAutoDefault(false);
        d->pButtonLayout->insertWidget(1 + index, button); // the stretch stands first
        connect(button, &QPushButton::clicked, this,
                [this, index] { emit customButtonClicked(index); });
        d->custom.append(button);
    }
    cSetEnableButtonBar(true);
}

CustomPushButton *CustomMainWindow::cButton(int index) const
{
    return d->custom.value(index);
}

void CustomMainWindow::cSetEnableButtonBar(bool enable)
{
    d->pButtonBar->setVisible(enable);
}

void CustomMainWindow::cEnableDefualtShadow(bool enable)
{
    d->bShadow = enable;
    setAttribute(Qt::WA_TranslucentBackground, enable);
    d->applyMargins();
    update();
}

void CustomMainWindow::cSetStrechEdges(int edges)
{
    d->stretch.setGrips(edges);
    d->applyMargins();
}

void CustomMainWindow::cSetWindowLever(int level)
{
    setWindowFlag(Qt::WindowStaysOnTopHint, level == 1 && !parentWidget());
    // A dialog with a parent window is kept above it by the window system.
    if (level == 1 && parentWidget()) {
        setWindowFlag(Qt::Dialog);
    }
}

void CustomMainWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        d->translate();
    }
}

void CustomMainWindow::leaveEvent(QEvent *event)
{
    if (!d->stretch.isHeld()) {
        unsetCursor();
    }
    QDialog::leaveEvent(event);
}

void CustomMainWindow::mousePressEvent(QMouseEvent *event)
{
    const int shadow = d->shadow();
    if (event->button() == Qt::LeftButton
        && d->stretch.press(event->pos(), event->globalPos(),
                            rect().adjusted(shadow, shadow, -shadow, -shadow))) {
        event->accept();
        return;
    }
    QDialog::mousePressEvent(event);
}

void CustomMainWindow::mouseMoveEvent(QMouseEvent *event)
{
    const int shadow = d->shadow();
    d->stretch.move(event->pos(), event->globalPos(),
                    rect().adjusted(shadow, shadow, -shadow, -shadow));
    QDialog::mouseMoveEvent(event);
}

void CustomMainWindow::mouseReleaseEvent(QMouseEvent *event)
{
    d->stretch.release();
    QDialog::mouseReleaseEvent(event);
}

void CustomMainWindow::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    const int shadow = d->shadow();
    for (int ring = 0; ring < shadow; ++ring) {
        BoxLook look;
        look.border = QColor(0, 0, 0, 4 * (ring + 1));
        look.radius = shadow - ring;
        BoxPainter::draw(&painter, rect().adjusted(ring, ring, -ring, -ring), look);
    }
    BoxLook look;
    look.background = palette().brush(QPalette::Window);
    look.border = KitColour::of(KitColour::FRAME);
    look.radius = 0;
    BoxPainter::apply(look, cHasAttributes() ? &cAttributes() : nullptr,
                      BoxPainter::statusOf(this));
    const QRect frame = rect().adjusted(shadow, shadow, -shadow, -shadow);
    BoxPainter::draw(&painter, frame, look);
    if (d->pTitleBar->isVisible()) {
        // Beside the title bar too, where the mouse takes hold of the edges.
        painter.fillRect(
            QRect(frame.left() + 1, frame.top() + 1, frame.width() - 2, d->pTitleBar->height()),
            KitColour::of(KitColour::WINDOW_DARK));
    }
}
