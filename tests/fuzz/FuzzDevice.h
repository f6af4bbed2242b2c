#pragma once

#include <QByteArray>
#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>

#include <atomic>
#include <memory>

class QCameraBasicTask;
class QCameraTask;

/// A device in the place of a whole device layer: answers for each node what stands in its element (Value, Min, Max,
/// Inc, Count, EnumEntry, ImposedAccessMode), whether it makes sense or not, over 4 KiB of memory that repeat. A node
/// with an Error fails with that hexadecimal code, one with a WriteError when it is written, and what is written to one
/// that Rounds loses its last three bits. After a failure with a code of a device that has gone nothing answers.
class FuzzDevice
{
public:
    static constexpr qint64 MEMORY_SIZE = 4096;
    static constexpr qint64 MEMORY_END = 0x200000;

    FuzzDevice(const QMap<QString, QDomElement> &nodes, unsigned int type);
    ~FuzzDevice();
    Q_DISABLE_COPY(FuzzDevice)

    QCameraBasicTask *basicTask() const { return m_basic.get(); }
    QCameraTask *task() const { return m_task.get(); }
    unsigned int type() const { return m_type; }
    int accesses() const { return m_accesses; }
    int writes() const { return m_writes; }
    bool isGone() const { return m_gone; }
    const QSet<qint64> &writtenAddresses() const { return m_writtenAddresses; }
    /// Whether an access was refused for the bytes that it would have cost.
    bool isExhausted() const { return m_budget < 0; }
    /// Raises the flag at that access.
    void stopAt(int access, std::atomic<bool> *stop);

    // The device side of the tasks.
    QDomElement node(const QString &name) const { return m_nodes.value(name); }
    bool beginRead(const QString &name, int *error);
    bool beginWrite(const QString &name, int *error);
    int accessMode(const QString &name, int *error);
    QString valueOf(const QString &name) const;
    void setValue(const QString &name, const QString &text) { m_values.insert(name, text); }
    void setNumber(const QString &name, qint64 number);
    bool access(qint64 address, qint64 length, void *read, const void *written, int *error);

private:
    bool begin(const QString &name, const char *errorTag, int *error);
    bool fail(quint32 code, int *error);
    void count();

    const QMap<QString, QDomElement> m_nodes;
    const unsigned int m_type;
    QHash<QString, QString> m_values; ///< written
    QByteArray m_memory;
    QSet<qint64> m_writtenAddresses;
    bool m_gone = false;
    int m_accesses = 0;
    int m_writes = 0;
    qint64 m_budget = 16 * MEMORY_SIZE;
    int m_stopAt = -1;
    std::atomic<bool> *m_stop = nullptr;
    std::unique_ptr<QCameraTask> m_task;
    std::unique_ptr<QCameraBasicTask> m_basic;
};
