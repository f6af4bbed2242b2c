#pragma once

#include "host/simulator/SimulatedDevices.h"
#include "host/simulator/description/NamedRegisters.h"

#include <QElapsedTimer>
#include <QVector>

constexpr quint32 kFileBufferSize = 1024;
constexpr qint64 kLargestFile = 32 * 1024 * 1024;

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
    /// Ahead of a read of these addresses: brings state, size and the outcome of a slow operation up to date.
    void beforeRead(const NamedRegisters &registers, RegisterMemory &memory, quint64 address,
                    quint32 length);

    QByteArray content(const QString &entry) const;
    void setContent(const QString &entry, const QByteArray &content);
    void setFault(const SimulatedFileFault &fault) { m_fault = fault; }

private:
    enum Operation { Open, Close, Read, Write, Delete };
    enum OpenMode { ReadOnly, WriteOnly, ReadWrite };
    struct File
    {
        QString m_strEntry;
        QByteArray m_content;
        bool m_bReadOnly = false;
        bool m_bOpen = false;
        OpenMode m_eMode = ReadOnly;
    };

    /// Bytes moved, or -1 for an operation that the file refuses.
    qint64 run(File &file, Operation operation, const NamedRegisters &registers,
               RegisterMemory &memory);

    /// The fault in the place of what the operation would do; true when it has done so.
    bool spoils(const File &file, Operation operation, qint64 *moved);
    void publish(const NamedRegisters &registers, RegisterMemory &memory) const;
    void tellOutcome(const NamedRegisters &registers, RegisterMemory &memory, qint64 moved) const;

    QVector<File> m_files;
    SimulatedFileFault m_fault;
    int m_nBlock = 0; ///< Read or Write operations since the opening
    QElapsedTimer m_sinceExecution; ///< valid while a slow operation is pending
    qint64 m_nPending = 0; ///< its outcome
};
