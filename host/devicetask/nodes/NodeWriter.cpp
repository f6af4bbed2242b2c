#include "host/devicetask/nodes/NodeWriter.h"

#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeAssigner.h"
#include "host/devicetask/nodes/NodeBounds.h"
#include "host/devicetask/nodes/NodeReader.h"

#include <algorithm>

namespace {

/// One write: the node is looked up and may be written before anything else happens.
class WriteOperation
{
public:
    WriteOperation(const DeviceSession &session, const QByteArray &name)
        : m_evaluator(session)
        , m_name(name)
        , m_error(AccessMode::requireWritable(m_evaluator, name, &m_nId))
    {
    }

    bool failed() const { return m_error.failed(); }
    const DeviceError &error() const { return m_error; }
    NodeKind kind() const { return m_evaluator.at(m_nId).kind; }
    NodeId id() const { return m_nId; }
    NodeEvaluator &evaluator() { return m_evaluator; }

    DeviceError outOfRange(const QString &value) const
    {
        return {NODE_RANGE,
                QStringLiteral("%1 does not take %2").arg(QString::fromUtf8(m_name), value)};
    }
    DeviceError wrongKind(const char *wanted) const
    {
        return NodeReader::wrongKind(m_name, wanted);
    }
    DeviceError assign(const FormulaNumber &value)
    {
        return NodeAssigner(m_evaluator).number(m_nId, value);
    }

    template<class Matches>
    DeviceError assignEntry(const QString &shown, Matches matches)
    {
        QVector<qint64> entries;
        const DeviceError failure = NodeReader::availableEntries(m_evaluator, m_nId, &entries);
        if (failure.failed()) {
            return failure;
        }
        const auto it = std::find_if(entries.cbegin(), entries.cend(), matches);
        return it == entries.cend() ? outOfRange(shown) : assign(FormulaNumber::ofInteger(*it));
    }

    DeviceError checkInteger(qint64 value)
    {
        bool takesAll = false;
        DeviceError failure = NodeBounds(m_evaluator).takesAll64Bits(m_nId, &takesAll);
        if (failure.failed() || takesAll) {
            return failure;
        }
        _NODE_INT_VALUE_ range{};
        failure = NodeReader::integerRange(m_evaluator, m_nId, &range);
        if (failure.failed()) {
            return failure;
        }
        const quint64 distance = static_cast<quint64>(value) - static_cast<quint64>(range.min);
        const bool isOnStep = distance % static_cast<quint64>(range.inc) == 0;
        if (value < range.min || value > range.max || !isOnStep) {
            return outOfRange(QStringLiteral("%1; it takes %2 to %3 in steps of %4")
                                  .arg(value)
                                  .arg(range.min)
                                  .arg(range.max)
                                  .arg(range.inc));
        }
        return {};
    }

private:
    NodeEvaluator m_evaluator;
    const QByteArray m_name;
    NodeId m_nId = NO_NODE;
    const DeviceError m_error;
};

} // namespace

DeviceError NodeWriter::integer(const DeviceSession &session, const QByteArray &name, qint64 value)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    if (write.kind() == NodeKind::Enumeration) {
        return write.assignEntry(QString::number(value),
                                 [value](qint64 entry) { return entry == value; });
    }
    if (!NodeReader::isIntegerLike(write.kind())) {
        return write.wrongKind("integer");
    }
    const DeviceError failure = write.checkInteger(value);
    return failure.failed() ? failure : write.assign(FormulaNumber::ofInteger(value));
}

DeviceError NodeWriter::floating(const DeviceSession &session, const QByteArray &name, float value)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    if (!NodeReader::isFloatLike(write.kind())) {
        return write.wrongKind("float");
    }
    double min = 0;
    double max = 0;
    const DeviceError failure = NodeReader::floatRange(write.evaluator(), write.id(), &min, &max);
    if (failure.failed()) {
        return failure;
    }
    // A bound such as 0.1 rounds up to a float beyond it; the caller who writes that float means the bound.
    const double exactValue = static_cast<double>(value);
    const bool fits = (exactValue >= min || value == NodeReader::toFloat(min))
        && (exactValue <= max || value == NodeReader::toFloat(max));
    if (!fits) {
        return write.outOfRange(
            QStringLiteral("%1; it takes %2 to %3").arg(value).arg(min).arg(max));
    }
    return write.assign(FormulaNumber::ofReal(qBound(min, exactValue, max)));
}

DeviceError NodeWriter::enumeration(const DeviceSession &session, const QByteArray &name,
                                    quint32 value)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    if (write.kind() != NodeKind::Enumeration) {
        return write.wrongKind("enumeration");
    }
    return write.assignEntry(QString::number(value), [value](qint64 entry) {
        return static_cast<quint32>(entry) == value;
    });
}

DeviceError NodeWriter::boolean(const DeviceSession &session, const QByteArray &name, bool value)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    if (write.kind() == NodeKind::Enumeration) {
        const int number = value ? 1 : 0;
        return write.assignEntry(QString::number(number),
                                 [number](qint64 entry) { return entry == number; });
    }
    return write.kind() == NodeKind::Boolean ? write.assign(FormulaNumber::ofInteger(value ? 1 : 0))
                                             : write.wrongKind("boolean");
}

DeviceError NodeWriter::string(const DeviceSession &session, const QByteArray &name,
                               const QByteArray &value)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    qint64 length = 0;
    const DeviceError failure = NodeReader::stringLength(write.evaluator(), write.id(), &length);
    if (failure.failed()) {
        return failure;
    }
    if (value.size() > length || value.contains('\0')) {
        return write.outOfRange(
            QStringLiteral("this text of %1 bytes; it takes %2").arg(value.size()).arg(length));
    }
    return NodeAssigner(write.evaluator()).text(write.id(), value);
}

DeviceError NodeWriter::execute(const DeviceSession &session, const QByteArray &name)
{
    WriteOperation write(session, name);
    if (write.failed()) {
        return write.error();
    }
    return write.kind() == NodeKind::Command ? NodeAssigner(write.evaluator()).command(write.id())
                                             : write.wrongKind("command");
}
