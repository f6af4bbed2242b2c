// Nodes that change by themselves, and the parameter sets of readers that the host shows in a table of its own.

#include "model/CTreeEnumationItemValue.h"
#include "model/ItemLocks.h"
#include "model/NodeDependencyMaps.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/VexaFeatureTree.h"

#include <limits>

bool VexaFeatureTree::IsPollingFeature(const QString &name, long long &periodOut) const
{
    qint64 period = 0;
    if (!m_pMaps->IsPollingFeature(name, period)) {
        return false;
    }
    periodOut = period;
    return true;
}

void VexaFeatureTree::OnTimerFeaturePolling()
{
    UpdateFeatures(FEATURES_UPDATE_POLLING, QStringList(), QGetFeaturesThread::UPDATE_REFRESH);
}

bool VexaFeatureTree::enumerationValue(const QString &name, qint64 &valueOut) const
{
    const VexaPropertyTreeItem *item = propertyItemByName(name);
    if (!item) {
        return false;
    }
    const ItemLock lock(item);
    const auto *value = dynamic_cast<const CTreeEnumationItemValue *>(item->value());
    if (!value) {
        return false;
    }
    valueOut = value->m_nValue;
    return true;
}

void VexaFeatureTree::UpdatePollingValue(const QString &name, const QString &value)
{
    qint64 set = 0;
    enumerationValue(QStringLiteral("PollingParam"), set);
    const bool isColumn = set >= 0 && set <= std::numeric_limits<int>::max();
    VexaMainFeatureWidget::instance()->UpdatePollingValue(m_lCameraID, name, value,
                                                          isColumn ? static_cast<int>(set) : -1);
}
