// What follows a write that came from a view, and any change of an item.

#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/AfterWriteRules.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"

#include <QMutexLocker>

#include <memory>

namespace {

QString nameOf(const VexaPropertyTreeItem *item)
{
    return item && item->value() ? item->value()->m_strNodeName : QString();
}

/// What the item holds now, invalid for no item.
QVariant valueOf(const VexaPropertyTreeItem *item)
{
    const std::unique_ptr<CTreeItemValue> value = item ? item->valueSnapshot() : nullptr;
    return value ? value->value() : QVariant();
}

} // namespace

bool VexaFeatureTree::afterSetFeatureValue(const QString &strNodeName)
{
    const TreeCallScope scope(this);
    m_strJustWritten.clear();
    return !cameraTask() || AfterWriteRules::run(*this, strNodeName);
}

void VexaFeatureTree::itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson)
{
    if (!pItem || !pItem->value() || m_nDeviceType == DEVICE_TYPE_CL) {
        return;
    }
    const TreeCallScope scope(this);
    const QString name = nameOf(pItem);
    tellObservers(pItem, bFromUiJson);
    if (scope.treeIsGoing()) {
        return;
    }
    if (name == QLatin1String("LDirectionEnable") || name == QLatin1String("DMCode")) {
        rereadSourceData(name);
    } else if (name == QLatin1String("BalanceWhiteAuto")) {
        const QVariant value = valueOf(propertyItemByName(name));
        if (value.isValid() && value.toLongLong() == 0) {
            freeWhiteBalance();
        }
    }
}

void VexaFeatureTree::itemVisibleStateChanged(VexaPropertyTreeItem *pItem)
{
    tellObservers(pItem, false);
}

void VexaFeatureTree::itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool)
{
    tellObservers(pItem, false);
}

void VexaFeatureTree::tellObservers(const VexaPropertyTreeItem *item, bool fromUiJson)
{
    if (!item || !item->value()) {
        return;
    }
    const TreeCallScope scope(this);
    const QString name = nameOf(item);
    QList<VexaFeatureObserverable *> observers;
    {
        const QMutexLocker locker(&m_mutex);
        observers = m_observers;
    }
    // On a copy, outside the mutex: an observer may call back into the tree, and take itself or another one out.
    for (VexaFeatureObserverable *observer : qAsConst(observers)) {
        {
            const QMutexLocker locker(&m_mutex);
            if (!m_observers.contains(observer)) {
                continue;
            }
        }
        observer->notifyFeatureChanged(name, fromUiJson);
    }
}

void VexaFeatureTree::rereadSourceData(const QString &changedNode)
{
    const QVariant protocol = valueOf(propertyItemByName(QStringLiteral("CommunicationProtocols")));
    const QString name =
        protocol.isValid() ? AfterWriteRules::sourceDataNode(protocol.toInt()) : QString();
    VexaPropertyTreeItem *item = propertyItemByName(name);
    if (!item) {
        return;
    }
    if (m_strJustWritten == changedNode) {
        getFeatureValueFromCamera(item);
    } else {
        // A change that a refresh found: the GUI thread asks no device then.
        UpdateFeatures(FEATURES_UPDATE_INVALIDATOR, {name}, QGetFeaturesThread::UPDATE_VALUE);
    }
}

void VexaFeatureTree::freeWhiteBalance()
{
    for (const char *name : {"BalanceRatioSelector", "BalanceRatio"}) {
        if (VexaPropertyTreeItem *item = propertyItemByName(QLatin1String(name))) {
            item->setReadOnly(m_lCameraID, false);
            item->notifyViewUpdate(m_lCameraID, -1, false, false);
        }
    }
}
