#include "host/devicetask/DescriptionIndex.h"

#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcDescription, "vexa.devicetask.description")

namespace {

/// What one kind of node needs, so that its registers and bits can be read.
struct NodeRule
{
    const char *tag;
    bool needsValue;
    bool isRegister;
    qint64 minLength;
    qint64 maxLength;
};

constexpr qint64 MAX_BYTES = 64 * 1024 * 1024;

const NodeRule NODE_RULES[] = {
    {"Integer", true, false, 0, 0},
    {"Float", true, false, 0, 0},
    {"Boolean", true, false, 0, 0},
    {"Enumeration", true, false, 0, 0},
    {"String", true, false, 0, 0},
    {"Command", true, false, 0, 0},
    {"IntConverter", true, false, 0, 0},
    {"Converter", true, false, 0, 0},
    {"IntReg", false, true, 1, 8},
    {"MaskedIntReg", false, true, 1, 8},
    {"StructEntry", false, true, 1, 8},
    {"FloatReg", false, true, 4, 8},
    {"StringReg", false, true, 1, MAX_BYTES},
    {"Register", false, true, 1, MAX_BYTES},
};

bool accepts(ReferenceKind reference, TargetKind target)
{
    switch (reference) {
    case ReferenceKind::Number:
        return target == TargetKind::Number;
    case ReferenceKind::Condition:
        return target == TargetKind::Number || target == TargetKind::Boolean;
    case ReferenceKind::Text:
        return target == TargetKind::Text;
    case ReferenceKind::Port:
        return target == TargetKind::Port;
    }
    return false;
}

QByteArray registerProblem(const NodeInfo &node, const NodeRule &rule)
{
    if (!node.hasPort) {
        return "it has no port";
    }
    if (!node.hasLength) {
        return "it has no length";
    }
    const bool isConstant = node.length >= 0;
    if (isConstant && (node.length < rule.minLength || node.length > rule.maxLength)) {
        return "its length of " + QByteArray::number(node.length) + " bytes does not fit its kind";
    }
    const qint64 last = (isConstant ? node.length : rule.maxLength) * 8 - 1;
    if ((node.bits() > 0 || node.lsb >= 0 || node.msb >= 0)
        && (node.lsb < 0 || node.msb < 0 || node.lsb > last || node.msb > last)) {
        return "its bits lie outside its register";
    }
    return {};
}

QByteArray ownProblem(const NodeInfo &node)
{
    for (const NodeRule &rule : NODE_RULES) {
        if (node.tag != rule.tag) {
            continue;
        }
        if (rule.needsValue && !node.hasValue) {
            return "it has no value";
        }
        return rule.isRegister ? registerProblem(node, rule) : QByteArray();
    }
    return {};
}

} // namespace

int NodeInfo::bits() const
{
    return lsb < 0 || msb < 0 ? 0 : static_cast<int>(qMin<qint64>(qAbs(msb - lsb), MAX_BYTES)) + 1;
}

const NodeInfo *DescriptionIndex::find(const QByteArray &name) const
{
    const auto it = m_nodes.constFind(name);
    return it == m_nodes.constEnd() ? nullptr : &it.value();
}

void DescriptionIndex::add(const QByteArray &name, const NodeInfo &node)
{
    const auto it = m_nodes.find(name);
    if (it == m_nodes.end()) {
        m_nodes.insert(name, node);
        return;
    }
    // Which of the two Aravis evaluates is its own affair.
    const QVector<NodeInfo::Reference> others = it->references;
    *it = node;
    it->references += others;
    it->problem = "the name stands for two nodes";
}

void DescriptionIndex::findProblems(const KindOf &kindOf)
{
    findOwnProblems(kindOf);
    findChainProblems();
    logProblems();
}

void DescriptionIndex::findOwnProblems(const KindOf &kindOf)
{
    for (auto it = m_nodes.begin(); it != m_nodes.end(); ++it) {
        if (it->problem.isEmpty()) {
            it->problem = ownProblem(*it);
        }
        for (const NodeInfo::Reference &reference : qAsConst(it->references)) {
            if (!it->problem.isEmpty()) {
                break;
            }
            const TargetKind kind = kindOf(reference.target);
            if (kind == TargetKind::Missing) {
                it->problem = "it refers to " + reference.target + ", which does not exist";
            } else if (!accepts(reference.kind, kind)) {
                it->problem =
                    "it refers to " + reference.target + ", which has no value that it can use";
            }
        }
    }
}

void DescriptionIndex::findChainProblems()
{
    struct Progress
    {
        int open = 0; ///< references that are not worked out yet
        int depth = 1;
        qint64 evaluations = 1;
        QVector<QByteArray> referredBy;
    };
    QHash<QByteArray, Progress> progress;
    progress.reserve(m_nodes.size());
    QVector<QByteArray> done;
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        int open = 0;
        for (const NodeInfo::Reference &reference : it->references) {
            if (m_nodes.contains(reference.target)) {
                progress[reference.target].referredBy.append(it.key());
                ++open;
            }
        }
        progress[it.key()].open = open;
        if (open == 0) {
            done.append(it.key());
        }
    }
    // From the registers upwards; what is never reached stands in a circle or leads into one.
    for (int i = 0; i < done.size(); ++i) {
        const QByteArray name = done[i];
        const Progress own = progress.value(name);
        NodeInfo &node = m_nodes[name];
        if (node.problem.isEmpty() && own.depth > MAX_DEPTH) {
            node.problem = "its references go deeper than " + QByteArray::number(MAX_DEPTH);
        }
        if (node.problem.isEmpty() && own.evaluations > MAX_EVALUATIONS) {
            node.problem = "its evaluation follows too many references";
        }
        for (const QByteArray &user : own.referredBy) {
            Progress &upper = progress[user];
            upper.depth = std::max(upper.depth, own.depth + 1);
            upper.evaluations = std::min(upper.evaluations + own.evaluations, MAX_EVALUATIONS + 1);
            NodeInfo &upperNode = m_nodes[user];
            if (upperNode.problem.isEmpty() && !node.problem.isEmpty()) {
                upperNode.problem = "it needs " + name + ", which cannot be evaluated";
            }
            if (--upper.open == 0) {
                done.append(user);
            }
        }
    }
    for (auto it = m_nodes.begin(); it != m_nodes.end(); ++it) {
        if (progress.value(it.key()).open > 0) {
            it->problem = "its references lead into a circle";
        }
    }
}

void DescriptionIndex::logProblems() const
{
    constexpr int MAX_LINES = 100;
    int count = 0;
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        if (!it->problem.isEmpty() && ++count <= MAX_LINES) {
            qCWarning(lcDescription, "Node %s is left out: %s.", it.key().constData(),
                      it->problem.constData());
        }
    }
    if (count > MAX_LINES) {
        qCWarning(lcDescription, "%d more nodes are left out.", count - MAX_LINES);
    }
}
