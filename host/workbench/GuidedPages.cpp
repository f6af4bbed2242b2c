#include "host/workbench/GuidedPages.h"

#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomLabel.h"
#include "host/workbench/CameraPage.h"
#include "host/workbench/FormatEdit.h"
#include "host/workbench/WorkbenchTexts.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QPointer>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int PAGE_INDEX = 1;
constexpr int BOX_WITH_TEXT = 2;
constexpr int TRIGGER_TIME = 1000; // ms
constexpr int SHORTEST_TRIGGER_TIME = 10; // ms
constexpr int LONGEST_TRIGGER_TIME = 60000; // ms

const QLatin1String TRIGGER_TIME_ROW("Custom_AutoTrigTime");
const QLatin1String TRIGGER_ROW("Custom_EnableAutoTrig");
const QLatin1String RULES_ROW("Custom_RegularExpressionFilterRules");

/// The descriptions of pages; each counts for devices that have the node named at its top.
QDomElement descriptionFor(const VexaFeatureTree &tree)
{
    static const QString files[] = {QStringLiteral(":/workbench/code_reader_pages.xml")};
    for (const QString &strFile : files) {
        QFile file(strFile);
        QDomDocument document;
        if (file.open(QIODevice::ReadOnly) && document.setContent(&file)
            && tree.propertyItemByName(
                document.documentElement().attribute(QStringLiteral("Node")))) {
            return document.documentElement();
        }
    }
    return {};
}

bool isNode(const VexaPropertyTreeItem &item, const char *pName)
{
    item.updateLock();
    const bool bSame = item.value() && item.value()->m_strNodeName == QLatin1String(pName);
    item.updateUnlock();
    return bSame;
}

/// The value of an integer item that was read; the alternative for any other.
qint64 integerOf(const VexaPropertyTreeItem *pItem, qint64 nOtherwise)
{
    if (!pItem || !pItem->isValueCached()) {
        return nOtherwise;
    }
    const std::unique_ptr<CTreeItemValue> snapshot = pItem->valueSnapshot();
    const auto *pValue = dynamic_cast<const CTreeIntergerItemValue *>(snapshot.get());
    return pValue ? pValue->m_nValue : nOtherwise;
}

} // namespace

GuidedPages::GuidedPages(QWidget *parent)
    : IVexaFeatureWidget(PAGE_INDEX, parent)
    , m_pBasicOnly(new CustomCheckBox(BOX_WITH_TEXT, this))
    , m_pNoPages(new CustomLabel(this))
    , m_pView(findChild<QTreeView *>())
{
    // The page descriptions stand in the workbench's resource, in a static library.
    Q_INIT_RESOURCE(workbench);
    setObjectName(QStringLiteral("GuidedPages"));
    m_pBasicOnly->setObjectName(QStringLiteral("BasicPagesOnly"));
    m_pNoPages->setAlignment(Qt::AlignCenter);
    m_pNoPages->cSetFontSize(14);
    m_pNoPages->cSetFontColor(QColor(QStringLiteral("#BEBEBE")));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 16, 24, 0);
    column->setSpacing(12);
    auto *top = new QHBoxLayout;
    top->addWidget(m_pBasicOnly);
    top->addStretch();
    column->addLayout(top);
    column->addWidget(m_pView, 1);
    column->addWidget(m_pNoPages, 1);
    setTabOrder(m_pBasicOnly, m_pView);
    connect(m_pBasicOnly, &QCheckBox::clicked, this, [this] { toggleShowBasic(shownCameraID()); });
    connect(this, &IVexaFeatureWidget::SigFormatEditRequested, this,
            [this](VexaPropertyTreeItem *pFormat, VexaPropertyTreeItem *pSource) {
                FormatEdit::edit(this, shownCameraID(), pFormat, pSource,
                                 &GuidedPages::formatObjection);
            });
    retranslate();
    showState();
}

void GuidedPages::showCamera(long lCameraID)
{
    setCameraID(lCameraID);
    showState();
}

void GuidedPages::removeCameraID(long lCameraID)
{
    IVexaFeatureWidget::removeCameraID(lCameraID);
    showState();
}

