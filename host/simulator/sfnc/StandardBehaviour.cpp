#include "host/simulator/sfnc/StandardBehaviour.h"

#include <arv.h>
#include <cmath>

StandardBehaviour::StandardBehaviour(const FeatureTable &table, int userSets,
                                     const QVector<DeviceFile> &files)
    : m_registers(table)
    , m_guard(table)
    , m_userSets(table, userSets)
    , m_files(files)
{
    addStandardHandlers();
    m_clock.start();
}

int StandardBehaviour::refusal(const RegisterMemory &memory, quint64 address,
                               const QByteArray &bytes) const
{
    const RegisterRow *row = m_guard.registerAt(address);
    if (!row || !row->m_bWritable) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT;
    }
    if (m_bGrabbing && m_guard.isLockedWhileGrabbing(*row)) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
    }
    for (const RefusalRow &rule : m_refusals) {
        if (address >= rule.m_nFirst && address < rule.m_nEnd) {
            const int error =
                rule.m_refuse(memory, qint64(decodedInteger(bytes, rule.m_bLittleEndian)));
            if (error >= 0) {
                return error;
            }
        }
    }
    return -1;
}

void StandardBehaviour::beforeRead(RegisterMemory &memory, quint64 address, quint32 length)
{
    if (has("FileStateReg")) {
        m_files.beforeRead(m_registers, memory, address, length);
    }
    if (m_bQuiet) {
        return;
    }
    for (const HandlerRow &row : qAsConst(m_moving)) {
        if (address < row.m_nEnd && row.m_nFirst < address + length) {
            row.m_run(memory);
        }
    }
}

DeviceBehaviour::Effect StandardBehaviour::afterWrite(RegisterMemory &memory, quint64 address,
                                                      quint32 length)
{
    const auto isTouched = [address, length](const HandlerRow &row) {
        return address < row.m_nEnd && row.m_nFirst < address + length;
    };
    for (const HandlerRow &row : qAsConst(m_commands)) {
        if (isTouched(row) && m_registers.value(memory, row.m_strField) != 0) {
            row.m_run(memory);
            m_registers.setValue(memory, row.m_strField, 0);
        }
    }
    for (const HandlerRow &row : qAsConst(m_settings)) {
        if (isTouched(row)) {
            row.m_run(memory);
        }
    }
    for (const HandlerRow &row : qAsConst(m_restarts)) {
        if (isTouched(row) && m_registers.value(memory, row.m_strField) != 0) {
            m_registers.setValue(memory, row.m_strField, 0);
            row.m_run(memory);
            return Effect::Restart;
        }
    }
    return Effect::None;
}

void StandardBehaviour::restart(RegisterMemory &memory)
{
    if (m_bGrabbing) {
        stopAcquisition(memory);
    }
    const qint64 set = has("UserSetDefaultReg") ? value(memory, "UserSetDefaultReg") : 0;
    m_userSets.load(memory, int(qBound<qint64>(0, set, m_userSets.count() - 1)));
    if (has("FileStateReg")) {
        m_files.closeAll(m_registers, memory);
    }
    setValue(memory, "TriggerSoftwareCountReg", 0);
    m_clock.restart();
}

void StandardBehaviour::onCommand(const char *field, const Handler &run)
{
    add(m_commands, field, run);
}

void StandardBehaviour::onWrite(const char *field, const Refusal &refuse)
{
    const FieldRow *row = m_registers.table().findField(field);
    if (row) {
        m_refusals.append({row->m_nAddress,
                           row->m_nAddress + quint64(row->m_spec.m_nLength) * row->m_spec.m_nCount,
                           row->m_spec.m_bLittleEndian, refuse});
    }
}

double StandardBehaviour::reachableRate(const RegisterMemory &memory) const
{
    return has("AcquisitionFrameRateReg") ? m_registers.number(memory, "AcquisitionFrameRateReg")
                                          : 1.0;
}

void StandardBehaviour::startAcquisition(RegisterMemory &)
{
    if (!m_bGrabbing) {
        m_bGrabbing = true;
        m_nGrabStart = nanoseconds();
    }
}

