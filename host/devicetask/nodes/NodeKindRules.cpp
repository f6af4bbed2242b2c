#include "host/devicetask/nodes/NodeKindRules.h"

#include <deque>

namespace {

constexpr qint64 MAX_TEXT = 1024 * 1024;
constexpr qint64 MAX_BYTES = 64 * 1024 * 1024;

using Rules = QVector<NodeKindRule>;

const Rules &rules()
{
    static const Rules RULES = {
        {"Category", NodeKind::Category, NodeGives::Nothing, false, false, 0, 0},
        {"Integer", NodeKind::Integer, NodeGives::Number, true, false, 0, 0},
        {"Float", NodeKind::Float, NodeGives::Number, true, true, 0, 0},
        {"Boolean", NodeKind::Boolean, NodeGives::Number, true, false, 0, 0},
        {"Enumeration", NodeKind::Enumeration, NodeGives::Number, true, false, 0, 0},
        {"String", NodeKind::String, NodeGives::Text, true, false, 0, 0},
        {"Command", NodeKind::Command, NodeGives::Nothing, true, false, 0, 0},
        {"IntSwissKnife", NodeKind::IntSwissKnife, NodeGives::Number, false, false, 0, 0},
        {"SwissKnife", NodeKind::SwissKnife, NodeGives::Number, false, true, 0, 0},
        {"IntConverter", NodeKind::IntConverter, NodeGives::Number, true, false, 0, 0},
        {"Converter", NodeKind::Converter, NodeGives::Number, true, true, 0, 0},
        {"IntReg", NodeKind::IntReg, NodeGives::Number, false, false, 1, 8},
        {"MaskedIntReg", NodeKind::MaskedIntReg, NodeGives::Number, false, false, 1, 8},
        {"StructEntry", NodeKind::StructEntry, NodeGives::Number, false, false, 1, 8},
        {"FloatReg", NodeKind::FloatReg, NodeGives::Number, false, true, 4, 8},
        {"StringReg", NodeKind::StringReg, NodeGives::Text, false, false, 1, MAX_TEXT},
        {"Register", NodeKind::Register, NodeGives::Nothing, false, false, 1, MAX_BYTES},
        {"Port", NodeKind::Port, NodeGives::Port, false, false, 0, 0},
        {"", NodeKind::Other, NodeGives::Nothing, false, false, 0, 0},
    };
    return RULES;
}

} // namespace

const NodeKindRule &nodeKindRule(NodeKind kind)
{
    // In the order of NodeKind.
    return rules().at(static_cast<int>(kind));
}

const NodeKindRule &nodeKindRule(const QStringRef &tag)
{
    struct LookUp
    {
        LookUp()
        {
            for (const NodeKindRule &rule : rules()) {
                Q_ASSERT(&rule == &nodeKindRule(rule.kind));
                tags.push_back(QString::fromLatin1(rule.tag));
                byTag.insert(QStringRef(&tags.back()), &rule);
            }
        }
        std::deque<QString> tags; ///< what the keys refer to
        QHash<QStringRef, const NodeKindRule *> byTag;
    };
    static const LookUp LOOK_UP;
    return *LOOK_UP.byTag.value(tag, &rules().constLast());
}
