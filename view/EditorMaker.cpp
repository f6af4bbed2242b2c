#include "view/EditorMaker.h"

#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "editors/QCustomReverseHintWidget.h"
#include "editors/VexaFeatureDrawWidget.h"
#include "editors/VexaLightingSelectorWidget.h"
#include "editors/VexaPropFocusStepWidget.h"
#include "editors/VexaScreenSelectWidget.h"
#include "editors/VexaStringFormatWidget.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CustomItemValues.h"
#include "model/IVexaFeatureWidget.h"
#include "view/EditorCommit.h"
#include "view/EditorValue.h"
#include "view/ItemNames.h"
#include "view/NodeNameRules.h"
#include "view/StringEditRules.h"
#include "view/VexaPropertySpinBox.h"
#include "view/VexaPropertyTreeDelegate.h"

#include <QHash>

namespace {

using EditorMaker::Request;

constexpr QLatin1String WATERMARK_TAG("CustomWatermarkFeatureTag"); // an editor in each column

bool appliesFont(const VexaPropertyTreeItem *pItem)
{
    const ItemLock lock(pItem);
    return pItem->value() && pItem->value()->m_bApplyEditorFont;
}

/// What all editors have that take a value.
template<typename Editor>
Editor *finish(Editor *pEditor, const Request &request, bool bFont)
{
    pEditor->setEnabled(false);
    // In a view the family comes from the parent. Setting it on a combo box would build its popup, for each of them.
    const QString strFamily =
        bFont ? Custom::globalFontFamily(Custom::LANGUAGE_ENGLISH) : QString();
    if (bFont && pEditor->font().family() != strFamily) {
        pEditor->cSetFontFamily(strFamily);
    }
    EditorCommit::connectSignals(pEditor, request.pDelegate);
    return pEditor;
}

QWidget *makeHint(const Request &request)
{
    const int nKind = NodeNameRules::hintKind(request.strNodeName);
    return nKind == NodeNameRules::NO_HINT ? nullptr
                                           : new QCustomReverseHintWidget(request.pParent, nKind);
}

QWidget *makeLineEdit(const Request &request)
{
    return finish(new QPropertyLineEdit(1, request.pParent), request, appliesFont(request.pItem));
}

QWidget *makeBoolean(const Request &request)
{
    auto *const pEditor =
        finish(new CustomCheckBox(4, request.pParent), request, appliesFont(request.pItem));
    pEditor->setFixedSize(pEditor->sizeHint());
    pEditor->setFixedHeight(EditorMaker::EDITOR_HEIGHT);
    return pEditor;
}

QWidget *makeCommand(const Request &request)
{
    return finish(new CustomPushButton(2, request.pParent), request,
                  request.pDelegate->parentType() == PARENT_FEATURE_TREE);
}

QWidget *makeInteger(const Request &request)
{
    return EditorValue::isTextInteger(request.pItem)
        ? makeLineEdit(request)
        : finish(new VexaPropertySpinBox(request.pParent), request, appliesFont(request.pItem));
}

QWidget *makeEnumeration(const Request &request)
{
    return finish(new CustomComboBox(1, 0, request.pParent), request, appliesFont(request.pItem));
}

QWidget *makeCalendar(const Request &request)
{
    const QColor dark(0x58, 0x5a, 0x5d);
    auto *const pCalendar = new CustomCalendar(2, request.pParent);
    pCalendar->cSetDateFormat(QString::fromLatin1(EditorCommit::DATE_FORMAT));
    pCalendar->cSetDateTime(QDateTime::currentDateTime());
    pCalendar->cSetBackgroundColor(dark);
    pCalendar->cGetLargeButton()->cSetBackgroundColor(dark);
    pCalendar->cGetLargeButton()->cSetFontColor(QColor(0xD9, 0xD9, 0xD9));
    pCalendar->cSetBorderColor(dark, Custom::STATUS_NORMAL, Custom::BORDER_LARGE_BUTTON);
    pCalendar->cSetBorderColor(QColor(0x32, 0x32, 0x32), Custom::STATUS_NORMAL,
                               Custom::BORDER_POPUP);
    return pCalendar;
}

QWidget *makeDraw(const Request &request)
{
    int nDrawType = -1;
    {
        const ItemLock lock(request.pItem);
        if (const auto *const pValue =
                dynamic_cast<const CTreeCustomDrawItemValue *>(request.pItem->value())) {
            nDrawType = pValue->m_nDrawType;
        }
    }
    if (nDrawType != 0 && nDrawType != 1) {
        return nullptr;
    }
    auto *const pEditor = new VexaFeatureDrawWidget(nDrawType, request.pParent);
    EditorCommit::connectSignals(pEditor, request.pDelegate);
    return pEditor;
}

/// One of the two nodes of the row; state and text come with the first refill.
QWidget *makeWatermark(const Request &request)
{
    return request.strNodeName.isEmpty()
        ? nullptr
        : finish(new CustomCheckBox(2, request.pParent), request, appliesFont(request.pItem));
}

/// The page that an editor stands in; null outside of pages.
IVexaFeatureWidget *ownerOf(QWidget *pParent)
{
    IVexaFeatureWidget *pOwner = nullptr;
    for (; pParent && !pOwner; pParent = pParent->parentWidget()) {
        pOwner = qobject_cast<IVexaFeatureWidget *>(pParent);
    }
    return pOwner;
}

QWidget *makeFormatText(const Request &request)
{
    auto *const pValue = dynamic_cast<CTreeFormatStringTextItemValue *>(request.pItem->value());
    if (!pValue || request.nColumn == 0) {
        return nullptr;
    }
    auto *const pEditor = new VexaStringFormatWidget(pValue, request.pParent);
    pEditor->setRowReadOnly(true);
    if (IVexaFeatureWidget *const pOwner = ownerOf(request.pParent)) {
        QObject::connect(pEditor, &VexaStringFormatWidget::SigFormatEditRequested, pOwner,
                         &IVexaFeatureWidget::SigFormatEditRequested);
    }
    return pEditor;
}

QWidget *makeLighting(const Request &request)
{
    return new VexaLightingSelectorWidget(request.pItem, request.pParent);
}

/// An editor that works on the value of its row itself.
template<typename Value, typename Editor>
QWidget *makeOnValue(const Request &request)
{
    auto *const pValue = dynamic_cast<Value *>(request.pItem->value());
    return pValue ? new Editor(pValue, request.pParent) : nullptr;
}

QWidget *makeString(const Request &request)
{
    if (request.strNodeName == QLatin1String("ManualSetTime")) {
        return makeCalendar(request);
    }
    QWidget *const pEditor = makeLineEdit(request);
    applyStringEditRules(static_cast<QPropertyLineEdit *>(pEditor), request.strNodeName);
    return pEditor;
}

} // namespace

