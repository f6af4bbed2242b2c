#include "FuzzTarget.h"
#include "PatternDevice.h"
#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/LocalValues.h"
#include "host/devicetask/nodes/NodeReader.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"
#include "host/devicetask/nodes/NodeWriter.h"

#include <atomic>

namespace {

/// Every node costs a few dozen operations; more of them only make the fuzzer slow.
constexpr int MAX_NODES = 300;

void visit(const DeviceSession &session, const NodeInfo &node)
{
    const QByteArray &name = node.name;
    int mode = -1;
    const DeviceError failure = AccessMode::of(session, name, &mode);
    require(failure.failed() || (mode >= NODE_NI && mode <= NODE_RW), "the mode is known");
    require(node.problem.isEmpty() || failure.failed() || mode == NODE_NI,
            "a bad node is not implemented");

    _NODE_INT_VALUE_ integer{};
    if (!NodeReader::integer(session, name, &integer).failed()) {
        require(node.problem.isEmpty() && integer.inc > 0, "an integer has an increment");
        NodeWriter::integer(session, name, integer.value);
        NodeWriter::integer(session, name, integer.max);
    }
    _NODE_FLOAT_VALUE_ real{};
    if (!NodeReader::floating(session, name, &real).failed()) {
        require(node.problem.isEmpty(), "a bad node is not read");
        NodeWriter::floating(session, name, real.value);
        NodeWriter::floating(session, name, real.min);
    }
    EnumReading choice{};
    if (!NodeReader::enumeration(session, name, &choice).failed()) {
        require(node.problem.isEmpty() && choice.entries.size() <= node.entries.size(),
                "entries are those of the description");
        NodeWriter::enumeration(session, name, choice.value);
    }
    bool flag = false;
    if (!NodeReader::boolean(session, name, &flag).failed()) {
        require(node.problem.isEmpty(), "a bad node is not read");
        NodeWriter::boolean(session, name, !flag);
    }
    QString text;
    qint64 length = 0;
    if (!NodeReader::string(session, name, &text, &length).failed()) {
        require(node.problem.isEmpty(), "a bad node is not read");
        NodeWriter::string(session, name, text.toUtf8());
    }
    NodeWriter::execute(session, name);
}

void openOn(const NodeTable &table, const QByteArray &memory)
{
    ArvDevice *device = newPatternDevice(memory);
    {
        LocalValues locals;
        std::atomic<unsigned int> answered{0};
        const DeviceSession session{device, table, locals, answered};
        for (NodeId id = 0; id < qMin(table.count(), MAX_NODES); ++id) {
            visit(session, table.at(id));
        }
    }
    g_object_unref(device);
}

} // namespace

/// Reads a description, checks it, reads every node that is left over a device of zeros and over one of ugly bytes, and
/// writes back what it read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), static_cast<int>(size));
    NodeTable table;
    QString reason;
    int line = 0;
    if (!NodeTableReader::read(NodeTableReader::withoutPadding(xml), &table, &reason, &line)) {
        require(!reason.isEmpty() && line >= 1, "a refusal tells reason and line");
        return 0;
    }
    for (const NodeFault &fault : NodeTableCheck::findProblems(&table)) {
        require(!fault.reason.isEmpty() && fault.line >= 1, "a fault tells reason and line");
    }
    openOn(table, {});
    QByteArray ugly;
    for (int i = 0; i < PATTERN_MEMORY_SIZE; ++i) {
        ugly += static_cast<char>(0x80 | (i * 37));
    }
    openOn(table, ugly);
    return 0;
}
