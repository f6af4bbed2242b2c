#include "ControlKit/CustomMessageBox.h"

#include "ControlKit/CustomCheckBox.h"
#include "host/controlkit/KitIcons.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QPainter>
#include <QPointer>
#include <QTextBrowser>

#include <memory>

namespace {

constexpr int ICON_SIZE = 32;
constexpr int MARGIN = 20;
constexpr int ICON_GAP = 16;
constexpr int MIN_TEXT_WIDTH = 240;
constexpr int MAX_TEXT_WIDTH = 440;
constexpr int MAX_TEXT_HEIGHT = 360;
constexpr int BOX_CHECK_STYLE = 2;

/// Values of cSetHintStyle.
enum HintStyle { HINT_ADVICE = 1, HINT_NOTICE, HINT_FAILURE, HINT_QUESTION, HINT_SUCCESS };

const char *const HINT_ICONS[] = {nullptr,        "hint_advice",   "hint_notice",
                                  "hint_failure", "hint_question", "hint_success"};
constexpr int HINT_COUNT = int(sizeof(HINT_ICONS) / sizeof(HINT_ICONS[0]));

/// Values of cSetButtons.
enum ButtonSet { BUTTONS_OK = 1, BUTTONS_CANCEL = 2, BUTTONS_YES_NO = 3 };

struct ButtonRow
{
    int set;
    const char *textKey;
    bool accepts;
};

const ButtonRow BUTTONS[] = {
    {BUTTONS_OK, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_ok"), true},
    {BUTTONS_CANCEL, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_cancel"), false},
    {BUTTONS_YES_NO, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_yes"), true},
    {BUTTONS_YES_NO, QT_TRANSLATE_NOOP("ControlKit", "lang_controlkit_no"), false},
};

/// The icon of the box; drawn, so that it is crisp at any scale.
class HintIcon : public QWidget
{
public:
    explicit HintIcon(QWidget *parent)
        : QWidget(parent)
    {
        setFixedSize(ICON_SIZE, ICON_SIZE);
    }
    void setStyleNumber(int style)
    {
        m_strPath = style > 0 && style < HINT_COUNT ? KitIcons::path(HINT_ICONS[style]) : QString();
        setVisible(!m_strPath.isEmpty());
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        KitIcons::draw(&painter, rect(), m_strPath);
    }

private:
    QString m_strPath;
};

QString translated(const char *key)
{
    return QCoreApplication::translate("ControlKit", key);
}

} // namespace

class CustomMessageBox::Private
{
public:
    void translate(CustomMessageBox *box)
    {
        for (auto button = buttons.cbegin(); button != buttons.cend(); ++button) {
            button.key()->setText(translated(button.value()));
        }
        const QString title = strTitle.isEmpty() ? translated("lang_controlkit_prompt") : strTitle;
        box->cTitleBar()->cSetTitleText(title);
        box->setWindowTitle(title);
        box->setAccessibleName(title);
    }

    HintIcon *pIcon = nullptr;
    QTextBrowser *pText = nullptr;
    CustomCheckBox *pCheck = nullptr;
    QHBoxLayout *pButtonLayout = nullptr;
    QMap<CustomPushButton *, const char *> buttons; ///< with the key of the text
    QString strContent;
    QString strTitle;
};

CustomMessageBox::CustomMessageBox(QWidget *parent)
    : CustomMainWindow(parent)
    , d(std::make_unique<Private>())
{
    auto *const central = new QWidget;
    auto *const column = new QVBoxLayout(central);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(ICON_GAP);
    auto *const row = new QHBoxLayout;
    row->setSpacing(ICON_GAP);
    d->pIcon = new HintIcon(central);
    d->pIcon->setStyleNumber(HINT_ADVICE);
    d->pText = new QTextBrowser(central);
    d->pText->setFrameStyle(QFrame::NoFrame);
    d->pText->viewport()->setAutoFillBackground(false);
    d->pText->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    d->pText->setOpenLinks(false);
    d->pText->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    d->pText->document()->setDocumentMargin(0);
    row->addWidget(d->pIcon, 0, Qt::AlignTop);
    row->addWidget(d->pText, 1);
    column->addLayout(row);
    d->pCheck = new CustomCheckBox(BOX_CHECK_STYLE, central);
    d->pCheck->setVisible(false);
    column->addWidget(d->pCheck);
    d->pButtonLayout = new QHBoxLayout;
    d->pButtonLayout->setSpacing(10);
    d->pButtonLayout->addStretch();
    column->addLayout(d->pButtonLayout);
    cSetCentralWidget(central);
    cSetEnableButtonBar(false);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    cSetButtons(BUTTONS_OK);
}

CustomMessageBox::~CustomMessageBox() = default;

void CustomMessageBox::cSetButtons(int buttons)
{
    const QList<CustomPushButton *> former = d->buttons.keys();
    qDeleteAll(former);
    d->buttons.clear();
    for (const ButtonRow &row : BUTTONS) {
        if (row.set != buttons) {
            continue;
        }
        auto *const button = new CustomPushButton(row.accepts ? 1 : 2, this);
        button->setMinimumWidth(84);
        d->pButtonLayout->addWidget(button);
        const int result = row.accepts ? QDialog::Accepted : QDialog::Rejected;
        connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
        if (row.accepts || buttons == BUTTONS_CANCEL) {
            button->setDefault(true);
            button->setFocus();
        }
        d->buttons.insert(button, row.textKey);
    }
    d->translate(this);
}

void CustomMessageBox::cSetOpenExternalLinks(bool open)
{
    d->pText->setOpenExternalLinks(open);
    d->pText->setOpenLinks(open);
}

void CustomMessageBox::cSetContent(const QString &content)
{
    d->strContent = content;
    if (Qt::mightBeRichText(content)) {
        // Callers put an error line behind their text; markup would run the two together.
        d->pText->setHtml(QString(content).replace(QLatin1String("\r\n"), QLatin1String("<br>")));
    } else {
        d->pText->setPlainText(content);
    }
    setAccessibleDescription(d->pText->toPlainText());
}

void CustomMessageBox::cSetTextTitle(const QString &title)
{
    d->strTitle = title;
    d->translate(this);
}

void CustomMessageBox::cSetHintStyle(int style)
{
    d->pIcon->setStyleNumber(style);
}

void CustomMessageBox::cEndSetParameter()
{
    d->pText->ensurePolished();
    d->pText->document()->setDefaultFont(d->pText->font());
    // A copy: the view lays its own document out for its present width whenever that is measured.
    const std::unique_ptr<QTextDocument> measured(d->pText->document()->clone());
    measured->setTextWidth(-1);
    const int width = qBound(MIN_TEXT_WIDTH, int(measured->idealWidth()) + 2, MAX_TEXT_WIDTH);
    measured->setTextWidth(width);
    const int height = int(measured->size().height()) + 2;
    const bool scrolls = height > MAX_TEXT_HEIGHT;
    d->pText->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    d->pText->setFixedSize(scrolls ? width + 16 : width, qMin(height, MAX_TEXT_HEIGHT));
    layout()->activate();
}

QString CustomMessageBox::cContent() const
{
    return d->strContent;
}

QString CustomMessageBox::cTextTitle() const
{
    return d->strTitle;
}

void CustomMessageBox::changeEvent(QEvent *event)
{
    CustomMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        d->translate(this);
    }
}

int CustomMessageBox::run(int hintStyle, QWidget *parent, const QString &text, const QString &title,
                          int buttons, const QString &checkText, bool *checked)
{
    // The parent may be destroyed while the box is open, and the box with it.
    const QPointer<CustomMessageBox> box = new CustomMessageBox(parent);
    box->cSetButtons(buttons);
    box->cSetContent(text);
    box->cSetTextTitle(title);
    box->cSetHintStyle(hintStyle);
    box->d->pCheck->setText(checkText);
    box->d->pCheck->setVisible(!checkText.isEmpty());
    box->d->pCheck->setChecked(checked && *checked);
    box->cEndSetParameter();
    const int answer = box->exec() == QDialog::Accepted ? 1 : 0;
    if (!box) {
        return 0;
    }
    if (checked && !checkText.isEmpty()) {
        *checked = box->d->pCheck->isChecked();
    }
    delete box;
    return answer;
}

int CustomMessageBox::ask(QWidget *parent, const QString &text, const QString &title, int buttons,
                          const QString &checkText, bool *checked)
{
    return run(HINT_QUESTION, parent, text, title, buttons, checkText, checked);
}

int CustomMessageBox::warning(QWidget *parent, const QString &text, const QString &title,
                              int buttons, const QString &checkText)
{
    return run(HINT_NOTICE, parent, text, title, buttons, checkText, nullptr);
}

int CustomMessageBox::information(QWidget *parent, const QString &text, const QString &title,
                                  int buttons, const QString &checkText)
{
    return run(HINT_ADVICE, parent, text, title, buttons, checkText, nullptr);
}
