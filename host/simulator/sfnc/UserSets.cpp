#include "host/simulator/sfnc/UserSets.h"

UserSets::UserSets(const FeatureTable &table, int count)
{
    QVector<Stretch> factory;
    for (const RegisterRow &row : table.registers()) {
        if (row.m_bStored) {
            factory.append({row.m_nAddress, row.m_initial});
        }
    }
    m_sets.fill(factory, count);
}

void UserSets::save(const RegisterMemory &memory, int set)
{
    for (Stretch &stretch : m_sets[set]) {
        stretch.m_bytes = memory.read(stretch.m_nAddress, quint32(stretch.m_bytes.size()));
    }
}

void UserSets::load(RegisterMemory &memory, int set) const
{
    for (const Stretch &stretch : m_sets.at(set)) {
        memory.write(stretch.m_nAddress, stretch.m_bytes);
    }
}
