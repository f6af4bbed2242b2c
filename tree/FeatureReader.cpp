#include "tree/FeatureReader.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/EnumRecord.h"
#include "tree/CameraLookup.h"

#include <limits>

namespace {

constexpr int FIRST_TRANSPORT_ERROR = static_cast<int>(0x90006000U);
constexpr int LAST_TRANSPORT_ERROR = static_cast<int>(0x90006002U);

std::unique_ptr<CTreeItemValue> readBoolean(QCameraTask &task, const QString &name)
{
    auto value = std::make_unique<CTreeBooleanItemValue>();
    if (!task.GetBooleanValue(name, &value->m_bValue, nullptr, true, false)) {
        return nullptr;
    }
    return value;
}

std::unique_ptr<CTreeItemValue> readInteger(QCameraTask &task, const QString &name)
{
    _NODE_INT_VALUE_ record{};
    if (!task.GetIntegerValue(name, &record, nullptr, true, false)) {
        return nullptr;
    }
    // The device reports an empty range as min == max + 1.
    if (record.max != std::numeric_limits<qint64>::max() && record.max + 1 == record.min) {
        record.max = record.value;
        record.min = record.value;
    }
    auto value = std::make_unique<CTreeIntergerItemValue>();
    value->m_nValue = record.value;
    value->m_nMinValue = record.min;
    value->m_nMaxValue = record.max;
    value->m_nIncValue = record.inc;
    return value;
}

std::unique_ptr<CTreeItemValue> readFloat(QCameraTask &task, const QString &name)
{
    _NODE_FLOAT_VALUE_ record{};
    if (!task.GetFloatValue(name, &record, nullptr, true, false)) {
        return nullptr;
    }
    if (name == QLatin1String("ResultingFrameRate")) {
        task.m_fResultingFrameRate = record.value;
    } else if (name == QLatin1String("AcquisitionFrameRate")) {
        task.m_fAcquisitionFrameRate = record.value;
    }
    auto value = std::make_unique<CTreeFloatItemValue>();
    value->m_fValue = record.value;
    value->m_fMinValue = record.min;
    value->m_fMaxValue = record.max;
    return value;
}

std::unique_ptr<CTreeItemValue> readString(QCameraTask &task, const QString &name)
{
    auto value = std::make_unique<CTreeStringItemValue>();
    qint64 maxLength = 0;
    if (!task.GetStringValue(name, &value->m_strValue, &maxLength, nullptr, true, false)) {
        return nullptr;
    }
    value->m_nMaxLength = static_cast<int>(maxLength);
    return value;
}

std::unique_ptr<CTreeItemValue> readEnumeration(QCameraTask &task, const QString &name)
{
    const EnumRecord record;
    if (!record || !task.GetEnumerationValue(name, record.get(), nullptr, true, false)) {
        return nullptr;
    }
    auto value = std::make_unique<CTreeEnumationItemValue>();
    value->m_nValue = record->value;
    return value;
}

struct TypedRead
{
    const char *tagName;
    std::unique_ptr<CTreeItemValue> (*read)(QCameraTask &task, const QString &name);
};

const TypedRead TYPED_READS[] = {
    {"Boolean", readBoolean}, {"Integer", readInteger},  {"Enumeration", readEnumeration},
    {"Float", readFloat},     {"StringReg", readString},
};

} // namespace

bool isTransportError(int error)
{
    return error >= FIRST_TRANSPORT_ERROR && error <= LAST_TRANSPORT_ERROR;
}

FeatureReader::FeatureReader(const std::atomic<long int> &cameraId)
    : m_lCameraID(cameraId)
{
}

QCameraTask *FeatureReader::task() const
{
    return cameraTaskOf(m_lCameraID);
}

int FeatureReader::accessMode(const QString &nodeName, bool &unreachable) const
{
    QCameraTask *cameraTask = task();
    if (!cameraTask) {
        unreachable = true;
        return 0;
    }
    int error = 0;
    const int mode = cameraTask->GetAccessMode(nodeName, &error);
    unreachable = isTransportError(error);
    return mode;
}

PointerAnswer FeatureReader::IsImplemented(const QString &nodeName)
{
    return nodeName.isEmpty() ? PointerAnswer::Yes : readPointer(nodeName);
}

PointerAnswer FeatureReader::IsAvailable(const QString &nodeName)
{
    return nodeName.isEmpty() ? PointerAnswer::Yes : readPointer(nodeName);
}

PointerAnswer FeatureReader::IsLocked(const QString &nodeName)
{
    return nodeName.isEmpty() ? PointerAnswer::No : readPointer(nodeName);
}

PointerAnswer FeatureReader::readPointer(const QString &nodeName)
{
    const auto known = m_pointers.constFind(nodeName);
    if (known != m_pointers.constEnd()) {
        return *known;
    }
    QCameraTask *cameraTask = task();
    if (!cameraTask) {
        return PointerAnswer::Unreachable;
    }
    _NODE_INT_VALUE_ record{};
    int error = 0;
    PointerAnswer answer = PointerAnswer::No;
    if (cameraTask->GetIntegerValue(nodeName, &record, &error, true, false)) {
        answer = record.value != 0 ? PointerAnswer::Yes : PointerAnswer::No;
    } else if (isTransportError(error)) {
        answer = PointerAnswer::Unreachable;
    }
    m_pointers.insert(nodeName, answer);
    return answer;
}

std::unique_ptr<CTreeItemValue> FeatureReader::readValue(const QString &tagName,
                                                         const QString &nodeName) const
{
    for (const TypedRead &row : TYPED_READS) {
        if (tagName == QLatin1String(row.tagName)) {
            QCameraTask *cameraTask = task();
            return cameraTask ? row.read(*cameraTask, nodeName) : nullptr;
        }
    }
    return nullptr;
}

bool FeatureReader::readEntries(const NodeFacts &facts, QVector<EnumEntryReading> &entries)
{
    entries.clear();
    entries.reserve(facts.entries.size());
    for (const EnumEntryFacts &entry : facts.entries) {
        PointerAnswer present = IsImplemented(entry.isImplemented);
        if (present == PointerAnswer::Yes) {
            present = IsAvailable(entry.isAvailable);
        }
        const PointerAnswer locked =
            present == PointerAnswer::Yes ? IsLocked(entry.isLocked) : PointerAnswer::No;
        if (present == PointerAnswer::Unreachable || locked == PointerAnswer::Unreachable) {
            return false;
        }
        entries.append({entry, present == PointerAnswer::Yes, locked == PointerAnswer::Yes});
    }
    return true;
}
