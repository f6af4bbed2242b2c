#pragma once

#include "tree/NodeFacts.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

class CTreeItemValue;
class QCameraTask;

/// Answer of a pointer element (pIsImplemented, pIsAvailable, pIsLocked).
enum class PointerAnswer {
    No,
    Yes,
    Unreachable ///< the device did not answer; nothing is known
};

/// One EnumEntry with what the device says of it now.
struct EnumEntryReading
{
    EnumEntryFacts facts;
    bool implementedAndAvailable = true;
    bool locked = false;
};

/// Reads nodes of one camera, each answer into values of the caller's own; it touches no item and tells nobody. An
/// object serves one update of one node and asks each pointer node once. Any thread.
class FeatureReader
{
public:
    /// `cameraId` is looked at before every access, so that a stop takes effect between two of them.
    explicit FeatureReader(const std::atomic<long int> &cameraId);

    /// The task of the camera or null. It holds until the next look-up.
    QCameraTask *task() const;
    /// GenICam access mode; `unreachable` tells that the device did not answer.
    int accessMode(const QString &nodeName, bool &unreachable) const;

    /// An empty name answers yes.
    PointerAnswer IsImplemented(const QString &nodeName);
    PointerAnswer IsAvailable(const QString &nodeName);
    /// An empty name answers no.
    PointerAnswer IsLocked(const QString &nodeName);

    /// The value of a node as an object of the class of its tag, without names; null when the read failed or the tag
    /// has no value. An enumeration comes without its entries.
    std::unique_ptr<CTreeItemValue> readValue(const QString &tagName,
                                              const QString &nodeName) const;
    /// The entries of an Enumeration in document order; false when the device did not answer.
    bool readEntries(const NodeFacts &facts, QVector<EnumEntryReading> &entries);

private:
    PointerAnswer readPointer(const QString &nodeName);

    const std::atomic<long int> &m_lCameraID;
    QHash<QString, PointerAnswer> m_pointers; ///< answers of this update
};

/// Whether an error code of the device layer says that the device did not answer at all.
bool isTransportError(int error);
