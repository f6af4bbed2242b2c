// What the editor of a format text is made of, and its words: title, box, counter, button and the menu of tags.

#include "ControlKit/Custom.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomMenu.h"
#include "ControlKit/CustomPushButton.h"
#include "editors/VexaStringFormatRules.h"
#include "editors/VexaStringFormatTags.h"
#include "editors/VexaStringFormatWidget.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CustomItemValues.h"
#include "model/VexaPropertyTreeItem.h"

#include <QAction>
#include <QBoxLayout>
#include <QTextEdit>

#include <memory>

namespace {

using namespace VexaStringFormatRules;

constexpr int TEXT_HEIGHT = 94; // pixels
constexpr int TITLE_HEIGHT = 32;
constexpr int COUNTER_HEIGHT = 16;
constexpr QSize EDIT_BUTTON_SIZE(80, 36);
constexpr QSize MENU_BUTTON_SIZE(36, 36);
constexpr QSize MENU_ICON_SIZE(24, 24);
const QString FONT_FAMILY = QStringLiteral("Microsoft yahei");

} // namespace

void VexaStringFormatWidget::build()
{
    m_pTitle = new CustomLabel(this);
    m_pTitle->setFixedHeight(TITLE_HEIGHT);
    m_pTitle->cSetFontSize(14);
    m_pTitle->cSetFontFamily(FONT_FAMILY);
    m_pTitle->cSetFontColor(QColor(0xD1, 0xD1, 0xD1));

    m_pTextEdit = new QTextEdit(this);
    m_pTextEdit->setFixedHeight(TEXT_HEIGHT);
    m_pTextEdit->setAcceptRichText(false);
    m_pTextEdit->setTabChangesFocus(true);
    m_pTextEdit->setFocusPolicy(Qt::ClickFocus); // Tab goes from row to row
    m_pTextEdit->installEventFilter(this);
    m_pTitle->setBuddy(m_pTextEdit);
    setFocusProxy(m_pTextEdit);

    m_pCounter = new CustomLabel(this);
    m_pCounter->setFixedHeight(COUNTER_HEIGHT);
    m_pCounter->cSetFontSize(12);

    buildButton();

    QBoxLayout *const pTop = Custom::createLayout(Qt::Horizontal);
    pTop->addSpacing(2);
    pTop->addWidget(m_pTitle);
    pTop->addStretch();
    pTop->addWidget(m_pButton);
    QBoxLayout *const pBottom = Custom::createLayout(Qt::Horizontal);
    pBottom->addStretch();
    pBottom->addWidget(m_pCounter);
    QBoxLayout *const pColumn = Custom::createLayout(Qt::Vertical);
    pColumn->addLayout(pTop);
    pColumn->addSpacing(2);
    pColumn->addWidget(m_pTextEdit);
    pColumn->addSpacing(6);
    pColumn->addLayout(pBottom);
    pColumn->addSpacing(6);
    setLayout(pColumn);

    applyLook(false);
    connect(m_pTextEdit, &QTextEdit::textChanged, this, &VexaStringFormatWidget::OnTextChanged);
}

void VexaStringFormatWidget::buildButton()
{
    m_pButton = new CustomPushButton(2, this);
    m_pButton->setFocusPolicy(Qt::ClickFocus);
    const Form form = formOf(m_strCustomNode);
    m_pButton->setFixedSize(form == FORM_TAG_MENU ? MENU_BUTTON_SIZE : EDIT_BUTTON_SIZE);
    switch (form) {
    case FORM_TAG_MENU:
        m_pButton->cSetIcon(QStringLiteral(":/Vexa/AlgorithmCode/ic_addalist_normal.png"));
        m_pButton->cSetIcon(QStringLiteral(":/Vexa/AlgorithmCode/ic_addalist_disable.png"),
                            Custom::STATUS_DISABLED);
        m_pButton->cSetIcon(QStringLiteral(":/Vexa/AlgorithmCode/ic_addalist_click.png"),
                            Custom::STATUS_PRESSED);
        m_pButton->cSetIconAlign(Qt::AlignCenter, MENU_ICON_SIZE);
        m_pTagMenu = new CustomMenu(this);
        connect(m_pTagMenu, &QMenu::triggered, this, &VexaStringFormatWidget::OnAction);
        connect(m_pButton, &QAbstractButton::clicked, this, &VexaStringFormatWidget::openTagMenu);
        break;
    case FORM_TRIGGER_BYTES:
        connect(m_pButton, &QAbstractButton::clicked, this,
                &VexaStringFormatWidget::OnOpenAsciiWidget);
        break;
    case FORM_OUTPUT:
        connect(m_pButton, &QAbstractButton::clicked, this,
                &VexaStringFormatWidget::OpenFormatOutputWidget);
        break;
    }
}

