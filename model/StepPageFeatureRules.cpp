// The features of a page that are more than the tree's own item shown a second time.

#include "DeviceTaskModule/QCameraTask.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CustomItemValues.h"
#include "model/CustomNodeNames.h"
#include "model/ItemLocks.h"
#include "model/StepPageBuilder.h"
#include "model/StepPageRows.h"
#include "model/StepPages.h"
#include "tree/CameraLookup.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/VexaFeatureTree.h"

#include <QDebug>

#include <algorithm>
#include <iterator>

namespace {

const QString &lightingSelector()
{
    static const QString name = QStringLiteral("LightingSelector");
    return name;
}

/// Product families whose lights are single switches.
bool hasSimpleLights(qint64 nProductType)
{
    return nProductType == 16 || nProductType == 17;
}

int segmentCount(const VexaPropertyTreeItem *pSelector)
{
    const auto *pValue = dynamic_cast<const CTreeEnumationItemValue *>(pSelector->value());
    const QStringList entries = pValue ? pValue->getAllNameMap().keys() : QStringList();
    return int(std::count_if(entries.cbegin(), entries.cend(), [](const QString &strEntry) {
        return !strEntry.contains(QLatin1String("all"), Qt::CaseInsensitive);
    }));
}

/// `m_nLightingType` by the number of segments.
int lightingTypeOf(int nSegments)
{
    static const struct
    {
        int nSegments;
        int nType;
    } types[] = {{3, 2}, {4, 0}, {6, 1}};
    const auto row =
        std::find_if(std::begin(types), std::end(types),
                     [nSegments](const auto &type) { return type.nSegments == nSegments; });
    if (row == std::end(types)) {
        qWarning() << "no picture for a light of" << nSegments << "segments";
        return 0;
    }
    return row->nType;
}

} // namespace

QCameraTask *StepPageBuilder::task() const
{
    return cameraTaskOf(m_site.lCameraID);
}

bool StepPageBuilder::isImplemented(const QString &strNode) const
{
    QCameraTask *const pTask = task();
    return pTask && pTask->GetAccessMode(strNode, nullptr) != NODE_NI;
}

bool StepPageBuilder::readProductType(qint64 &nType) const
{
    QCameraTask *const pTask = task();
    _NODE_INT_VALUE_ record{};
    if (!pTask
        || !pTask->GetIntegerValue(QStringLiteral("ProductType"), &record, nullptr, false, false)) {
        return false;
    }
    nType = record.value;
    return true;
}

StepPageBuilder::Item *StepPageBuilder::newRowFor(Item *pFeature, Item *pParent,
                                                  const QString &strName, const QString &strTag)
{
    Item *const pRow = newRow(pParent, strName, strTag);
    m_site.rows.follow(m_site.lCameraID, pFeature, pRow,
                       StepPageRows::FOLLOW_VISIBLE | StepPageRows::FOLLOW_READ_ONLY, m_site.pView);
    return pRow;
}

void StepPageBuilder::layLightEnable(Item *pParent, const Entry &entry)
{
    const bool bSelector = isImplemented(lightingSelector());
    qint64 nType = 0;
    if (!readProductType(nType) || !hasSimpleLights(nType)) {
        const bool bOtherLight =
            item(QStringLiteral("AmingLightEnable")) || item(QStringLiteral("LaserEnable"));
        if (!bOtherLight || bSelector) {
            return;
        }
    }
    Item *const pFeature = item(entry.strName);
    attach(pFeature, pParent, entry);
    if (pFeature && pFeature->parent(m_site.nPageIndex) == pParent
        && pFeature->tagName() != QLatin1String("Boolean")) {
        pFeature->changeTagName(QStringLiteral("Boolean"), m_site.lCameraID);
        m_site.tree.getFeatureValueFromCamera(pFeature);
    }
}