void GuidedPages::showState()
{
    const bool bPages = shownCameraID() != NO_CAMERA_ID;
    m_pView->setVisible(bPages);
    m_pBasicOnly->setVisible(bPages);
    m_pBasicOnly->setChecked(m_showBasicOnly.value(int(shownCameraID()), false));
    m_pNoPages->setVisible(!bPages);
}

VexaFeatureTree *GuidedPages::tree() const
{
    return CameraPage::tree(shownCameraID());
}

VexaPropertyTreeItem *GuidedPages::createPageRoot()
{
    VexaFeatureTree *const pTree = tree();
    const QDomElement description = pTree ? descriptionFor(*pTree) : QDomElement();
    if (description.isNull()) {
        return nullptr;
    }
    // One of the names that no device of the other generation has.
    m_platformHints.insert(int(shownCameraID()), QStringLiteral("Node_LineOutDelay"));
    auto *const pRoot = new VexaPropertyTreeItem;
    pRoot->setIsFeatureTreeItem(false);
    createPageItems(pRoot, description, pTree);
    prepareLights(pRoot);
    prepareFocus(pRoot);
    prepareTrigger(pRoot);
    return pRoot;
}

void GuidedPages::prepareLights(VexaPropertyTreeItem *pRoot)
{
    const auto feature = [this](const char *pName) {
        return tree()->propertyItemByName(QString::fromLatin1(pName));
    };
    QList<VexaPropertyTreeItem *> shared;
    for (const char *pName :
         {"LightingBrightness", "LightingTime", "LightingDelay", "LightingAhead"}) {
        shared.append(feature(pName));
    }
    setLightingItems(pageItem(pRoot, QStringLiteral("Custom_LightingSelector")), shared,
                     feature("LightingAllOff"), feature("LightingAllOn"));
}

void GuidedPages::prepareFocus(VexaPropertyTreeItem *pRoot)
{
    VexaPropertyTreeItem *const pRow = pageItem(pRoot, QStringLiteral("Custom_FocusSetting"));
    VexaPropertyTreeItem *const pPosition =
        tree()->propertyItemByName(QStringLiteral("FocusPosition"));
    if (!pRow || !pPosition) {
        return;
    }
    pRow->setTagName(QStringLiteral("CustomSpinBox"));
    setRowCamera(pRow, shownCameraID());
    setSpinItems(pRow, tree()->propertyItemByName(QStringLiteral("FocusStepMinus")),
                 tree()->propertyItemByName(QStringLiteral("FocusStepPlus")), pPosition);
    followFocusStep(pRow);
}

void GuidedPages::followFocusStep(VexaPropertyTreeItem *pFocusRow)
{
    VexaFeatureTree *const pTree = tree();
    if (!pFocusRow || !pTree) {
        return;
    }
    const auto read = [pTree](const char *pName, qint64 nOtherwise) {
        return integerOf(pTree->propertyItemByName(QString::fromLatin1(pName)), nOtherwise);
    };
    // While the automatic focus runs the lens is not the user's.
    setSpinStep(pFocusRow, int(read("FocusStep", 1)), read("AutoFocusStat", 1) == 0);
}

void GuidedPages::prepareTrigger(VexaPropertyTreeItem *pRoot)
{
    VexaPropertyTreeItem *const pTime = pageItem(pRoot, TRIGGER_TIME_ROW);
    VexaPropertyTreeItem *const pSwitch = pageItem(pRoot, TRIGGER_ROW);
    if (!pTime || !pSwitch) {
        return;
    }
    pTime->setTagName(QStringLiteral("Integer"));
    auto *const pValue = dynamic_cast<CTreeIntergerItemValue *>(pTime->value());
    if (pValue) {
        pValue->m_nValue = TRIGGER_TIME;
        pValue->m_nMinValue = SHORTEST_TRIGGER_TIME;
        pValue->m_nMaxValue = LONGEST_TRIGGER_TIME;
        pValue->m_nIncValue = 1;
    }
    pSwitch->setTagName(QStringLiteral("Boolean"));
    // A page that was laid before may have left it on.
    tree()->SetAutoSoftwareTrig(false, 0);
    for (VexaPropertyTreeItem *pRow : {pTime, pSwitch}) {
        pRow->setValueCached(true);
    }
}