void VexaStringFormatWidget::retranslate()
{
    const char *const pTitle = titleOf(m_strCustomNode);
    const QString strTitle = pTitle ? tr(pTitle) : QString();
    m_pTitle->setText(strTitle);
    m_pTextEdit->setAccessibleName(strTitle);
    const QString strAction =
        m_pTagMenu ? VexaStringFormatWidget::tr("Add Tag") : VexaStringFormatWidget::tr("Edit");
    if (m_pTagMenu) {
        m_pButton->setToolTip(strAction);
    } else {
        m_pButton->setText(strAction);
    }
    m_pButton->setAccessibleName(strAction + QLatin1Char(' ') + strTitle);
    translateMenu();
}

void VexaStringFormatWidget::translateMenu()
{
    if (!m_pTagMenu) {
        return;
    }
    const QList<QAction *> actions = m_pTagMenu->actions();
    for (QAction *const pAction : actions) {
        // A menu underlines what follows a single "&".
        pAction->setText(VexaStringFormatTags::translated(pAction->data().toString())
                             .replace(QLatin1Char('&'), QLatin1String("&&")));
    }
}

void VexaStringFormatWidget::applyLook(bool bReadOnly)
{
    const QString strRules =
        QStringLiteral("QTextEdit{background:%1;border:1px solid #686970;border-radius:2px; color: "
                       "white;}QTextEdit:focus{border-color:#F76900;}")
            .arg(QLatin1String(bReadOnly ? "rgba(25,25,28,10%)" : "rgba(25,25,28,50%)"));
    m_pTextEdit->setStyleSheet(Custom::styleSheet(Custom::STYLE_TEXT_EDIT) + strRules);
    QFont font = m_pTextEdit->font();
    font.setFamily(FONT_FAMILY);
    m_pTextEdit->setFont(font);
    m_pTextEdit->setTextColor(QColor(QLatin1String(bReadOnly ? "#60CCCCCC" : "#CCCCCC")));
}

void VexaStringFormatWidget::rebuildTagMenu()
{
    const VexaPropertyTreeItem *const pSource = m_pTagMenu ? m_pValue->m_pSourceDataItem : nullptr;
    const std::unique_ptr<CTreeItemValue> snapshot = pSource ? pSource->valueSnapshot() : nullptr;
    const auto *const pTags = dynamic_cast<const CTreeEnumationItemValue *>(snapshot.get());
    if (!pTags || m_tagNames == pTags->m_displayList) {
        return;
    }
    m_tagNames = pTags->m_displayList;
    m_pTagMenu->clear();
    for (const QString &strShown : qAsConst(m_tagNames)) {
        auto *const pAction = new QAction(m_pTagMenu);
        pAction->setData(strShown);
        pAction->setObjectName(tagText(m_strCustomNode, pTags->m_nameMap.key(strShown)));
        m_pTagMenu->addAction(pAction);
    }
    translateMenu();
}

void VexaStringFormatWidget::openTagMenu()
{
    rebuildTagMenu();
    if (!m_pTagMenu->isEmpty()) {
        const int nRight = m_pTagMenu->sizeHint().width() - m_pButton->width();
        m_pTagMenu->popup(m_pButton->mapToGlobal(QPoint(-nRight, m_pButton->height())));
    }
}
