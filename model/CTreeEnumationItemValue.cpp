#include "model/CTreeEnumationItemValue.h"

#include "DeviceTaskModule/VexaCameraTranslator.h"
#include "ShellServicesModule/COMMONINTERFACE.h"

#include <QMutexLocker>

#include <utility>

CTreeEnumationItemValue::CTreeEnumationItemValue() = default;
CTreeEnumationItemValue::~CTreeEnumationItemValue() = default;

QString CTreeEnumationItemValue::displayValue() const
{
    const QMutexLocker locker(&m_mutex);
    return m_enumationMap.value(m_nValue);
}

QVariant CTreeEnumationItemValue::value() const
{
    const QMutexLocker locker(&m_mutex);
    return m_nValue;
}

void CTreeEnumationItemValue::setValue(const QVariant &value)
{
    const QMutexLocker locker(&m_mutex);
    // Through 32 bits on purpose: the editors exchange entries as int.
    m_nValue = value.toInt();
}

QString CTreeEnumationItemValue::createCurrentStauts(bool bReadOnly)
{
    QString strStatus = CTreeItemValue::createCurrentStauts(bReadOnly);
    const QMutexLocker locker(&m_mutex);
    strStatus += QLatin1String("m_nValue:") + QString::number(m_nValue) + QLatin1Char(';');
    for (const QString &strDisplayName : qAsConst(m_displayList)) {
        strStatus += strDisplayName + QLatin1Char(';');
    }
    return strStatus;
}

void CTreeEnumationItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    const auto *pOther = dynamic_cast<const CTreeEnumationItemValue *>(pSource);
    if (!pOther || pOther == this) {
        return;
    }
    QMutexLocker sourceLocker(&pOther->m_mutex);
    const qint64 nValue = pOther->m_nValue;
    const QMap<qint64, QString> enumationMap = pOther->getAllEnumationMap();
    const QMap<QString, QString> nameMap = pOther->getAllNameMap();
    const QStringList displayList = pOther->getDisplayList();
    const QStringList displayListCN = pOther->getDisplayListCN();
    sourceLocker.unlock();

    const QMutexLocker locker(&m_mutex);
    m_nValue = nValue;
    m_enumationMap = enumationMap;
    m_nameMap = nameMap;
    m_displayList = displayList;
    m_displayListCN = displayListCN;
}

QMap<qint64, QString> CTreeEnumationItemValue::getAllEnumationMap() const
{
    const QMutexLocker locker(&m_mutex);
    return m_enumationMap;
}

QMap<QString, QString> CTreeEnumationItemValue::getAllNameMap() const
{
    const QMutexLocker locker(&m_mutex);
    return m_nameMap;
}

QStringList CTreeEnumationItemValue::getDisplayList() const
{
    const QMutexLocker locker(&m_mutex);
    return m_displayList;
}

QStringList CTreeEnumationItemValue::getDisplayListCN() const
{
    const QMutexLocker locker(&m_mutex);
    return m_displayListCN;
}

void CTreeEnumationItemValue::clearItems()
{
    const QMutexLocker locker(&m_mutex);
    m_enumationMap.clear();
    m_nameMap.clear();
    m_displayList.clear();
    m_displayListCN.clear();
}

void CTreeEnumationItemValue::updateDisplayName(const QString &strDisplayName,
                                                const QString &strEntryName, const qint64 &nValue,
                                                long lCameraID)
{
    const QMutexLocker locker(&m_mutex);
    m_enumationMap[nValue] = strDisplayName;
    m_nameMap[strEntryName] = strDisplayName;
    if (m_displayList.contains(strDisplayName)) {
        return;
    }
    m_displayList.append(strDisplayName);
    VexaCameraTranslator *pTranslator =
        VexaCameraTranslatorManager::getInstance()->getCameraTranslator(
            static_cast<int>(lCameraID));
    const QString strTranslation =
        pTranslator ? pTranslator->getPropEnumerationTrans(m_strNodeName, strEntryName) : QString();
    m_displayListCN.append(strTranslation.isEmpty() ? strDisplayName : strTranslation);
}

void CTreeEnumationItemValue::updateDisplayName(const QString &strDisplayName,
                                                const QString &strEntryName, const qint64 &nValue)
{
    updateDisplayName(strDisplayName, strEntryName, nValue, COMMONINTERFACE::currentCameraID());
}

void CTreeEnumationItemValue::setDeviceValue(quint32 nBits)
{
    const QMutexLocker locker(&m_mutex);
    const qint64 nBelowZero = static_cast<qint32>(nBits);
    m_nValue =
        !m_enumationMap.contains(nBits) && m_enumationMap.contains(nBelowZero) ? nBelowZero : nBits;
}
