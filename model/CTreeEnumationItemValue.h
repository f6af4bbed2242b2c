#pragma once

#include "model/CTreeItemValue.h"

#include <QMutex>
#include <QStringList>

/// Value of an Enumeration node (GenICam IEnumeration) with the entries that the device offers now. The entries
/// are read on workers and on the GUI thread; the object's own mutex guards them.
class FEATURETREEMODULE_API CTreeEnumationItemValue : public CTreeItemValue
{
public:
    CTreeEnumationItemValue();
    ~CTreeEnumationItemValue() override;
    CTreeEnumationItemValue(const CTreeEnumationItemValue &) = delete;
    CTreeEnumationItemValue &operator=(const CTreeEnumationItemValue &) = delete;

    QString displayValue() const override;
    QVariant value() const override;
    void setValue(const QVariant &value) override;
    QString createCurrentStauts(bool bReadOnly) override;
    void copy(CTreeItemValue *pSource, bool bCopyBase) override;

    QMap<qint64, QString> getAllEnumationMap() const; ///< numeric value to display name
    QMap<QString, QString> getAllNameMap() const; ///< entry name to display name
    QStringList getDisplayList() const; ///< display names in the order of first sight
    QStringList getDisplayListCN() const; ///< the same rows in the translated language
    /// Forgets all entries; the current value stays.
    void clearItems();
    /// Enters one EnumEntry. A display name that is listed already gets no second row. The translation is that of
    /// the camera `lCameraID`.
    void updateDisplayName(const QString &strDisplayName, const QString &strEntryName,
                           const qint64 &nValue, long lCameraID);
    /// The same with the camera on show (COMMONINTERFACE::currentCameraID).
    void updateDisplayName(const QString &strDisplayName, const QString &strEntryName,
                           const qint64 &nValue);
    /// The value as the device layer gives it, in 32 bits without a sign: an entry below 0 is found by them too.
    void setDeviceValue(quint32 nBits);

    qint64 m_nValue = -1; ///< numeric value of the current entry

    QMap<qint64, QString> m_enumationMap;
    QMap<QString, QString> m_nameMap;
    QStringList m_displayList;
    QStringList m_displayListCN;
    mutable QRecursiveMutex m_mutex;
};
