#include "view/EditorFiller.h"

#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "editors/VexaFeatureDrawWidget.h"
#include "editors/VexaLightingSelectorWidget.h"
#include "editors/VexaPropFocusStepWidget.h"
#include "editors/VexaScreenSelectWidget.h"
#include "editors/VexaStringFormatWidget.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"
#include "view/CodeNumberLimit.h"
#include "view/EditorCommit.h"
#include "view/EnumerationRows.h"
#include "view/ItemNames.h"
#include "view/PropertyLanguage.h"
#include "view/VexaPropertySpinBox.h"
#include "view/VexaPropertyTreeDelegate.h"

#include <QDebug>
#include <QHash>
#include <QTextCodec>

#include <limits>

namespace {

using EditorFiller::Request;
using EditorFiller::Result;
using EditorFiller::RESULT_FILLED;
using EditorFiller::RESULT_LEFT;
using EditorFiller::RESULT_POSTED;
using EditorFiller::RESULT_PUT_OFF;

/// Keeps the commit signals of an editor away from the delegate for its own life.
class CommitPause
{
public:
    explicit CommitPause(const Request &request)
        : m_pEditor(request.pEditor)
        , m_pDelegate(request.pDelegate)
    {
        EditorCommit::disconnectSignals(m_pEditor, m_pDelegate);
    }
    ~CommitPause() { EditorCommit::connectSignals(m_pEditor, m_pDelegate); }
    Q_DISABLE_COPY(CommitPause)

private:
    QWidget *m_pEditor;
    const VexaPropertyTreeDelegate *m_pDelegate;
};

/// The state of an editor whose value was never read.
void showBlank(QWidget *pEditor)
{
    EditorCommit::rollback(pEditor);
    const QSignalBlocker blocker(pEditor);
    if (auto *const pEdit = qobject_cast<QPropertyLineEdit *>(pEditor)) {
        pEdit->SetText(QString(), QPropertyLineEdit::TEXT_STRING);
    } else if (auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(pEditor)) {
        pSpin->showText(QString());
    } else if (auto *const pCombo = qobject_cast<CustomComboBox *>(pEditor)) {
        pCombo->clear();
    } else if (auto *const pCheck = qobject_cast<CustomCheckBox *>(pEditor)) {
        pCheck->setChecked(false);
    }
    pEditor->setEnabled(false);
}

void settleLineEdit(QPropertyLineEdit *pEdit, const Request &request)
{
    if (request.bReadOnly) {
        // What the user had begun to type can no longer be taken.
        pEdit->Rollback();
    }
    if (!EditorCommit::hasUserText(pEdit)) {
        pEdit->setCursorPosition(0);
    }
    pEdit->setEnabled(!request.bReadOnly);
    if (request.bReadOnly) {
        pEdit->deselect();
    }
}

Result fillBoolean(const Request &request)
{
    auto *const pCheck = qobject_cast<CustomCheckBox *>(request.pEditor);
    const auto *const pValue = dynamic_cast<const CTreeBooleanItemValue *>(request.pValue);
    if (!pCheck || !pValue) {
        return RESULT_LEFT;
    }
    const CommitPause pause(request);
    pCheck->setChecked(pValue->m_bValue);
    pCheck->setEnabled(!request.bReadOnly);
    return RESULT_FILLED;
}

void fillTextInteger(QPropertyLineEdit *pEdit, const CTreeIntergerItemValue &value,
                     const Request &request)
{
    pEdit->SetText(value.displayValue(), value.type());
    if (value.m_strRepresentation == QLatin1String("PureNumber")) {
        pEdit->SetRange(value.m_nMaxValue, value.m_nMinValue);
    }
    settleLineEdit(pEdit, request);
}

void fillSpinBox(VexaPropertySpinBox *pSpin, const CTreeIntergerItemValue &value,
                 const Request &request)
{
    constexpr qint64 nHighest = std::numeric_limits<int>::max();
    constexpr qint64 nLowest = std::numeric_limits<int>::min();
    const qint64 nLimit =
        codeNumberLimit(request.lCameraID, request.strNodeName, qMin(value.m_nMaxValue, nHighest));
    const int nUpper = int(qBound(nLowest, nLimit, nHighest));
    const int nLower = int(quint32(value.m_nMinValue)); // the low 32 bits, as the box has no more
    pSpin->setLimits(nLower, nUpper, value.m_nIncValue);
    pSpin->snapValue(int(qBound(nLowest, value.m_nValue, nHighest)));
    const QString strShown = value.displayValue();
    const qint64 nShown = strShown.toLongLong();
    const bool bCutLimits = value.m_nMaxValue > nUpper || value.m_nMinValue != nLower;
    if (bCutLimits && nShown != pSpin->value()) {
        pSpin->showText(strShown); // true, though the box could not hold it
    }
    pSpin->setEnabled(!request.bReadOnly);
    if (request.bReadOnly) {
        pSpin->cInterLineEdit()->deselect();
    }
}

Result fillInteger(const Request &request)
{
    const auto *const pValue = dynamic_cast<const CTreeIntergerItemValue *>(request.pValue);
    auto *const pEdit = qobject_cast<QPropertyLineEdit *>(request.pEditor);
    auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(request.pEditor);
    if (!pValue || (!pEdit && !pSpin)) {
        return RESULT_LEFT;
    }
    if (pSpin && pSpin->cHasUserText()) {
        if (!request.bReadOnly) {
            return RESULT_PUT_OFF;
        }
        pSpin->rollback(); // what the user had begun to type can no longer be taken
    }
    const CommitPause pause(request);
    if (pEdit) {
        fillTextInteger(pEdit, *pValue, request);
    } else {
        fillSpinBox(pSpin, *pValue, request);
    }
    return RESULT_FILLED;
}

Result fillFloat(const Request &request)
{
    auto *const pEdit = qobject_cast<QPropertyLineEdit *>(request.pEditor);
    const auto *const pValue = dynamic_cast<const CTreeFloatItemValue *>(request.pValue);
    if (!pEdit || !pValue) {
        return RESULT_LEFT;
    }
    const CommitPause pause(request);
    pEdit->SetText(pValue->displayValue(), QPropertyLineEdit::TEXT_FLOAT);
    // As floats: the edit compares in the precision of its ends, or 0.1 would lie below a minimum of 0.1.
    pEdit->SetRange(pValue->m_fMaxValue, pValue->m_fMinValue);
    settleLineEdit(pEdit, request);
    return RESULT_FILLED;
}

Result fillCalendar(const Request &request)
{
    EditorCommit::connectSignals(request.pEditor, request.pDelegate);
    request.pEditor->setEnabled(!request.bReadOnly);
    return RESULT_FILLED;
}

Result fillString(const Request &request)
{
    if (qobject_cast<CustomCalendar *>(request.pEditor)) {
        return fillCalendar(request);
    }
    auto *const pEdit = qobject_cast<QPropertyLineEdit *>(request.pEditor);
    const auto *const pValue = dynamic_cast<const CTreeStringItemValue *>(request.pValue);
    QTaskManager *const pManager = QTaskManager::Instance();
    if (!pEdit || !pValue || !pManager || !pManager->GetTaskByID(request.lCameraID)) {
        return RESULT_LEFT;
    }
    const CommitPause pause(request);
    pEdit->SetText(pValue->m_strValue, QPropertyLineEdit::TEXT_STRING);
    pEdit->SetStringLength(pValue->m_nMaxLength);
    settleLineEdit(pEdit, request);
    return RESULT_FILLED;
}

Result fillEnumeration(const Request &request)
{
    auto *const pCombo = qobject_cast<CustomComboBox *>(request.pEditor);
    const auto *const pValue = dynamic_cast<const CTreeEnumationItemValue *>(request.pValue);
    if (!pCombo || !pValue) {
        return RESULT_LEFT;
    }
    if (pCombo->cIsPopupShown()) {
        QObject::connect(pCombo, &CustomComboBox::cSigPopupHidden, request.pDelegate,
                         &VexaPropertyTreeDelegate::on_PopupHidden,
                         Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
        return RESULT_PUT_OFF;
    }
    // A refill inside a refill comes from an event loop that runs in the first one, which waits for this one to end.
    if (!request.pComboMutex->tryLock()) {
        return RESULT_POSTED;
    }
    {
        const CommitPause pause(request);
        EnumerationRows::show(pCombo, *pValue,
                              isPropertyLanguageChinese(request.pDelegate->parentType()));
        const bool bKnown = request.bCached && pValue->m_enumationMap.contains(pValue->m_nValue);
        pCombo->setCurrentIndex(bKnown ? pCombo->findData(pValue->m_nValue) : -1);
        pCombo->setEnabled(!request.bReadOnly && pCombo->count() > 0);
    }
    request.pComboMutex->unlock();
    return RESULT_FILLED;
}

/// The Chinese caption of commands, which the client's codec for local strings decodes from GBK bytes.
QString executeTextCn()
{
    static const QByteArray bytes("\xD6\xB4\xD0\xD0");
    const QLocalCfg *const pConfiguration = QLocalCfg::Instance();
    QByteArray format =
        pConfiguration ? QLocalCfg::Instance()->GetCodeFormat().toLatin1() : QByteArray();
    if (format.isEmpty()) {
        format = "GBK";
    }
    if (const QTextCodec *const pCodec = QTextCodec::codecForName(format)) {
        QTextCodec::ConverterState state;
        const QString strText = pCodec->toUnicode(bytes.constData(), bytes.size(), &state);
        if (state.invalidChars == 0 && state.remainingChars == 0 && strText.size() == 2) {
            return strText;
        }
    }
    return QStringLiteral(u"\u6267\u884c");
}

Result fillCommand(const Request &request)
{
    auto *const pButton = qobject_cast<CustomPushButton *>(request.pEditor);
    if (!pButton) {
        return RESULT_LEFT;
    }
    const CommitPause pause(request);
    if (request.strNodeName == QLatin1String("Custom_RegularExpressionFilterRules")) {
        pButton->setText(VexaPropertyTreeDelegate::tr("Set"));
    } else if (isPropertyLanguageChinese(request.pDelegate->parentType())) {
        pButton->setText(executeTextCn());
    } else {
        pButton->setText(QStringLiteral("Execute"));
    }
    if (request.strNodeName != QLatin1String("TriggerSoftware")) {
        pButton->cSetControlClickEvent(1);
    }
    pButton->setEnabled(!request.bReadOnly);
    return RESULT_FILLED;
}

Result fillDraw(const Request &request)
{
    auto *const pDraw = qobject_cast<VexaFeatureDrawWidget *>(request.pEditor);
    bool bDrawOn = false;
    {
        const ItemLock lock(request.pItem);
        const auto *const pValue =
            dynamic_cast<const CTreeCustomDrawItemValue *>(request.pItem->value());
        bDrawOn = pValue && pValue->m_bDrawOn;
    }
    if (!pDraw) {
        return RESULT_LEFT;
    }
    pDraw->setDrawActive(!request.bReadOnly && bDrawOn);
    pDraw->setEnabled(!request.bReadOnly);
    pDraw->update();
    return RESULT_FILLED;
}

Result fillWatermark(const Request &request)
{
    auto *const pCheck = qobject_cast<CustomCheckBox *>(request.pEditor);
    if (!pCheck) {
        return RESULT_LEFT;
    }
    int nState = Qt::Unchecked;
    QString strText;
    {
        const ItemLock lock(request.pItem);
        const auto *const pValue =
            dynamic_cast<const CTreeCustomWaterMarkItemValue *>(request.pItem->value());
        if (!pValue) {
            return RESULT_LEFT;
        }
        const bool bFirst = request.strNodeName == pValue->m_strFirstNodeName;
        nState = bFirst ? pValue->m_nFirstValue : pValue->m_nSecondValue;
        strText = bFirst ? pValue->m_strFirstToolTip : pValue->m_strSecondToolTip;
    }
    const CommitPause pause(request);
    pCheck->setChecked(nState != Qt::Unchecked);
    pCheck->setText(strText.isEmpty() ? request.strNodeName : strText);
    pCheck->setEnabled(!request.bReadOnly);
    return RESULT_FILLED;
}

/// The editor works on the row's own value: a snapshot has none of its fields.
Result fillFormatText(const Request &request)
{
    auto *const pFormat = qobject_cast<VexaStringFormatWidget *>(request.pEditor);
    auto *const pValue = dynamic_cast<CTreeFormatStringTextItemValue *>(request.pItem->value());
    if (!pFormat || !pValue) {
        return RESULT_LEFT;
    }
    pFormat->setValue(pValue);
    pFormat->setRowReadOnly(request.bReadOnly || !request.pDelegate->isEditorsEnabled());
    return RESULT_FILLED;
}

Result fillLighting(const Request &request)
{
    auto *const pLighting = qobject_cast<VexaLightingSelectorWidget *>(request.pEditor);
    if (!pLighting) {
        return RESULT_LEFT;
    }
    pLighting->setEnabled(!request.bReadOnly);
    pLighting->refill();
    return RESULT_FILLED;
}

Result fillFocusStep(const Request &request)
{
    auto *const pStep = qobject_cast<VexaPropFocusStepWidget *>(request.pEditor);
    if (!pStep) {
        return RESULT_LEFT;
    }
    if (request.bReadOnly) {
        EditorCommit::rollback(pStep); // it loses the focus
    }
    pStep->setEnabled(!request.bReadOnly);
    pStep->refill();
    return RESULT_FILLED;
}

Result fillScreen(const Request &request)
{
    auto *const pScreen = qobject_cast<VexaScreenSelectWidget *>(request.pEditor);
    if (!pScreen) {
        return RESULT_LEFT;
    }
    int nPage = 0;
    {
        const ItemLock lock(request.pItem);
        const auto *const pValue =
            dynamic_cast<const CTreeScreenSelectItemValue *>(request.pItem->value());
        if (!pValue) {
            return RESULT_LEFT;
        }
        nPage = pValue->m_nValue;
    }
    qInfo() << request.strNodeName;
    pScreen->setPage(nPage);
    pScreen->setEnabled(!request.bReadOnly);
    return RESULT_FILLED;
}

/// A node that is written and never read: its editor takes a value and shows none. Only a switch keeps what was written
/// last, or it could not be turned the other way.
Result fillWriteOnly(const Request &request)
{
    auto *const pEdit = qobject_cast<QPropertyLineEdit *>(request.pEditor);
    auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(request.pEditor);
    if (qobject_cast<CustomComboBox *>(request.pEditor)) {
        return fillEnumeration(request);
    }
    if (qobject_cast<CustomCheckBox *>(request.pEditor)) {
        return fillBoolean(request);
    }
    if (qobject_cast<CustomCalendar *>(request.pEditor)) {
        return fillCalendar(request);
    }
    if (pSpin && pSpin->cHasUserText()) {
        return RESULT_PUT_OFF;
    }
    const CommitPause pause(request);
    if (pEdit) {
        const auto *const pInteger = dynamic_cast<const CTreeIntergerItemValue *>(request.pValue);
        const bool bFloat = dynamic_cast<const CTreeFloatItemValue *>(request.pValue);
        const int nTextMode =
            bFloat ? QPropertyLineEdit::TEXT_FLOAT : QPropertyLineEdit::TEXT_STRING;
        pEdit->SetText(QString(), pInteger ? pInteger->type() : nTextMode);
        settleLineEdit(pEdit, request);
    } else if (pSpin) {
        pSpin->setLimits(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 1);
        pSpin->showText(QString());
        pSpin->setEnabled(true);
    }
    return RESULT_FILLED;
}

struct TagRule
{
    Result (*fill)(const Request &request);
    bool bReadFromDevice;
};

const TagRule *findRule(const QString &strTag)
{
    static const QHash<QString, TagRule> rules = {
        {QStringLiteral("Boolean"), {fillBoolean, true}},
        {QStringLiteral("Command"), {fillCommand, false}},
        {QStringLiteral("CustomDrawFeatureTag"), {fillDraw, false}},
        {QStringLiteral("CustomFormatTextEdit"), {fillFormatText, false}},
        {QStringLiteral("CustomLightingSelector"), {fillLighting, false}},
        {QStringLiteral("CustomScreen"), {fillScreen, false}},
        {QStringLiteral("CustomSpinBox"), {fillFocusStep, false}},
        {QStringLiteral("CustomTime"), {fillCalendar, false}},
        {QStringLiteral("CustomWatermarkFeatureTag"), {fillWatermark, false}},
        {QStringLiteral("Enumeration"), {fillEnumeration, true}},
        {QStringLiteral("Float"), {fillFloat, true}},
        {QStringLiteral("Integer"), {fillInteger, true}},
        {QStringLiteral("StringReg"), {fillString, true}},
    };
    const auto it = rules.constFind(strTag);
    return it == rules.constEnd() ? nullptr : &*it;
}

} // namespace

EditorFiller::Result EditorFiller::fill(const Request &request)
{
    const TagRule *const pRule = findRule(request.pItem->tagName());
    if (pRule && pRule->bReadFromDevice && !request.bCached) {
        if (request.bWriteOnly && !request.bReadOnly) {
            return fillWriteOnly(request);
        }
        showBlank(request.pEditor);
        return RESULT_FILLED;
    }
    return pRule ? pRule->fill(request) : RESULT_LEFT;
}

bool EditorFiller::isReadFromDevice(const QString &strTag)
{
    const TagRule *const pRule = findRule(strTag);
    return pRule && pRule->bReadFromDevice;
}
