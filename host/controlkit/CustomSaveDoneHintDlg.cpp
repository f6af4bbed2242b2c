#include "ControlKit/CustomSaveDoneHintDlg.h"

#include "ControlKit/CustomLabel.h"
#include "host/controlkit/KitIcons.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPainter>
#include <QTimer>
#include <QUrl>

namespace {

constexpr int DEFAULT_MS = 2000;
constexpr int ICON_SIZE = 28;
constexpr int MARGIN = 18;
constexpr int MAX_MESSAGE_WIDTH = 360;

class SuccessIcon : public QWidget
{
public:
    explicit SuccessIcon(QWidget *parent)
        : QWidget(parent)
    {
        setFixedSize(ICON_SIZE, ICON_SIZE);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        KitIcons::draw(&painter, rect(), KitIcons::path("hint_success"));
    }
};

/// The folder that an argument of the hint stands for.
QString folderOf(QString argument)
{
    const QLatin1String select("/select,");
    if (argument.startsWith(select)) {
        // Spelled for another system's file manager, unless there is such a file here.
        argument = argument.mid(select.size());
        if (!QFileInfo::exists(argument)) {
            argument.replace(QLatin1Char('\\'), QLatin1Char('/'));
        }
    }
    const QFileInfo place(QDir::fromNativeSeparators(argument.trimmed()));
    return place.isDir() ? place.absoluteFilePath() : place.absolutePath();
}

} // namespace

class CustomSaveDoneHintDlg::Private
{
public:
    void translate()
    {
        pLink->setText(
            QStringLiteral("<a href=\"folder\">%1</a>")
                .arg(QCoreApplication::translate("ControlKit", "lang_controlkit_openfolder")
                         .toHtmlEscaped()));
    }

    CustomLabel *pMessage = nullptr;
    QLabel *pLink = nullptr;
    QTimer timer;
    QString strArgument;
};

CustomSaveDoneHintDlg::CustomSaveDoneHintDlg(QWidget *parent, const QString &message,
                                             const QString &argument)
    : CustomMainWindow(parent)
    , d(std::make_unique<Private>())
{
    cTitleBar()->setVisible(false);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    auto *const content = new QWidget;
    auto *const layout = new QHBoxLayout(content);
    layout->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    layout->setSpacing(14);
    layout->addWidget(new SuccessIcon(content));
    d->pMessage = new CustomLabel(content);
    d->pMessage->setTextFormat(Qt::PlainText);
    d->pMessage->setMaximumWidth(MAX_MESSAGE_WIDTH);
    layout->addWidget(d->pMessage, 1);
    d->pLink = new QLabel(content);
    d->pLink->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    layout->addWidget(d->pLink);
    cSetCentralWidget(content);
    d->translate();

    d->timer.setSingleShot(true);
    connect(&d->timer, &QTimer::timeout, this, [this] {
        // The user is on the way to the link.
        if (underMouse() && d->pLink->isVisible()) {
            d->timer.start();
        } else {
            accept();
        }
    });
    connect(d->pLink, &QLabel::linkActivated, this, [this] {
        QDesktopServices::openUrl(QUrl::fromLocalFile(folderOf(d->strArgument)));
        accept();
    });
    SetMsgText(message, argument, true, DEFAULT_MS);
}

CustomSaveDoneHintDlg::~CustomSaveDoneHintDlg() = default;

void CustomSaveDoneHintDlg::SetMsgText(const QString &message, const QString &argument,
                                       bool showLink, int displayTime)
{
    d->strArgument = argument;
    d->pMessage->setText(message);
    setAccessibleName(message);
    setWindowTitle(message);
    setToolTip(argument);
    d->pLink->setVisible(showLink && !argument.isEmpty());
    d->timer.setInterval(qMax(0, displayTime));
    if (isVisible()) {
        d->timer.start();
    }
}

void CustomSaveDoneHintDlg::changeEvent(QEvent *event)
{
    CustomMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        d->translate();
    }
}

void CustomSaveDoneHintDlg::showEvent(QShowEvent *event)
{
    CustomMainWindow::showEvent(event);
    d->timer.start();
}