VexaPropertyTreeItem *GuidedPages::row(const char *pName) const
{
    return pageItem(m_rootItems.value(int(shownCameraID()), nullptr), QString::fromLatin1(pName));
}

bool GuidedPages::setTriggerRow(const QString &strName, const QVariant &value)
{
    VexaPropertyTreeItem *const pSwitch = row(TRIGGER_ROW.latin1());
    const bool bTime = strName == TRIGGER_TIME_ROW;
    const bool bOn = bTime ? pSwitch && pSwitch->value()->value().toBool() : value.toBool();
    const qint64 nTime =
        bTime ? value.toLongLong() : integerOf(row(TRIGGER_TIME_ROW.latin1()), TRIGGER_TIME);
    tree()->SetAutoSoftwareTrig(bOn, static_cast<unsigned int>(nTime));
    return true;
}

bool GuidedPages::setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                                  const QVariant &oNodeValue)
{
    VexaFeatureTree *const pTree = tree();
    if (!pTree) {
        return false;
    }
    if (strNodeName == TRIGGER_TIME_ROW || strNodeName == TRIGGER_ROW) {
        return setTriggerRow(strNodeName, oNodeValue);
    }
    if (strNodeName == RULES_ROW) {
        FormatEdit::edit(this, shownCameraID(),
                         pTree->propertyItemByName(QStringLiteral("RegularExpressionRules")),
                         nullptr, &GuidedPages::formatObjection);
        return true;
    }
    return pTree->setFeatureValue(strNodeType, strNodeName, oNodeValue);
}

bool GuidedPages::afterSetFeatureValue(const QString &strNodeName)
{
    VexaFeatureTree *const pTree = tree();
    return strNodeName.startsWith(QLatin1String("Custom_")) || !pTree
        || pTree->afterSetFeatureValue(strNodeName);
}

void GuidedPages::itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson)
{
    const bool bFocus = isNode(*pItem, "FocusStep") || isNode(*pItem, "AutoFocusStat");
    IVexaFeatureWidget::itemValueChanged(pItem, bFromUiJson);
    if (bFocus) {
        followFocusStep(row("Custom_FocusSetting"));
    }
}

void GuidedPages::preparePage(int)
{
    static const struct
    {
        const char *row;
        const char *titleKey;
    } titles[] = {{"Custom_FocusSetting", "lang_workbench_adjustfocus"},
                  {"Custom_AutoTrigTime", "lang_workbench_autotriggertime"},
                  {"Custom_EnableAutoTrig", "lang_workbench_autotrigger"}};
    for (const auto &row : titles) {
        m_stepPageNames.insert(QString::fromLatin1(row.row), workbenchText(row.titleKey));
    }
    takeFeatureTitles(m_rootItems.value(int(shownCameraID()), nullptr));
}

void GuidedPages::takeFeatureTitles(VexaPropertyTreeItem *pBranch)
{
    for (int nRow = 0; pBranch && nRow < pBranch->childCount(); ++nRow) {
        VexaPropertyTreeItem *const pItem = pBranch->child(nRow);
        takeFeatureTitles(pItem);
        if (pItem->isFeatureTreeItem()) {
            pItem->updateLock();
            const CTreeItemValue &value = *pItem->value();
            if (value.m_strStepDisplayNameCn.isEmpty()) {
                m_stepPageNames.insert(value.m_strNodeName, value.translateName());
            }
            pItem->updateUnlock();
        }
    }
}

void GuidedPages::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    IVexaFeatureWidget::changeEvent(event);
}

void GuidedPages::retranslate()
{
    m_pBasicOnly->setText(workbenchText("lang_workbench_basicpages"));
    m_pNoPages->setText(workbenchText("lang_workbench_nopages"));
    m_pView->setAccessibleName(workbenchText("lang_workbench_guidedpages"));
}
