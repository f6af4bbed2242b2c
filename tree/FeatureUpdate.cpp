#include "tree/FeatureUpdate.h"

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"
#include "DeviceTaskModule/NodeValues.h"
#include "DeviceTaskModule/VexaCameraTranslator.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/ItemLocks.h"
#include "tree/FeatureToolTip.h"

#include <QDebug>

#include <algorithm>

namespace {

const QString &visibilityInvisible()
{
    static const QString text = QStringLiteral("Invisible");
    return text;
}

/// Tags of rows that may be shown; a row without a tag is one of a node that the description lacks.
bool isShownTag(const QString &tagName)
{
    static const QLatin1String TAGS[] = {
        QLatin1String("Integer"),  QLatin1String("Float"),   QLatin1String("Enumeration"),
        QLatin1String("Boolean"),  QLatin1String("Command"), QLatin1String("StringReg"),
        QLatin1String("Category"), QLatin1String("IntReg"),
    };
    return tagName.isEmpty()
        || std::any_of(std::begin(TAGS), std::end(TAGS),
                       [&tagName](QLatin1String tag) { return tagName == tag; });
}

VexaCameraTranslator *translatorOf(long int cameraId)
{
    return cameraId == NO_CAMERA_ID
        ? nullptr
        : VexaCameraTranslatorManager::getInstance()->getCameraTranslator(
            static_cast<int>(cameraId));
}

} // namespace

FeatureUpdate::FeatureUpdate(const FeatureUpdateContext &context, VexaPropertyTreeItem *item,
                             QGetFeaturesThread::UpdateStatusFlags status)
    : m_context(context)
    , m_lCameraID(context.cameraId)
    , m_pItem(item)
    , m_status(status)
    , m_reader(context.cameraId)
{
}

FeatureUpdate::~FeatureUpdate() = default;

bool FeatureUpdate::IsVisibleAtLevel(const QString &visibility, int userLevel)
{
    if (visibility.isEmpty()) {
        return true;
    }
    static const struct
    {
        QLatin1String visibility;
        int lastLevel; ///< the highest level number that still shows it
    } levels[] = {
        {QLatin1String("Guru"), 0}, {QLatin1String("Expert"), 1}, {QLatin1String("Beginner"), 2}};
    for (const auto &row : levels) {
        if (visibility == row.visibility) {
            return userLevel >= 0 && userLevel <= row.lastLevel;
        }
    }
    return false;
}

QVariant FeatureUpdate::readInteger() const
{
    const auto *value = dynamic_cast<const CTreeIntergerItemValue *>(m_pValue.get());
    return value ? QVariant(value->m_nValue) : QVariant();
}

void FeatureUpdate::run()
{
    if (!m_pItem || m_lCameraID == NO_CAMERA_ID) {
        return;
    }
    {
        // A page may give a row another tag, and with it another value, meanwhile.
        const ItemLock lock(m_pItem);
        if (!m_pItem->value()) {
            return;
        }
        m_strNodeName = m_pItem->value()->m_strNodeName;
        m_strTagName = m_pItem->tagName();
    }
    m_pFacts = m_context.facts.find(m_strNodeName);
    if (!m_pFacts) {
        qCritical("GetDomElementNode failed.");
        return;
    }
    if (m_strNodeName == QLatin1String("Brightness")) {
        qDebug("Brightness");
    }
    m_nPublications = m_pItem->publications();
    m_nReading = m_pItem->beginReading();

    if (m_status & (QGetFeaturesThread::UPDATE_VISIBILITY | QGetFeaturesThread::UPDATE_ACCESS)) {
        switch (readAccess()) {
        case Access::Unknown:
            return;
        case Access::Hidden:
            hide();
            return;
        case Access::Goes:
            break;
        }
    }
    // The wish is told first: whether the value is read depends on what is shown then.
    if (m_bAccessRead) {
        publishTexts();
    }
    const bool readsValue = (m_status & QGetFeaturesThread::UPDATE_VALUE)
        || ((m_status & QGetFeaturesThread::UPDATE_VISIBLE_VALUE) && isAnyRowVisible());
    if (readsValue && !GetFeatureValue()) {
        m_pValue.reset();
    }
    publish();
}

bool FeatureUpdate::isAnyRowVisible() const
{
    const QVector<VexaPropertyTreeItem *> others =
        m_pItem->visible() ? QVector<VexaPropertyTreeItem *>() : m_pItem->otherRows();
    return m_pItem->visible()
        || std::any_of(others.cbegin(), others.cend(),
                       [](const VexaPropertyTreeItem *row) { return row->visible(); });
}