QWidget *EditorMaker::make(const Request &request)
{
    using Maker = QWidget *(*)(const Request &);
    static const QHash<QString, Maker> makers = {
        {QStringLiteral("Boolean"), makeBoolean},
        {QStringLiteral("Command"), makeCommand},
        {QStringLiteral("CustomDrawFeatureTag"), makeDraw},
        {QStringLiteral("CustomFormatTextEdit"), makeFormatText},
        {QStringLiteral("CustomLightingSelector"), makeLighting},
        {QStringLiteral("CustomScreen"),
         makeOnValue<CTreeScreenSelectItemValue, VexaScreenSelectWidget>},
        {QStringLiteral("CustomSpinBox"),
         makeOnValue<CTreeHorSpinBoxItemValue, VexaPropFocusStepWidget>},
        {QStringLiteral("CustomTime"), makeCalendar},
        {QStringLiteral("CustomWatermarkFeatureTag"), makeWatermark},
        {QStringLiteral("Enumeration"), makeEnumeration},
        {QStringLiteral("Float"), makeLineEdit},
        {QStringLiteral("Integer"), makeInteger},
        {QStringLiteral("StringReg"), makeString},
    };
    const Maker maker = makers.value(request.pItem->tagName(), nullptr);
    QWidget *pEditor = nullptr;
    if (request.nColumn == 0 && !EditorMaker::hasTwoNodes(request.pItem)) {
        pEditor = makeHint(request);
    } else if (maker) {
        pEditor = maker(request);
    }
    if (pEditor) {
        pEditor->setObjectName(request.strNodeName);
        // Editors are shown before they have a place; one without any size would work one out then.
        pEditor->resize(EDITOR_HEIGHT, EDITOR_HEIGHT);
    }
    return pEditor;
}

bool EditorMaker::suits(const QWidget *pEditor, const VexaPropertyTreeItem *pItem)
{
    return pItem->tagName() != QLatin1String("Integer")
        || (qobject_cast<const QPropertyLineEdit *>(pEditor) != nullptr)
        == EditorValue::isTextInteger(pItem);
}

bool EditorMaker::hasTwoNodes(const VexaPropertyTreeItem *pItem)
{
    return pItem->tagName() == WATERMARK_TAG;
}

bool EditorMaker::hasNameEditor(const VexaPropertyTreeItem *pItem)
{
    return hasTwoNodes(pItem)
        || NodeNameRules::hintKind(nodeNameOf(pItem)) != NodeNameRules::NO_HINT;
}
