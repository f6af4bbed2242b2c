#include "host/devicetask/FileAccess.h"

#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeAssigner.h"
#include "host/devicetask/nodes/NodeReader.h"
#include "host/devicetask/nodes/RegisterAccess.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

/// An operation that takes longer has failed: erasing a large flash file takes a few seconds.
constexpr std::chrono::seconds OPERATION_LIMIT(30);
constexpr std::chrono::milliseconds FIRST_PAUSE(1);
constexpr std::chrono::milliseconds LONGEST_PAUSE(20);
/// Most bytes of a block, whatever the buffer holds: nobody else gets at the device meanwhile.
constexpr qint64 LARGEST_BLOCK = 1024 * 1024;

const NodeEntry *entryOf(const NodeInfo &node, const QByteArray &name)
{
    const auto it = std::find_if(node.entries.cbegin(), node.entries.cend(),
                                 [&name](const NodeEntry &entry) { return entry.name == name; });
    return it == node.entries.cend() || !it->hasValue ? nullptr : &*it;
}

} // namespace

/// The accesses of one operation.
class FileAccess::Operation
{
public:
    Operation(FileAccess &file, const DeviceSession &session)
        : m_file(file)
        , m_session(session)
        , m_evaluator(session)
    {
    }

    NodeEvaluator &evaluator() { return m_evaluator; }
    bool has(const char *name) const { return m_session.nodes.find(name) != NO_NODE; }

    DeviceError node(const char *name, NodeId *id) const
    {
        *id = m_session.nodes.find(name);
        return *id == NO_NODE ? DeviceError(
                   NODE_PROPERTY, QStringLiteral("the device has no %1").arg(QLatin1String(name)))
                              : DeviceError();
    }
    DeviceError assign(const char *name, qint64 value)
    {
        NodeId id = NO_NODE;
        const DeviceError error = node(name, &id);
        return error.failed()
            ? error
            : NodeAssigner(m_evaluator).number(id, FormulaNumber::ofInteger(value));
    }
    DeviceError assignEntry(const char *name, const QByteArray &entry)
    {
        NodeId id = NO_NODE;
        const DeviceError error = node(name, &id);
        const NodeEntry *found = error.failed() ? nullptr : entryOf(m_evaluator.at(id), entry);
        if (error.failed() || !found) {
            return error.failed() ? error : noEntry(name, entry);
        }
        return assign(name, found->value);
    }
    DeviceError value(const char *name, qint64 *out)
    {
        NodeId id = NO_NODE;
        const DeviceError error = node(name, &id);
        return error.failed() ? error : m_evaluator.integer(id, out);
    }

