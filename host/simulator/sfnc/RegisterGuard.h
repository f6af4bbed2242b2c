#pragma once

#include "host/simulator/description/FeatureTable.h"

#include <QMap>
#include <QSet>

/// Which register an address belongs to, and which of them wait for the end of an acquisition.
class RegisterGuard
{
public:
    explicit RegisterGuard(const FeatureTable &table);

    /// The register that holds this address, or null. It stands in the table that was given.
    const RegisterRow *registerAt(quint64 address) const;
    /// Whether the feature behind the register is locked by TLParamsLocked. Words of several fields stay open: some
    /// of their fields may change while the camera runs.
    bool isLockedWhileGrabbing(const RegisterRow &row) const
    {
        return m_lockedWhileGrabbing.contains(row.m_nAddress);
    }

private:
    QVector<RegisterRow> m_registers;
    QMap<quint64, int> m_byAddress; ///< first address to row
    QSet<quint64> m_lockedWhileGrabbing; ///< first addresses
};
