#include "ControlKit/CustomLoadingDialog.h"

#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"

#include <QApplication>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QMap>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int PANEL_WIDTH = 300;
constexpr int PANEL_MARGIN = 22;
constexpr int BAR_HEIGHT = 4;
constexpr int FRAME_MS = 33;
constexpr int ROUND_MS = 1400;

/// A bar without an end: a piece of it runs from the left to the right.
class BusyBar : public QWidget
{
public:
    explicit BusyBar(QWidget *parent)
        : QWidget(parent)
    {
        setFixedHeight(BAR_HEIGHT);
        m_clock.start();
    }

protected:
    void showEvent(QShowEvent *) override { m_timer.start(FRAME_MS, this); }
    void hideEvent(QHideEvent *) override { m_timer.stop(); }
    void timerEvent(QTimerEvent *) override { update(); }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        BoxLook look;
        look.borderWidth = 0;
        look.background = KitColour::of(KitColour::BASE);
        BoxPainter::draw(&painter, rect(), look);
        const int piece = width() / 3;
        const int start =
            int((width() + piece) * (m_clock.elapsed() % ROUND_MS) / ROUND_MS) - piece;
        look.background = KitColour::of(KitColour::ACCENT);
        BoxPainter::draw(&painter, QRect(start, 0, piece, height()) & rect(), look);
    }

private:
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
};

class LoadingPanel : public QWidget
{
public:
    explicit LoadingPanel(QWidget *parent)
        : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
        , m_pLabel(new QLabel(this))
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_QuitOnClose, false);
        setFocusPolicy(Qt::NoFocus);
        setFixedWidth(PANEL_WIDTH);
        auto *const layout = new QVBoxLayout(this);
        layout->setContentsMargins(PANEL_MARGIN, PANEL_MARGIN, PANEL_MARGIN, PANEL_MARGIN);
        layout->setSpacing(14);
        m_pLabel->setAlignment(Qt::AlignCenter);
        m_pLabel->setWordWrap(true);
        m_pLabel->setTextFormat(Qt::PlainText);
        layout->addWidget(m_pLabel);
        layout->addWidget(new BusyBar(this));
    }

    void setText(const QString &text)
    {
        m_pLabel->setText(text);
        setAccessibleName(text);
        setWindowTitle(text);
        resize(PANEL_WIDTH, layout()->heightForWidth(PANEL_WIDTH));
    }

    void centre()
    {
        const QRect area = parentWidget() ? parentWidget()->window()->frameGeometry()
                                          : screen()->availableGeometry();
        move(area.center() - rect().center());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        BoxLook look;
        look.background = KitColour::of(KitColour::WINDOW_DARK);
        look.border = KitColour::of(KitColour::FRAME);
        look.radius = 0;
        BoxPainter::draw(&painter, rect(), look);
    }

private:
    QLabel *m_pLabel;
};

using Panels = QMap<int, QPointer<LoadingPanel>>;

Panels &panels()
{
    static Panels s_panels;
    return s_panels;
}

/// The window that the user looks at: dialogs come and go, so their window is taken.
QWidget *windowBelow()
{
    QWidget *window = QApplication::activeWindow();
    while (window && window->parentWidget()) {
        window = window->parentWidget()->window();
    }
    return window && window->isVisible() ? window : nullptr;
}

void hideAll()
{
    const QList<int> keys = panels().keys();
    for (const int key : keys) {
        CustomLoadingDialog::hideLoading(key);
    }
}

} // namespace

void CustomLoadingDialog::showLoading(const QString &text, int key)
{
    QPointer<LoadingPanel> &panel = panels()[key];
    const bool isNew = !panel;
    if (isNew) {
        panel = new LoadingPanel(windowBelow());
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, panel.data(), hideAll);
    }
    panel->setText(text);
    panel->centre();
    if (isNew) {
        panel->show();
    }
}

void CustomLoadingDialog::hideLoading(int key)
{
    const QPointer<LoadingPanel> panel = panels().take(key);
    if (panel) {
        panel->hide();
        panel->deleteLater(); // a repaint of it may be on the stack
    }
}

bool CustomLoadingDialog::isLoading(int key)
{
    return !panels().value(key).isNull();
}
