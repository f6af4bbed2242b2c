#include "editors/VexaStringFormatWidget.h"

#include "ControlKit/Custom.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomMenu.h"
#include "ControlKit/CustomPushButton.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "editors/VexaStringFormatRules.h"
#include "editors/VexaStringFormatTags.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CustomItemValues.h"
#include "model/VexaPropertyTreeItem.h"

#include <QAction>
#include <QBoxLayout>
#include <QDebug>
#include <QEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

using namespace VexaStringFormatRules;

constexpr quint32 TRIGGER_FORMAT_BYTES = 1;
constexpr int TEXT_HEIGHT = 94; // pixels
constexpr int TITLE_HEIGHT = 32;
constexpr int COUNTER_HEIGHT = 16;
constexpr QSize EDIT_BUTTON_SIZE(80, 36);
constexpr QSize MENU_BUTTON_SIZE(36, 36);
constexpr QSize MENU_ICON_SIZE(24, 24);
const QString FONT_FAMILY = QStringLiteral("Microsoft yahei");

std::unique_ptr<CTreeItemValue> snapshotOf(const VexaPropertyTreeItem *pItem)
{
    return pItem ? pItem->valueSnapshot() : nullptr;
}

} // namespace

VexaStringFormatWidget::VexaStringFormatWidget(CTreeFormatStringTextItemValue *pValue,
                                               QWidget *pParent)
    : CustomWidget(pParent)
    , m_lCameraID(pValue->m_nCameraID)
    , m_nLimit(pValue->m_nMaxLength - 1)
    , m_strText(pValue->m_strValue)
    , m_strCustomNode(pValue->m_strNodeName)
    , m_pValue(pValue)
    , m_strWorkingText(pValue->m_strValue)
{
    build();
    retranslate();
    connect(this, &VexaStringFormatWidget::SigReadOnlyChanged, this,
            &VexaStringFormatWidget::OnSigReadOnlyChanged);
    watch(pValue->m_pFormatItem);
    rebuildTagMenu();
    showStoredText();
}

VexaStringFormatWidget::~VexaStringFormatWidget()
{
    watch(nullptr);
}

void VexaStringFormatWidget::watch(VexaPropertyTreeItem *pFormatItem)
{
    if (pFormatItem == m_pWatchedItem) {
        return;
    }
    if (m_pWatchedItem) {
        VexaPropertyTreeItem::removeViewFrom(m_pWatchedItem, this);
    }
    m_pWatchedItem = pFormatItem;
    if (pFormatItem) {
        pFormatItem->registerView(this);
    }
}

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
    const QString strAction = m_pTagMenu ? tr("Add Tag") : tr("Edit");
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
    const std::unique_ptr<CTreeItemValue> snapshot =
        m_pTagMenu ? snapshotOf(m_pValue->m_pSourceDataItem) : nullptr;
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

QCameraTask *VexaStringFormatWidget::task() const
{
    QTaskManager *const pManager = QTaskManager::Instance();
    QCameraBasicTask *const pBasic = pManager ? pManager->GetTaskByID(m_lCameraID) : nullptr;
    return pBasic ? pBasic->_CameraTak() : nullptr;
}

QString VexaStringFormatWidget::formatNode() const
{
    const std::unique_ptr<CTreeItemValue> snapshot = snapshotOf(m_pValue->m_pFormatItem);
    return snapshot ? snapshot->m_strNodeName : QString();
}

void VexaStringFormatWidget::setValue(CTreeFormatStringTextItemValue *pValue)
{
    if (!pValue) {
        return;
    }
    const bool bTyping = hasUserText();
    m_pValue = pValue;
    m_lCameraID = pValue->m_nCameraID;
    watch(pValue->m_pFormatItem);
    // The name of an uploaded picture may fill its register to the last byte.
    if (!isFtpPictureName(formatNode()) || pValue->m_strValue.size() != pValue->m_nMaxLength) {
        m_nLimit = pValue->m_nMaxLength - 1;
    }
    m_strText = pValue->m_strValue;
    rebuildTagMenu();
    if (bTyping) {
        OnTextChanged();
    } else {
        showStoredText();
    }
}