FeatureUpdate::Access FeatureUpdate::readAccess()
{
    bool unreachable = false;
    const int mode = m_reader.accessMode(m_strNodeName, unreachable);
    if (unreachable) {
        return Access::Unknown;
    }
    if (mode != NODE_WO && mode != NODE_RO && mode != NODE_RW) {
        return Access::Hidden;
    }
    m_bReadOnlyByAccess = mode == NODE_RO;
    m_bWriteOnly = mode == NODE_WO;
    translateTexts();

    const PointerAnswer available = m_reader.IsAvailable(m_pFacts->isAvailable);
    if (available == PointerAnswer::Unreachable) {
        return Access::Unknown;
    }
    m_bAvailable = available == PointerAnswer::Yes;
    if (m_status & QGetFeaturesThread::UPDATE_VISIBILITY) {
        const Access decided = decideVisibility();
        if (decided != Access::Goes) {
            return decided;
        }
    }
    if (m_status & QGetFeaturesThread::UPDATE_ACCESS) {
        const PointerAnswer locked = m_reader.IsLocked(m_pFacts->isLocked);
        if (locked == PointerAnswer::Unreachable) {
            return Access::Unknown;
        }
        m_bReadOnly = !m_bAvailable || locked == PointerAnswer::Yes || m_bReadOnlyByAccess;
    }
    m_bAccessRead = true;
    return Access::Goes;
}

void FeatureUpdate::translateTexts()
{
    bool needsName = false;
    bool needsDescription = false;
    {
        const ItemLock lock(m_pItem);
        needsName = m_pItem->value()->m_strTranslateName.isEmpty();
        needsDescription = m_pItem->value()->m_strDescriptionTrans.isEmpty();
    }
    VexaCameraTranslator *translator =
        needsName || needsDescription ? translatorOf(m_lCameraID) : nullptr;
    if (translator && needsName && !m_pFacts->displayName.isEmpty()) {
        m_strTranslateName = translator->getPropDisplayNameTrans(m_strNodeName);
    }
    if (translator && needsDescription && !m_pFacts->description.isEmpty()) {
        m_strDescriptionTrans = translator->getPropDescriptionTrans(m_strNodeName);
    }
}

FeatureUpdate::Access FeatureUpdate::decideVisibility()
{
    if (!isShownTag(m_strTagName)) {
        return Access::Hidden;
    }
    switch (m_reader.IsImplemented(m_pFacts->isImplemented)) {
    case PointerAnswer::Unreachable:
        return Access::Unknown;
    case PointerAnswer::No:
        return Access::Hidden;
    case PointerAnswer::Yes:
        break;
    }
    // By the element's tag: a category's row carries none of its own.
    if (m_pFacts->tagName == QLatin1String("Category") && !m_bAvailable) {
        return Access::Hidden;
    }
    m_bVisible = IsVisibleAtLevel(m_pFacts->visibility, QLocalCfg::Instance()->GetUserLevel());
    return Access::Goes;
}

bool FeatureUpdate::GetFeatureValue()
{
    if (!m_bWriteOnly) {
        m_pValue = m_reader.readValue(m_strTagName, m_strNodeName);
    } else if (m_strTagName == QLatin1String("Enumeration")) {
        m_pValue = CTreeItemValue::create(m_strTagName); // nothing but its entries
    }
    auto *enumeration = dynamic_cast<CTreeEnumationItemValue *>(m_pValue.get());
    if (!enumeration) {
        return m_pValue != nullptr;
    }
    enumeration->m_strNodeName = m_strNodeName;
    m_bEntriesRead = m_reader.readEntries(*m_pFacts, m_entries);
    if (!m_bEntriesRead) {
        return false;
    }
    for (const EnumEntryReading &entry : qAsConst(m_entries)) {
        AddEnumEntry(entry);
    }
    if (!m_bWriteOnly) {
        enumeration->setDeviceValue(static_cast<quint32>(enumeration->m_nValue));
    }
    return true;
}

void FeatureUpdate::AddEnumEntry(const EnumEntryReading &entry)
{
    if (!entry.implementedAndAvailable || entry.locked) {
        return;
    }
    QString displayName = entry.facts.displayName;
    if (displayName == QLatin1String(" Mode") && VexaInterface::isNeutralVision()) {
        displayName = QStringLiteral("Advanced Mode");
    }
    if (displayName.isEmpty()) {
        displayName = entry.facts.name;
    }
    if (displayName == QLatin1String("Raw")
        && m_context.items.contains(QStringLiteral("RawModeEnable"))) {
        return;
    }
    static_cast<CTreeEnumationItemValue *>(m_pValue.get())
        ->updateDisplayName(displayName, entry.facts.name,
                            VexaInterface::string2Int(entry.facts.valueText), m_lCameraID);
}

bool FeatureUpdate::wasCrossed() const
{
    return m_nReading != 0 && m_pItem->publications() != m_nPublications;
}

bool FeatureUpdate::mayPublish(VexaPropertyTreeItem::ReadingPart part)
{
    const bool isNewest = m_pItem->publishReading(m_nReading, part);
    m_nPublications += isNewest ? 1 : 0;
    return isNewest;
}