    /// What was selected by the operation before stands unless somebody else has been at the device since.
    DeviceError select(const QByteArray &operation)
    {
        const bool stands = m_file.m_nChanges != 0 && m_session.changes == m_file.m_nChanges + 1;
        DeviceError error;
        if (!stands) {
            error = assign("FileSelector", m_file.m_nEntry);
        }
        if (!error.failed() && !(stands && m_file.m_selected == operation)) {
            error = assignEntry("FileOperationSelector", operation);
        }
        m_file.m_nChanges = error.failed() ? 0 : m_session.changes;
        m_file.m_selected = operation;
        return error;
    }
    /// Executes what was selected and looks at its outcome.
    DeviceError execute()
    {
        NodeId command = NO_NODE;
        DeviceError error = node("FileOperationExecute", &command);
        if (!error.failed()) {
            error = NodeAssigner(m_evaluator).command(command);
        }
        if (!error.failed() && m_file.m_bTellsWhenDone) {
            error = waitUntilDone(command);
        }
        return error.failed() ? error : status();
    }
    /// Of the last execution; `asked` where the device does not tell.
    DeviceError result(qint64 asked, qint64 *moved)
    {
        *moved = asked;
        DeviceError error;
        if (has("FileOperationResult")) {
            error = value("FileOperationResult", moved);
        }
        if (!error.failed() && (*moved < 0 || *moved > asked)) {
            error =
                failure(NODE_LOGICAL, QStringLiteral("%1 bytes came of %2").arg(*moved).arg(asked));
        }
        return error;
    }
    DeviceError place(qint64 offset, int length)
    {
        const DeviceError error = assign("FileAccessOffset", offset);
        return error.failed() ? error : assign("FileAccessLength", length);
    }
    DeviceError failure(DeviceErrorCode code, const QString &what) const
    {
        return {code,
                QStringLiteral("%1 of file %2: %3")
                    .arg(QString::fromUtf8(m_file.m_selected), QString::fromUtf8(m_file.m_entry),
                         what)};
    }
    DeviceError noEntry(const char *name, const QByteArray &entry) const
    {
        return {NODE_PROPERTY,
                QStringLiteral("%1 has no entry %2")
                    .arg(QLatin1String(name), QString::fromUtf8(entry))};
    }

private:
    DeviceError waitUntilDone(NodeId command)
    {
        const Clock::time_point end = Clock::now() + OPERATION_LIMIT;
        std::chrono::milliseconds pause = FIRST_PAUSE;
        while (!m_file.m_stop) {
            // A new one each time, since an evaluator reads a register once.
            NodeEvaluator evaluator(m_session);
            qint64 present = 0;
            qint64 running = 0;
            const NodeInfo &node = evaluator.at(command);
            DeviceError error = evaluator.wholeOperand(command, node.value, &present);
            if (!error.failed()) {
                error = evaluator.wholeOperand(command, node.commandValue, &running);
            }
            if (error.failed() || present != running) {
                return error;
            }
            if (Clock::now() > end) {
                break;
            }
            std::this_thread::sleep_for(pause);
            pause = std::min(pause * 2, LONGEST_PAUSE);
        }
        return failure(NODE_RUNTIME, QStringLiteral("the device did not come to an end"));
    }
    DeviceError status()
    {
        NodeId id = m_session.nodes.find("FileOperationStatus");
        if (id == NO_NODE) {
            return {};
        }
        qint64 present = 0;
        const DeviceError error = m_evaluator.integer(id, &present);
        const NodeInfo &node = m_evaluator.at(id);
        const NodeEntry *success = entryOf(node, "Success");
        if (error.failed() || present == (success ? success->value : 0)) {
            return error;
        }
        const auto it =
            std::find_if(node.entries.cbegin(), node.entries.cend(),
                         [present](const NodeEntry &entry) { return entry.value == present; });
        return failure(NODE_ACCESS,
                       QStringLiteral("status %1 (%2)")
                           .arg(it == node.entries.cend() ? QStringLiteral("unknown")
                                                          : QString::fromUtf8(it->name))
                           .arg(present));
    }

    FileAccess &m_file;
    const DeviceSession &m_session;
    NodeEvaluator m_evaluator;
};

DeviceError FileAccess::openToRead(const DeviceSession &session)
{
    return open(session, "Read", 0);
}

DeviceError FileAccess::openToWrite(const DeviceSession &session, qint64 size)
{
    return open(session, "Write", size);
}

/// What the description and the device say ahead of the transfer.
DeviceError FileAccess::learn(Operation &operation, qint64 size)
{
    NodeEvaluator &evaluator = operation.evaluator();
    NodeId selector = NO_NODE;
    DeviceError error = AccessMode::requireWritable(evaluator, "FileSelector", &selector);
    const NodeEntry *entry = error.failed() ? nullptr : entryOf(evaluator.at(selector), m_entry);
    QVector<qint64> available;
    if (!error.failed()) {
        error = entry ? NodeReader::availableEntries(evaluator, selector, &available)
                      : operation.noEntry("FileSelector", m_entry);
    }
    if (error.failed()) {
        return error;
    }
    if (!available.contains(entry->value)) {
        return {NODE_NOT_ACCESSIBLE, QString::fromUtf8(m_entry)};
    }
    m_nEntry = entry->value;

    NodeId command = NO_NODE;
    NodeId buffer = NO_NODE;
    NodeId length = NO_NODE;
    NodeId offset = NO_NODE;
    error = operation.node("FileAccessBuffer", &buffer);
    if (!error.failed() && evaluator.at(buffer).kind != NodeKind::Register
        && evaluator.at(buffer).kind != NodeKind::StringReg) {
        error = NodeReader::wrongKind("FileAccessBuffer", "register");
    }
    if (!error.failed()) {
        error = operation.node("FileAccessLength", &length);
    }
    if (!error.failed()) {
        error = operation.node("FileAccessOffset", &offset);
    }
    if (!error.failed()) {
        error = AccessMode::requireWritable(evaluator, "FileOperationExecute", &command);
    }
    if (!error.failed()) {
        error = RegisterAccess(evaluator, buffer).length(&m_nBlock);
    }
    _NODE_INT_VALUE_ range{};
    if (!error.failed()) {
        error = NodeReader::integerRange(evaluator, length, &range);
    }
    if (error.failed()) {
        return error;
    }
    m_nBlock = static_cast<int>(std::min({qint64(m_nBlock), range.max, LARGEST_BLOCK}));
    const NodeOperand &largest = evaluator.at(offset).max;
    qint64 last = 0;
    if (largest.source == NodeOperand::Source::Constant && largest.constant.toInteger(&last)
        && size - 1 > last) {
        return {NODE_RANGE,
                QStringLiteral("%1 takes %2 bytes, not %3")
                    .arg(QString::fromUtf8(m_entry))
                    .arg(last + 1)
                    .arg(size)};
    }
    m_bTellsWhenDone =
        !AccessMode::requireReadable(evaluator, "FileOperationExecute", &command).failed();
    return m_nBlock > 0
        ? operation.value("FileSelector", &m_nSelectedBefore)
        : DeviceError(NODE_LOGICAL, QStringLiteral("FileAccessLength takes no length"));
}