void VexaStringFormatWidget::setRowReadOnly(bool bReadOnly)
{
    m_bRowReadOnly = bReadOnly;
    if (isEnabledTo(parentWidget()) == bReadOnly) {
        OnSigReadOnlyChanged(m_lCameraID, bReadOnly);
    }
}

void VexaStringFormatWidget::rollback()
{
    m_strFailedText.clear();
    if (m_pTextEdit->toPlainText() != boxForm(m_strText)) {
        showStoredText();
    }
}

bool VexaStringFormatWidget::hasUserText() const
{
    return m_bEditing && m_pTextEdit->toPlainText() != boxForm(m_strText);
}

QString VexaStringFormatWidget::boxForm(const QString &strText) const
{
    QTextDocument document;
    document.setPlainText(strText);
    const QString strShown = document.toPlainText();
    return m_nLimit > 0 ? strShown.left(m_nLimit) : strShown;
}

void VexaStringFormatWidget::putText(const QString &strText)
{
    const QSignalBlocker blocker(m_pTextEdit);
    m_pTextEdit->setPlainText(strText);
    m_pTextEdit->moveCursor(QTextCursor::End);
}

void VexaStringFormatWidget::showStoredText()
{
    m_strWorkingText = m_strText;
    m_strAcceptedText = m_strText;
    putText(m_strText);
    OnTextChanged();
}

void VexaStringFormatWidget::OnAction(QAction *pAction)
{
    const QString strCandidate = m_pTextEdit->toPlainText() + pAction->objectName();
    if (strCandidate.toUtf8().size() > m_nLimit) {
        return;
    }
    m_pTextEdit->setPlainText(strCandidate);
    m_pTextEdit->moveCursor(QTextCursor::End);
    OnTextEditingFinished();
}

void VexaStringFormatWidget::OnTextChanged()
{
    if (!m_pCounter || !m_pTextEdit || m_nLimit <= 0) {
        return;
    }
    const QString strText = m_pTextEdit->toPlainText();
    if (hasIdeographs(strText) || hasEmptyLevel(m_strCustomNode, strText)) {
        putText(m_strAcceptedText);
    } else {
        qInfo().noquote() << "VexaStringFormatWidget::OnTextChanged" << strText;
        if (strText.size() >= m_nLimit) {
            putText(strText.mid(0, m_nLimit));
        }
        m_strAcceptedText = m_pTextEdit->toPlainText();
        m_strWorkingText = m_strAcceptedText;
        m_strFailedText.clear();
    }
    m_pCounter->setText(
        QStringLiteral("%1/%2").arg(m_pTextEdit->toPlainText().size()).arg(m_nLimit));
}

void VexaStringFormatWidget::itemReadOnlyChanged(long lCameraID, VexaPropertyTreeItem *pItem,
                                                 bool bReadOnly)
{
    if (pItem == m_pWatchedItem) {
        emit SigReadOnlyChanged(lCameraID, bReadOnly);
    }
}

void VexaStringFormatWidget::OnSigReadOnlyChanged(long lCameraId, bool bReadOnly)
{
    if (lCameraId != m_lCameraID) {
        return;
    }
    const bool bLocked = bReadOnly || m_bRowReadOnly;
    if (bLocked || !hasUserText()) {
        // What was begun can no longer be taken, and must not be written when the focus goes.
        m_strFailedText.clear();
        applyLook(bLocked);
        showStoredText();
    }
    setEnabled(!bLocked);
}

void VexaStringFormatWidget::OnOpenAsciiWidget()
{
    const auto entry = std::make_unique<_NODE_ENUM_VALUE_>();
    const QString strNode = triggerFormatNode(m_strCustomNode);
    QCameraTask *const pTask = task();
    if (pTask && !strNode.isEmpty()
        && pTask->GetEnumerationValue(strNode, entry.get(), nullptr, true, false)) {
        qInfo() << "VexaStringFormatWidget::OnOpenAsciiWidget" << strNode << entry->value;
    }
    OpenFormatOutputWidget();
}

