#include "host/simulator/sfnc/DeviceFiles.h"

DeviceFiles::DeviceFiles(const QVector<DeviceFile> &files)
{
    for (const DeviceFile &file : files) {
        m_files.append({QString::fromLatin1(file.m_strEntry), file.m_content, file.m_bReadOnly,
                        false, ReadOnly});
    }
}

void DeviceFiles::execute(const NamedRegisters &registers, RegisterMemory &memory)
{
    const qint64 selected = registers.value(memory, "FileSelectorReg");
    const qint64 operation = registers.value(memory, "FileOperationSelectorReg");
    qint64 moved = -1;
    const bool isBusy = m_sinceExecution.isValid();
    if (!isBusy && selected >= 0 && selected < m_files.size() && operation >= Open
        && operation <= Delete) {
        File &file = m_files[int(selected)];
        if (!spoils(file, Operation(operation), &moved)) {
            moved = run(file, Operation(operation), registers, memory);
        }
        m_nBlock = operation == Open                  ? 0
            : operation == Read || operation == Write ? m_nBlock + 1
                                                      : m_nBlock;
    }
    if (m_fault.milliseconds > 0 && !isBusy) {
        m_sinceExecution.start();
        m_nPending = moved;
        moved = -1; // whoever does not wait finds no success
    }
    tellOutcome(registers, memory, moved);
    publish(registers, memory);
}

bool DeviceFiles::spoils(const File &file, Operation operation, qint64 *moved)
{
    const bool isBlock = operation == Read || operation == Write;
    const bool isThisBlock = isBlock && m_nBlock == m_fault.block && file.m_bOpen;
    switch (m_fault.kind) {
    case SimulatedFileFault::RefusedOpen:
        return operation == Open;
    case SimulatedFileFault::RefusedClose:
        return operation == Close;
    case SimulatedFileFault::RefusedBlock:
        return isThisBlock;
    case SimulatedFileFault::TooManyBytes:
        *moved = kFileBufferSize + 1;
        return isThisBlock;
    case SimulatedFileFault::NothingForEver:
        *moved = 0;
        return isBlock && m_nBlock >= m_fault.block;
    default:
        return false;
    }
}

void DeviceFiles::tellOutcome(const NamedRegisters &registers, RegisterMemory &memory,
                              qint64 moved) const
{
    registers.setValue(memory, "FileOperationStatusReg", moved < 0 ? 1 : 0);
    registers.setValue(memory, "FileOperationResultReg", qMax<qint64>(moved, 0));
}

void DeviceFiles::beforeRead(const NamedRegisters &registers, RegisterMemory &memory,
                             quint64 address, quint32 length)
{
    if (registers.isTouched("FileStateReg", address, length)
        || registers.isTouched("FileSizeReg", address, length)) {
        publish(registers, memory);
    }
    if (m_sinceExecution.isValid()
        && registers.isTouched("FileOperationExecuteReg", address, length)) {
        const bool isOver = m_sinceExecution.elapsed() >= m_fault.milliseconds;
        registers.setValue(memory, "FileOperationExecuteReg", isOver ? 0 : 1);
        if (isOver) {
            m_sinceExecution.invalidate();
            tellOutcome(registers, memory, m_nPending);
        }
    }
}

QByteArray DeviceFiles::content(const QString &entry) const
{
    for (const File &file : m_files) {
        if (file.m_strEntry == entry) {
            return file.m_content;
        }
    }
    return {};
}

void DeviceFiles::setContent(const QString &entry, const QByteArray &content)
{
    for (File &file : m_files) {
        if (file.m_strEntry == entry) {
            file.m_content = content;
        }
    }
}

void DeviceFiles::closeAll(const NamedRegisters &registers, RegisterMemory &memory)
{
    for (File &file : m_files) {
        file.m_bOpen = false;
    }
    m_sinceExecution.invalidate();
    publish(registers, memory);
}

void DeviceFiles::publish(const NamedRegisters &registers, RegisterMemory &memory) const
{
    for (int i = 0; i < m_files.size(); ++i) {
        registers.setValue(memory, "FileStateReg", m_files.at(i).m_bOpen ? 1 : 0, i);
        qint64 size = m_files.at(i).m_content.size();
        switch (m_fault.kind) {
        case SimulatedFileFault::SizeTooLarge:
            size += kFileBufferSize;
            break;
        case SimulatedFileFault::SizeTooSmall:
            size = size / 2 / kFileBufferSize * kFileBufferSize;
            break;
        case SimulatedFileFault::SizeNegative:
            size = -1;
            break;
        case SimulatedFileFault::NoSize:
            size = 0;
            break;
        default:
            break;
        }
        registers.setValue(memory, "FileSizeReg", size, i);
    }
}

qint64 DeviceFiles::run(File &file, Operation operation, const NamedRegisters &registers,
                        RegisterMemory &memory)
{
    const qint64 offset = registers.value(memory, "FileAccessOffsetReg");
    qint64 length = registers.value(memory, "FileAccessLengthReg");
    const bool isTransfer = operation == Read || operation == Write;
    if (isTransfer
        && (!file.m_bOpen || offset < 0 || length < 0 || length > kFileBufferSize
            || offset > kLargestFile - length)) {
        return -1;
    }
    if (isTransfer && m_fault.kind == SimulatedFileFault::HalfBlock && m_nBlock == m_fault.block) {
        length = (length + 1) / 2;
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