void StepPageBuilder::layLightingSelector(Item *pParent, const Entry &entry)
{
    Item *const pSelector = item(lightingSelector());
    Item *const pEnable = item(QStringLiteral("LightingEnable"));
    m_site.tree.updateFeature(pSelector, QGetFeaturesThread::UPDATE_VISIBLE_VALUE);
    if (!pSelector || !pSelector->visible() || !isImplemented(lightingSelector()) || !pEnable) {
        return;
    }
    qint64 nType = 0;
    if (readProductType(nType) && hasSimpleLights(nType)) {
        qInfo().noquote() << QStringLiteral("createLightingSelectorItem ProductType = ")
                + QString::number(nType);
        attach(pSelector, pParent, entry);
        return;
    }
    Item *const pRow =
        newRowFor(pSelector, pParent, entry.strName, QStringLiteral("CustomLightingSelector"));
    setStepNames(pRow, entry);
    auto *const pValue = dynamic_cast<CTreeCustomLightingSelectorItemValue *>(pRow->value());
    if (!pValue) {
        return;
    }
    pValue->m_nCameraID = int(m_site.lCameraID);
    pValue->m_pSelectorItem = pSelector;
    pValue->m_pEnableItem = pEnable;
    pValue->m_nLightingType = lightingTypeOf(segmentCount(pSelector));
    _NODE_INT_VALUE_ icon{};
    QCameraTask *const pTask = task();
    if (pTask
        && pTask->GetIntegerValue(QStringLiteral("LightingSelector_Icon_Inq_Reg"), &icon, nullptr,
                                  false, false)) {
        pValue->m_nReserved = int(icon.value);
    }
}

void StepPageBuilder::layFocusStep(Item *pParent, const Entry &entry)
{
    Item *const pStep = item(entry.strName);
    attach(pStep, pParent, entry);
    if (!pStep || hasTuningCommand()) {
        return;
    }
    Item *const pRow = newRowFor(pStep, pParent, QStringLiteral("Custom_FocusSetting"), QString());
    pRow->value()->m_strDisplayName = QStringLiteral("Adjust Focus");
}

void StepPageBuilder::laySelfTrigger(Item *pParent, const Entry &)
{
    Item *const pSource = StepPages::findRow(pParent, QStringLiteral("TriggerSource"));
    const auto *const pValue =
        pSource ? dynamic_cast<const CTreeEnumationItemValue *>(pSource->value()) : nullptr;
    if (!pValue) {
        return;
    }
    // The host triggers by software, so a device without a trigger of its own gets the rows too.
    if (!pValue->getAllNameMap().contains(QStringLiteral("SelfTrigger"))) {
        qInfo() << "the device has no self trigger of its own";
    }
    static const struct
    {
        const char *name;
        const char *title;
    } rows[] = {{"Custom_AutoTrigTime", "Auto Trigger Time(ms)"},
                {"Custom_EnableAutoTrig", "Enable Auto Trigger"}};
    for (const auto &row : rows) {
        Item *const pRow = newRow(pParent, QString::fromLatin1(row.name));
        pRow->setReadOnly(m_site.lCameraID, false);
        pRow->value()->m_strDisplayName = QString::fromLatin1(row.title);
    }
}

void StepPageBuilder::layRegularExpression(Item *pParent, const Entry &entry)
{
    if (Item *const pRules = item(entry.strName)) {
        Item *const pRow =
            newRowFor(pRules, pParent, QStringLiteral("Custom_RegularExpressionFilterRules"),
                      QStringLiteral("Command"));
        setStepNames(pRow, entry);
    }
}

void StepPageBuilder::layScreenHomepage(Item *pParent, const Entry &entry)
{
    Item *const pScreen = item(entry.strName);
    if (!pScreen) {
        return;
    }
    Item *const pRow =
        newRow(pParent, QStringLiteral("Custom_ScreenHomepage"), QStringLiteral("CustomScreen"));
    setStepNames(pRow, entry);
    if (auto *const pValue = dynamic_cast<CTreeScreenSelectItemValue *>(pRow->value())) {
        pValue->m_nCameraID = int(m_site.lCameraID);
    }
    m_site.rows.follow(m_site.lCameraID, pScreen, pRow, StepPageRows::FOLLOW_ALL, m_site.pView);
}

void StepPageBuilder::layFormat(Item *pParent, const Entry &entry)
{
    Item *const pFormat = item(entry.strName);
    if (!pFormat) {
        return;
    }
    Item *const pRow =
        newRow(pParent, customNodeOf(entry.strName), QStringLiteral("CustomFormatTextEdit"));
    setStepNames(pRow, entry);
    if (auto *const pValue = dynamic_cast<CTreeFormatStringTextItemValue *>(pRow->value())) {
        pValue->m_nCameraID = int(m_site.lCameraID);
        pValue->m_pFormatItem = pFormat;
        pValue->m_pSourceDataItem = item(sourceDataNodeOf(entry.strName));
    }
    m_site.rows.follow(m_site.lCameraID, pFormat, pRow, StepPageRows::FOLLOW_ALL, m_site.pView);
}