void StandardBehaviour::stopAcquisition(RegisterMemory &memory)
{
    m_bGrabbing = false;
    if (has("ResultingFrameRateReg")) {
        m_registers.setNumber(memory, "ResultingFrameRateReg", reachableRate(memory));
    }
}

void StandardBehaviour::triggerSoftware(RegisterMemory &memory)
{
    setValue(memory, "TriggerSoftwareCountReg", value(memory, "TriggerSoftwareCountReg") + 1);
}

void StandardBehaviour::loadUserSet(RegisterMemory &memory)
{
    const qint64 set = value(memory, "UserSetSelectorReg");
    if (set >= 0 && set < m_userSets.count()) {
        m_userSets.load(memory, int(set));
    }
}

void StandardBehaviour::saveUserSet(RegisterMemory &memory)
{
    const qint64 set = value(memory, "UserSetSelectorReg");
    if (set > 0 && set < m_userSets.count()) {
        m_userSets.save(memory, int(set));
    }
}

qint64 StandardBehaviour::value(const RegisterMemory &memory, const char *field, int element) const
{
    return m_registers.value(memory, field, element);
}

void StandardBehaviour::setValue(RegisterMemory &memory, const char *field, qint64 value,
                                 int element) const
{
    m_registers.setValue(memory, field, value, element);
}

qint64 StandardBehaviour::frames(const RegisterMemory &memory) const
{
    const double elapsed = double(nanoseconds() - m_nGrabStart) / 1e9;
    return m_bGrabbing ? qint64(elapsed * reachableRate(memory)) : 0;
}

void StandardBehaviour::add(QVector<HandlerRow> &rows, const char *field, const Handler &run) const
{
    const FieldRow *row = m_registers.table().findField(field);
    if (row) {
        rows.append({field, row->m_nAddress,
                     row->m_nAddress + quint64(row->m_spec.m_nLength) * row->m_spec.m_nCount, run});
    }
}

void StandardBehaviour::addStandardHandlers()
{
    onRestart("DeviceResetReg", [](RegisterMemory &) {});
    onCommand("AcquisitionStartReg", [this](RegisterMemory &memory) { startAcquisition(memory); });
    onCommand("AcquisitionStopReg", [this](RegisterMemory &memory) { stopAcquisition(memory); });
    onCommand("TriggerSoftwareReg", [this](RegisterMemory &memory) { triggerSoftware(memory); });
    onCommand("FileOperationExecuteReg",
              [this](RegisterMemory &memory) { m_files.execute(m_registers, memory); });
    onCommand("UserSetLoadReg", [this](RegisterMemory &memory) { loadUserSet(memory); });
    onCommand("UserSetSaveReg", [this](RegisterMemory &memory) { saveUserSet(memory); });
    onWrite("UserSetLoadReg", [this](const RegisterMemory &, qint64) {
        return m_bGrabbing ? int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED) : -1;
    });
    onWrite("UserSetSaveReg", [this](const RegisterMemory &memory, qint64) {
        return value(memory, "UserSetSelectorReg") == 0
            ? int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED)
            : -1;
    });
    onMoving("DeviceTemperatureRaw", [this](RegisterMemory &memory) {
        const FieldRow *row = m_registers.table().findField("DeviceTemperatureRaw");
        const QVector<qint64> &base = row->m_spec.m_values;
        for (int i = 0; i < int(row->m_spec.m_nCount); ++i) {
            const qint64 drift = qRound(6 * std::sin(std::floor(seconds()) * 0.7 + i));
            setValue(memory, "DeviceTemperatureRaw", base.value(i, base.last()) + drift, i);
        }
    });
    onMoving("ResultingFrameRateReg", [this](RegisterMemory &memory) {
        const double wobble = m_bGrabbing ? 0.0005 * std::sin(std::floor(seconds())) : 0;
        m_registers.setNumber(memory, "ResultingFrameRateReg",
                              reachableRate(memory) * (1 + wobble));
    });
}
