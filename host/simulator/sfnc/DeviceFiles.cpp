#include "host/simulator/sfnc/DeviceFiles.h"

namespace {

constexpr qint64 kLargestFile = 1024 * 1024;

} // namespace

DeviceFiles::DeviceFiles(const QVector<DeviceFile> &files)
{
    for (const DeviceFile &file : files) {
        m_files.append({file.m_content, file.m_bReadOnly, false, ReadOnly});
    }
}

void DeviceFiles::execute(const NamedRegisters &registers, RegisterMemory &memory)
{
    const qint64 selected = registers.value(memory, "FileSelectorReg");
    const qint64 operation = registers.value(memory, "FileOperationSelectorReg");
    qint64 moved = -1;
    if (selected >= 0 && selected < m_files.size() && operation >= Open && operation <= Delete) {
        moved = run(m_files[int(selected)], Operation(operation), registers, memory);
    }
    registers.setValue(memory, "FileOperationStatusReg", moved < 0 ? 1 : 0);
    registers.setValue(memory, "FileOperationResultReg", qMax<qint64>(moved, 0));
    publish(registers, memory);
}

void DeviceFiles::closeAll(const NamedRegisters &registers, RegisterMemory &memory)
{
    for (File &file : m_files) {
        file.m_bOpen = false;
    }
    publish(registers, memory);
}

void DeviceFiles::publish(const NamedRegisters &registers, RegisterMemory &memory) const
{
    for (int i = 0; i < m_files.size(); ++i) {
        registers.setValue(memory, "FileStateReg", m_files.at(i).m_bOpen ? 1 : 0, i);
        registers.setValue(memory, "FileSizeReg", m_files.at(i).m_content.size(), i);
    }
}

qint64 DeviceFiles::run(File &file, Operation operation, const NamedRegisters &registers,
                        RegisterMemory &memory)
{
    const qint64 offset = registers.value(memory, "FileAccessOffsetReg");
    const qint64 length = registers.value(memory, "FileAccessLengthReg");
    const bool isTransfer = operation == Read || operation == Write;
    if (isTransfer
        && (!file.m_bOpen || offset < 0 || length < 0 || length > kFileBufferSize
            || offset > kLargestFile - length)) {
        return -1;
    }
    switch (operation) {
    case Open: {
        const auto mode = OpenMode(registers.value(memory, "FileOpenModeReg"));
        if (file.m_bOpen || (file.m_bReadOnly && mode != ReadOnly)) {
            return -1;
        }
        if (mode == WriteOnly) {
            file.m_content.clear();
        }
        file.m_bOpen = true;
        file.m_eMode = mode;
        return 0;
    }
    case Close:
        if (!file.m_bOpen) {
            return -1;
        }
        file.m_bOpen = false;
        return 0;
    case Read: {
        if (file.m_eMode == WriteOnly) {
            return -1;
        }
        const QByteArray part = file.m_content.mid(int(offset), int(length));
        registers.setBytes(memory, "FileAccessBuffer", part);
        return part.size();
    }
    case Write: {
        if (file.m_eMode == ReadOnly || offset > file.m_content.size()) {
            return -1;
        }
        file.m_content.replace(int(offset), int(length),
                               registers.bytes(memory, "FileAccessBuffer").left(int(length)));
        return length;
    }
    case Delete:
        if (file.m_bOpen || file.m_bReadOnly) {
            return -1;
        }
        file.m_content.clear();
        return 0;
    }
    return -1;
}