void FeatureUpdate::hide()
{
    const TellingLock telling;
    bool publishes = false;
    {
        const ItemLock lock(m_pItem);
        publishes = mayPublish(VexaPropertyTreeItem::READING_VISIBILITY);
    }
    if (publishes) {
        m_pItem->setVisibilityString(visibilityInvisible());
        m_pItem->setVisible(false, m_lCameraID, true);
    }
}

void FeatureUpdate::keepTexts(VexaPropertyTreeItem *item) const
{
    CTreeItemValue *value = item->value();
    if (!value) {
        return;
    }
    const struct
    {
        const QString &read;
        QString &kept;
    } texts[] = {
        {m_pFacts->displayName, value->m_strDisplayName},
        {m_strTranslateName, value->m_strTranslateName},
        {m_pFacts->description, value->m_strDescription},
        {m_strDescriptionTrans, value->m_strDescriptionTrans},
    };
    for (const auto &row : texts) {
        // Nearly always the text of the last pass, and then the same string.
        if (!row.read.isEmpty() && !row.kept.isSharedWith(row.read)) {
            row.kept = row.read;
        }
    }
}

void FeatureUpdate::publishTexts()
{
    // From the decision to the telling, so that another reading cannot come in between.
    const TellingLock telling;
    const QVector<VexaPropertyTreeItem *> others = m_pItem->otherRows();
    for (VexaPropertyTreeItem *row : others) {
        const ItemLock lock(row);
        keepTexts(row);
    }
    bool publishesVisibility = false;
    {
        const ItemLock lock(m_pItem);
        keepTexts(m_pItem);
        publishesVisibility = mayPublish(VexaPropertyTreeItem::READING_VISIBILITY);
    }
    if (publishesVisibility) {
        m_pItem->setVisibilityString(m_pFacts->visibility);
        if (m_status & QGetFeaturesThread::UPDATE_VISIBILITY) {
            m_pItem->setVisible(m_bVisible, m_lCameraID, true);
        }
    }
}

void FeatureUpdate::publishValue()
{
    // A value that was read for another kind of row is nobody's.
    if (m_pItem->tagName() != m_strTagName || !mayPublish(VexaPropertyTreeItem::READING_VALUE)) {
        return;
    }
    CTreeItemValue *value = m_pItem->value();
    if (auto *integer = dynamic_cast<CTreeIntergerItemValue *>(value)) {
        static_cast<CTreeIntergerItemValue *>(m_pValue.get())->m_strRepresentation =
            integer->m_strRepresentation;
    }
    value->copy(m_pValue.get(), false);
    m_pItem->setValueCached(!m_bWriteOnly);
}

void FeatureUpdate::publish()
{
    const bool publishesAccess = m_bAccessRead && (m_status & QGetFeaturesThread::UPDATE_ACCESS);
    bool changesKind = false; // readable or write only
    {
        const TellingLock telling;
        bool accessIsNewest = false;
        {
            const ItemLock lock(m_pItem);
            if (m_pValue) {
                publishValue();
            }
            if (publishesAccess) {
                accessIsNewest = mayPublish(VexaPropertyTreeItem::READING_ACCESS);
                auto *integer = dynamic_cast<CTreeIntergerItemValue *>(m_pItem->value());
                if (integer && m_strTagName == QLatin1String("Integer")) {
                    integer->m_strRepresentation = m_pFacts->representation;
                }
            }
        }
        if (accessIsNewest) {
            m_pItem->setReadOnly(m_lCameraID, m_bReadOnly);
            changesKind = m_pItem->isWriteOnly() != m_bWriteOnly;
            if (changesKind) {
                m_pItem->setWriteOnly(m_bWriteOnly);
            }
        }
    }
    if (publishesAccess) {
        publishToolTips();
    }
    if (changesKind) {
        m_pItem->notifyViewUpdate(m_lCameraID, -1, false, false);
    } else {
        m_pItem->endUpdateItem(m_lCameraID);
    }
}

void FeatureUpdate::publishToolTips()
{
    if (!m_bEntriesRead && m_pFacts->tagName == QLatin1String("Enumeration")
        && !m_reader.readEntries(*m_pFacts, m_entries)) {
        return;
    }
    // The texts are long and nearly always those of the last pass.
    const bool valueRead = m_pItem->isValueCached();
    QByteArray state;
    {
        const ItemLock lock(m_pItem);
        state = FeatureToolTip::stateOf(*m_pItem->value(), valueRead, m_entries);
    }
    if (m_pItem->toolTipsAreOf(state)) {
        return;
    }
    const std::unique_ptr<CTreeItemValue> snapshot = m_pItem->valueSnapshot();
    FeatureToolTipSource source;
    source.facts = m_pFacts;
    source.value = snapshot.get();
    source.valueRead = valueRead;
    source.entries = m_entries;
    m_pItem->setToolTips(FeatureToolTip::CreateToolTip(source, QStringLiteral("ENG")),
                         FeatureToolTip::CreateToolTip(source, QStringLiteral("CH")), state);
}
