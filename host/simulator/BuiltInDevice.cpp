#include "host/simulator/BuiltInDevice.h"

#include "host/simulator/MappedMemory.h"
#include "host/simulator/description/DescriptionWriter.h"
#include "host/simulator/description/FeatureTable.h"
#include "host/simulator/description/TranslationWriter.h"

BuiltInDevice builtDevice(const FeatureTable &table, const DescriptionHeader &header,
                          std::unique_ptr<DeviceBehaviour> behaviour)
{
    auto memory = std::make_unique<MappedMemory>();
    for (const RegisterRow &row : table.registers()) {
        Q_ASSERT_X(!memory->covers(row.m_nAddress, 1)
                       && !memory->covers(row.m_nAddress + quint64(row.m_initial.size()) - 1, 1),
                   "builtDevice", row.m_strName.constData());
        memory->map(row.m_nAddress, row.m_initial);
    }
    BuiltInDevice device;
    device.m_description = writtenDescription(table, header);
    device.m_translations = writtenTranslations(table);
    device.m_pMemory = std::move(memory);
    device.m_pBehaviour = std::move(behaviour);
    device.m_strModel = QString::fromUtf8(header.m_strModelName);
    return device;
}