DeviceError FileAccess::open(const DeviceSession &session, const char *mode, qint64 size)
{
    Operation operation(*this, session);
    DeviceError error = learn(operation, size);
    if (error.failed()) {
        return error;
    }
    m_nChanges = 0;
    error = operation.select("Open");
    if (!error.failed() && operation.has("FileOpenMode")) {
        error = operation.assignEntry("FileOpenMode", mode);
    }
    if (error.failed()) {
        return error;
    }
    error = operation.execute();
    if (error.code() == NODE_ACCESS
        && !operation.assignEntry("FileOperationSelector", "Close").failed()
        && !operation.execute().failed()) {
        // A client that went in the middle of a transfer had left it open.
        error = operation.assignEntry("FileOperationSelector", "Open");
        if (!error.failed()) {
            error = operation.execute();
        }
    }
    m_bOpen = !error.failed();
    NodeId id = NO_NODE;
    if (!m_bOpen || AccessMode::requireReadable(operation.evaluator(), "FileSize", &id).failed()) {
        return error;
    }
    error = operation.value("FileSize", &m_nSize);
    if (!error.failed() && m_nSize < 0) {
        error = operation.failure(NODE_LOGICAL, QStringLiteral("a size of %1 bytes").arg(m_nSize));
    } else if (m_nSize == 0) {
        m_nSize = SIZE_UNKNOWN; // so do devices that do not keep count
    }
    if (error.failed()) {
        close(session);
    }
    return error;
}

DeviceError FileAccess::read(const DeviceSession &session, qint64 offset, QByteArray *bytes)
{
    Operation operation(*this, session);
    DeviceError error = operation.select("Read");
    if (!error.failed()) {
        error = operation.place(offset, m_nBlock);
    }
    if (!error.failed()) {
        error = operation.execute();
    }
    qint64 moved = 0;
    if (!error.failed()) {
        error = operation.result(m_nBlock, &moved);
    }
    NodeId buffer = NO_NODE;
    if (!error.failed()) {
        error = operation.node("FileAccessBuffer", &buffer);
    }
    bytes->clear();
    if (error.failed() || moved == 0) {
        return error;
    }
    return RegisterAccess(operation.evaluator(), buffer).readRaw(static_cast<int>(moved), bytes);
}

DeviceError FileAccess::write(const DeviceSession &session, qint64 offset, const QByteArray &bytes,
                              qint64 *written)
{
    Operation operation(*this, session);
    DeviceError error = operation.select("Write");
    if (!error.failed()) {
        error = operation.place(offset, bytes.size());
    }
    NodeId buffer = NO_NODE;
    if (!error.failed()) {
        error = operation.node("FileAccessBuffer", &buffer);
    }
    if (!error.failed()) {
        error = RegisterAccess(operation.evaluator(), buffer).writeRaw(bytes);
    }
    if (!error.failed()) {
        error = operation.execute();
    }
    if (!error.failed()) {
        error = operation.result(bytes.size(), written);
    }
    if (!error.failed() && *written == 0) {
        error = operation.failure(NODE_RUNTIME,
                                  QStringLiteral("the device took nothing at byte %1").arg(offset));
    }
    return error;
}

DeviceError FileAccess::close(const DeviceSession &session)
{
    if (!m_bOpen) {
        return {};
    }
    m_bOpen = false;
    Operation operation(*this, session);
    DeviceError error = operation.select("Close");
    if (!error.failed()) {
        error = operation.execute();
    }
    if (!error.isTransport()) {
        // The user's selection comes back; the transfer does not depend on it.
        operation.assign("FileSelector", m_nSelectedBefore);
    }
    return error;
}
