#pragma once

#include "host/simulator/description/NamedRegisters.h"

#include <QVector>

constexpr quint32 kFileBufferSize = 1024;

/// A file as the device leaves the factory.
struct DeviceFile
{
    const char *m_strEntry; ///< entry of FileSelector
    const char *m_strDisplayName;
    const char *m_strNameCn;
    QByteArray m_content;
    bool m_bReadOnly = false;
};

/// The files of a device behind the registers of FileAccessControl.
class DeviceFiles
{
public:
    explicit DeviceFiles(const QVector<DeviceFile> &files);

    /// Runs the operation that the registers ask for and leaves status and result in them.
    void execute(const NamedRegisters &registers, RegisterMemory &memory);
    /// Closes every file, as switching the device off does.
    void closeAll(const NamedRegisters &registers, RegisterMemory &memory);
    /// Brings state and size in the registers up to date.
    void publish(const NamedRegisters &registers, RegisterMemory &memory) const;

private:
    enum Operation { Open, Close, Read, Write, Delete };
    enum OpenMode { ReadOnly, WriteOnly, ReadWrite };
    struct File
    {
        QByteArray m_content;
        bool m_bReadOnly = false;
        bool m_bOpen = false;
        OpenMode m_eMode = ReadOnly;
    };

    /// Bytes moved, or -1 for an operation that the file refuses.
    qint64 run(File &file, Operation operation, const NamedRegisters &registers,
               RegisterMemory &memory);

    QVector<File> m_files;
};