void VexaStringFormatWidget::OnAsciiTableItemClicked(QStringList strAscii)
{
    const QString strCandidate = m_strWorkingText + strAscii.value(0);
    if (strCandidate.toUtf8().size() <= m_nLimit) {
        m_bEditing = true; // no refill until the edit ends
        m_pTextEdit->setPlainText(strCandidate);
        m_pTextEdit->moveCursor(QTextCursor::End);
    }
}

void VexaStringFormatWidget::OpenFormatOutputWidget()
{
    if (m_pValue->m_pFormatItem) {
        emit SigFormatEditRequested(m_pValue->m_pFormatItem, m_pValue->m_pSourceDataItem);
    }
}

bool VexaStringFormatWidget::takesKey(const QKeyEvent *pEvent) const
{
    static constexpr QKeySequence::StandardKey always[] = {
        QKeySequence::Paste, QKeySequence::Copy, QKeySequence::Cut, QKeySequence::SelectAll};
    if (std::any_of(std::begin(always), std::end(always),
                    [pEvent](QKeySequence::StandardKey key) { return pEvent->matches(key); })
        || formOf(m_strCustomNode) != FORM_TRIGGER_BYTES || pEvent->text().isEmpty()) {
        return true;
    }
    QCameraTask *const pTask = task();
    if (!pTask) {
        return false;
    }
    const auto entry = std::make_unique<_NODE_ENUM_VALUE_>();
    const QString strNode = triggerFormatNode(m_strCustomNode);
    return pEvent->key() == Qt::Key_Backspace || strNode.isEmpty()
        || !pTask->GetEnumerationValue(strNode, entry.get(), nullptr, true, false)
        || entry->value != TRIGGER_FORMAT_BYTES;
}

bool VexaStringFormatWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_pTextEdit) {
        return CustomWidget::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto *const pKey = static_cast<QKeyEvent *>(event);
        if (pKey->key() == Qt::Key_Escape && hasUserText()) {
            rollback();
            return true;
        }
        if (pKey->key() == Qt::Key_Tab || pKey->key() == Qt::Key_Backtab) {
            focusNextPrevChild(pKey->key() == Qt::Key_Tab);
            return true; // never a character, even where nothing else takes the focus
        }
        return !takesKey(pKey);
    }
    case QEvent::InputMethod:
        return true;
    case QEvent::FocusIn:
        m_bEditing = true;
        break;
    case QEvent::FocusOut: {
        // A menu and another window leave the focus where it is.
        const Qt::FocusReason eReason = static_cast<QFocusEvent *>(event)->reason();
        if (eReason == Qt::ActiveWindowFocusReason || eReason == Qt::PopupFocusReason) {
            break;
        }
        m_bEditing = false;
        if (!m_pTextEdit->isVisible() || !m_pTextEdit->isEnabled()) {
            rollback(); // the row went, not the user
            break;
        }
        const QPointer<VexaStringFormatWidget> guard(this);
        OnTextEditingFinished();
        return !guard;
    }
    default:
        break;
    }
    return false;
}

void VexaStringFormatWidget::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
}

void VexaStringFormatWidget::hideEvent(QHideEvent *event)
{
    CustomWidget::hideEvent(event);
    if (m_pTagMenu) {
        m_pTagMenu->close();
    }
}

bool VexaStringFormatWidget::focusNextPrevChild(bool next)
{
    // Within the row the button follows the box; beyond them the view goes on.
    QWidget *const pFrom = next ? static_cast<QWidget *>(m_pTextEdit) : m_pButton;
    QWidget *const pTo = next ? static_cast<QWidget *>(m_pButton) : m_pTextEdit;
    if (pFrom->hasFocus()) {
        pTo->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return CustomWidget::focusNextPrevChild(next);
}
