#pragma once

#include "host/simulator/description/NamedRegisters.h"

#include <QVector>

/// Copies of the settings of a device. A set that was never saved holds what the device left the factory with.
class UserSets
{
public:
    UserSets(const FeatureTable &table, int count);

    int count() const { return m_sets.size(); }
    void save(const RegisterMemory &memory, int set);
    void load(RegisterMemory &memory, int set) const;
    void copy(int from, int to) { m_sets[to] = m_sets.at(from); }

private:
    struct Stretch
    {
        quint64 m_nAddress = 0;
        QByteArray m_bytes;
    };

    QVector<QVector<Stretch>> m_sets;
};
