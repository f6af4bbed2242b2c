#include "host/simulator/sfnc/RegisterGuard.h"

RegisterGuard::RegisterGuard(const FeatureTable &table)
    : m_registers(table.registers())
{
    for (int i = 0; i < m_registers.size(); ++i) {
        m_byAddress.insert(m_registers.at(i).m_nAddress, i);
    }
    for (const NodeRow &node : table.nodes()) {
        QByteArray value;
        bool isLocked = false;
        for (const PropertyRow &property : node.m_properties) {
            isLocked = isLocked
                || (property.m_strTag == "pIsLocked" && property.m_strText == "TLParamsLocked");
            value = property.m_strTag == "pValue" ? property.m_strText : value;
        }
        const RegisterRow *row = isLocked ? table.findRegister(value) : nullptr;
        if (row) {
            m_lockedWhileGrabbing.insert(row->m_nAddress);
        }
    }
}

const RegisterRow *RegisterGuard::registerAt(quint64 address) const
{
    auto next = m_byAddress.upperBound(address);
    if (next == m_byAddress.constBegin()) {
        return nullptr;
    }
    --next;
    const RegisterRow &row = m_registers.at(*next);
    return address - next.key() < quint64(row.m_initial.size()) ? &row : nullptr;
}
