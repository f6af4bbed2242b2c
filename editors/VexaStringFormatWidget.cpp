#include "editors/VexaStringFormatWidget.h"

#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomMenu.h"
#include "ControlKit/CustomPushButton.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "editors/VexaStringFormatRules.h"
#include "model/CustomItemValues.h"
#include "model/EnumRecord.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/CameraLookup.h"

#include <QAction>
#include <QDebug>
#include <QEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <iterator>

namespace {

using namespace VexaStringFormatRules;

constexpr quint32 TRIGGER_FORMAT_BYTES = 1;

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

QCameraTask *VexaStringFormatWidget::task() const
{
    return cameraTaskOf(m_lCameraID);
}

QString VexaStringFormatWidget::formatNode() const
{
    const VexaPropertyTreeItem *const pFormat = m_pValue->m_pFormatItem;
    return pFormat ? pFormat->valueSnapshot()->m_strNodeName : QString();
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
    if (QCameraTask *const pTask = task()) {
        qInfo() << "VexaStringFormatWidget::OnOpenAsciiWidget" << isTriggerOfBytes(*pTask);
    }
    OpenFormatOutputWidget();
}

void VexaStringFormatWidget::OnAsciiTableItemClicked(QStringList &strAscii)
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
    return pTask && (pEvent->key() == Qt::Key_Backspace || !isTriggerOfBytes(*pTask));
}

bool VexaStringFormatWidget::isTriggerOfBytes(QCameraTask &task) const
{
    const QString strNode = triggerFormatNode(m_strCustomNode);
    const EnumRecord record;
    return record && !strNode.isEmpty()
        && task.GetEnumerationValue(strNode, record.get(), nullptr, true, false)
        && record->value == TRIGGER_FORMAT_BYTES;
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
