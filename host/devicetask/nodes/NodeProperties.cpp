#include "host/devicetask/nodes/NodeProperties.h"

#include "host/devicetask/nodes/DescriptionText.h"
#include "host/devicetask/nodes/NodeKindRules.h"

#include <deque>
#include <limits>

namespace {

using NumberFault = DescriptionText::Fault;

/// One property as it stands in the text.
struct Property
{
    QByteArray tag;
    QByteArray text;
    int line = 0;
    QByteArray name; ///< attributes
    QByteArray index;
    QByteArray offset;
    QByteArray offsetNode;
};

/// How one kind of property is taken over, and into which member where that is all that differs.
struct PropertyRule
{
    QByteArray tag;
    void (*take)(NodeDraft &draft, const PropertyRule &rule, const Property &property);
    NodeOperand NodeInfo::*operand = nullptr;
    QVector<NodeId> NodeInfo::*list = nullptr;
    qint64 NodeInfo::*integer = nullptr;
    bool hasAttributes = false;
};

/// A constant in the arithmetic of the node; None after a fault.
NodeOperand constantOf(NodeDraft &draft, const Property &property, bool isReal)
{
    NodeOperand operand;
    NumberFault fault = NumberFault::None;
    if (isReal) {
        fault = DescriptionText::number(property.text, &operand.constant);
    } else {
        fault = DescriptionText::integer(property.text, &operand.constant.integer);
    }
    if (fault == NumberFault::None) {
        operand.source = NodeOperand::Source::Constant;
    } else {
        draft.addFault(property.line,
                       DescriptionText::describe(fault, property.tag, property.text));
    }
    return operand;
}

NodeOperand nodeOf(NodeDraft &draft, const QByteArray &tag, const QByteArray &target, int line)
{
    NodeOperand operand;
    operand.source = NodeOperand::Source::Node;
    operand.node = draft.refer(tag, target, line);
    return operand;
}

bool isReal(const NodeDraft &draft)
{
    return nodeKindRule(draft.info.kind).isReal;
}

void takeConstant(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    draft.info.*rule.operand = constantOf(draft, property, isReal(draft));
}

void takeValue(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    if (draft.info.kind == NodeKind::String) {
        draft.info.text = property.text;
        draft.info.value.source = NodeOperand::Source::Constant;
        return;
    }
    const QByteArray word = property.text.trimmed().toLower();
    if (draft.info.kind == NodeKind::Boolean && (word == "true" || word == "false")) {
        draft.info.value.source = NodeOperand::Source::Constant;
        draft.info.value.constant.integer = word == "true" ? 1 : 0;
    } else if (nodeKindRule(draft.info.kind).needsValue) {
        takeConstant(draft, rule, property);
    }
}

void takeBound(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    if (nodeKindRule(draft.info.kind).gives != NodeGives::Number) {
        return;
    }
    NodeOperand bound;
    FormulaNumber number;
    bool isAboveSigned = false;
    if (isReal(draft)
        && DescriptionText::number(property.text, &number) == NumberFault::NotFinite) {
        draft.addFault(
            property.line,
            DescriptionText::describe(NumberFault::NotFinite, property.tag, property.text)
                + " and counts as none",
            true);
    } else {
        bound = constantOf(draft, property, isReal(draft));
    }
    // As a bound a number above all that can be expressed does not turn negative.
    if (!isReal(draft) && bound.source == NodeOperand::Source::Constant
        && DescriptionText::integer(property.text, &number.integer, &isAboveSigned)
            == NumberFault::None
        && isAboveSigned) {
        bound.constant.integer = std::numeric_limits<qint64>::max();
    }
    draft.info.*rule.operand = bound;
}

void takeNode(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    draft.info.*rule.operand = nodeOf(draft, property.tag, property.text, property.line);
}

void takeListed(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    (draft.info.*rule.list).append(draft.refer(property.tag, property.text, property.line));
}

void takeInteger(NodeDraft &draft, const PropertyRule &rule, const Property &property)
{
    draft.info.*rule.integer = constantOf(draft, property, false).constant.integer;
}

void takeBit(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.lsb = constantOf(draft, property, false).constant.integer;
    draft.info.msb = draft.info.lsb;
}

void takeLength(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.length = constantOf(draft, property, false);
}

void takeIndexed(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    Property index = property;
    index.tag += " Index";
    index.text = property.index;
    const NodeOperand key = constantOf(draft, index, false);
    const NodeOperand value = property.tag == "ValueIndexed"
        ? constantOf(draft, property, isReal(draft))
        : nodeOf(draft, property.tag, property.text, property.line);
    draft.info.indexedValues.append({key.constant.integer, value});
}

void takeAddress(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    NodeAddress address;
    address.constant = constantOf(draft, property, false).constant.integer;
    if (property.text.trimmed().startsWith('-')) {
        draft.addFault(property.line,
                       "its Address \"" + DescriptionText::shown(property.text) + "\" is negative");
    }
    draft.info.addresses.append(address);
}

void takeAddressNode(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    NodeAddress address;
    address.kind = NodeAddress::Kind::Node;
    address.node = draft.refer(property.tag, property.text, property.line);
    draft.info.addresses.append(address);
}

void takeIndex(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    const NodeId index = draft.refer(property.tag, property.text, property.line);
    if (!nodeKindRule(draft.info.kind).isRegister()) {
        draft.info.index = index;
        return;
    }
    NodeAddress address;
    address.kind = NodeAddress::Kind::Index;
    address.node = index;
    if (!property.offsetNode.isEmpty()) {
        address.offset = nodeOf(draft, "pOffset", property.offsetNode, property.line);
    } else if (!property.offset.isEmpty()) {
        Property offset = property;
        offset.tag = "Offset";
        offset.text = property.offset;
        address.offset = constantOf(draft, offset, false);
    }
    draft.info.addresses.append(address);
}

void takeVariable(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    struct Suffix
    {
        const char *text;
        NodeVariable::Property property;
    };
    static const Suffix SUFFIXES[] = {{".Value", NodeVariable::Property::Value},
                                      {".Min", NodeVariable::Property::Min},
                                      {".Max", NodeVariable::Property::Max},
                                      {".Inc", NodeVariable::Property::Inc}};
    NodeVariable variable;
    variable.name = property.name;
    variable.node = draft.refer(property.tag, property.text, property.line);
    if (property.name.isEmpty()) {
        draft.addFault(property.line, "a pVariable has no Name");
    }
    for (const Suffix &suffix : SUFFIXES) {
        if (property.name.endsWith(suffix.text)) {
            variable.property = suffix.property;
        }
    }
    const int entry = property.name.indexOf(".Enum.");
    if (entry >= 0) {
        variable.property = NodeVariable::Property::Entry;
        variable.entry = property.name.mid(entry + 6);
    }
    draft.info.variables.append(variable);
}

void takeConstantName(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    const bool real = isReal(draft);
    const NodeOperand constant = constantOf(draft, property, real);
    draft.constants.append({property.name, constant.constant});
}

void takeExpression(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.expressions.append({property.tag, property.name, property.text, property.line});
}

void takeFormula(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.formula = {property.tag, {}, property.text, property.line};
}

void takeFormulaTo(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.formulaTo = {property.tag, {}, property.text, property.line};
}

void unknownWord(NodeDraft &draft, const Property &property)
{
    draft.addFault(property.line,
                   "its " + property.tag + " \"" + DescriptionText::shown(property.text)
                       + "\" is no word that it knows",
                   true);
}

NodeInfo::Access accessOf(NodeDraft &draft, const Property &property)
{
    const QByteArray word = property.text.trimmed();
    if (word == "RO") {
        return NodeInfo::Access::ReadOnly;
    }
    if (word == "WO") {
        return NodeInfo::Access::WriteOnly;
    }
    if (word != "RW") {
        unknownWord(draft, property);
        return NodeInfo::Access::None;
    }
    return NodeInfo::Access::ReadWrite;
}

void takeImposedAccess(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.imposedAccess = accessOf(draft, property);
}

void takeAccess(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.registerAccess = accessOf(draft, property);
}

void takeByteOrder(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    const QByteArray word = property.text.trimmed();
    draft.hasByteOrder = true;
    draft.info.isBigEndian = word == "BigEndian";
    if (!draft.info.isBigEndian && word != "LittleEndian") {
        unknownWord(draft, property);
    }
}

void takeSign(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    const QByteArray word = property.text.trimmed();
    draft.hasSign = true;
    draft.info.isSigned = word == "Signed";
    if (!draft.info.isSigned && word != "Unsigned") {
        unknownWord(draft, property);
    }
}

void takeCachable(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.isVolatile = property.text.trimmed() == "NoCache";
}

void takePollingTime(NodeDraft &draft, const PropertyRule &, const Property &)
{
    draft.info.isPolled = true;
}

void takePort(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.port = draft.refer(property.tag, property.text, property.line);
}

void takeChunk(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.info.isChunkPort = draft.info.kind == NodeKind::Port;
    if (property.tag == "pChunkID") {
        draft.refer(property.tag, property.text, property.line);
    }
}

/// References that are not evaluated with the node.
void takeMention(NodeDraft &draft, const PropertyRule &, const Property &property)
{
    draft.refer(property.tag, property.text, property.line);
}

const QVector<PropertyRule> &rules()
{
    using N = NodeInfo;
    static const QVector<PropertyRule> RULES = {
        {"Value", takeValue, &N::value},
        {"pValue", takeNode, &N::value},
        {"pValueCopy", takeListed, nullptr, &N::valueCopies},
        {"pIndex", takeIndex, nullptr, nullptr, nullptr, true},
        {"ValueIndexed", takeIndexed, nullptr, nullptr, nullptr, true},
        {"pValueIndexed", takeIndexed, nullptr, nullptr, nullptr, true},
        {"ValueDefault", takeConstant, &N::defaultValue},
        {"pValueDefault", takeNode, &N::defaultValue},
        {"Min", takeBound, &N::min},
        {"pMin", takeNode, &N::min},
        {"Max", takeBound, &N::max},
        {"pMax", takeNode, &N::max},
        {"Inc", takeBound, &N::inc},
        {"pInc", takeNode, &N::inc},
        {"OnValue", takeInteger, nullptr, nullptr, &N::onValue},
        {"OffValue", takeInteger, nullptr, nullptr, &N::offValue},
        {"CommandValue", takeConstant, &N::commandValue},
        {"pCommandValue", takeNode, &N::commandValue},
        {"pVariable", takeVariable, nullptr, nullptr, nullptr, true},
        {"Constant", takeConstantName, nullptr, nullptr, nullptr, true},
        {"Expression", takeExpression, nullptr, nullptr, nullptr, true},
        {"Formula", takeFormula},
        {"FormulaFrom", takeFormula},
        {"FormulaTo", takeFormulaTo},
        {"Address", takeAddress},
        {"pAddress", takeAddressNode},
        {"Length", takeLength},
        {"pLength", takeNode, &N::length},
        {"AccessMode", takeAccess},
        {"ImposedAccessMode", takeImposedAccess},
        {"pPort", takePort},
        {"Cachable", takeCachable},
        {"PollingTime", takePollingTime},
        {"Endianess", takeByteOrder},
        {"Sign", takeSign},
        {"LSB", takeInteger, nullptr, nullptr, &N::lsb},
        {"MSB", takeInteger, nullptr, nullptr, &N::msb},
        {"Bit", takeBit},
        {"pIsImplemented", takeListed, nullptr, &N::implementedBy},
        {"pIsAvailable", takeListed, nullptr, &N::availableBy},
        {"pIsLocked", takeListed, nullptr, &N::lockedBy},
        {"pInvalidator", takeMention},
        {"pSelected", takeMention},
        {"pFeature", takeMention},
        {"pError", takeMention},
        {"pAlias", takeMention},
        {"pCastAlias", takeMention},
        {"ChunkID", takeChunk},
        {"pChunkID", takeChunk},
        {"EventID", takeChunk},
    };
    return RULES;
}

const PropertyRule *ruleOf(const QStringRef &tag)
{
    struct LookUp
    {
        LookUp()
        {
            for (const PropertyRule &rule : rules()) {
                tags.push_back(QString::fromLatin1(rule.tag));
                byTag.insert(QStringRef(&tags.back()), &rule);
            }
        }
        std::deque<QString> tags; ///< what the keys refer to
        QHash<QStringRef, const PropertyRule *> byTag;
    };
    static const LookUp LOOK_UP;
    return LOOK_UP.byTag.value(tag);
}

} // namespace

void NodeProperties::read(DescriptionCursor &xml, NodeDraft &draft)
{
    const PropertyRule *rule = ruleOf(xml.name());
    if (!rule) {
        xml.skip();
        return;
    }
    Property property;
    property.tag = rule->tag;
    property.line = xml.line();
    if (rule->hasAttributes) {
        property.name = xml.attribute("Name");
        property.index = xml.attribute("Index");
        property.offset = xml.attribute("Offset");
        property.offsetNode = xml.attribute("pOffset");
    }
    property.text = xml.takeText();
    rule->take(draft, *rule, property);
}

void NodeProperties::readEntry(DescriptionCursor &xml, NodeDraft &draft)
{
    NodeEntry entry;
    entry.name = xml.attribute("Name");
    entry.line = xml.line();
    const QByteArray title = "its entry " + DescriptionText::shown(entry.name) + " has no value";
    bool isFaulty = false;
    while (xml.nextChild()) {
        const PropertyRule *rule = ruleOf(xml.name());
        if (!rule) {
            xml.skip();
            continue;
        }
        const int line = xml.line();
        const QByteArray text = xml.takeText();
        if (rule->tag == "Value") {
            const NumberFault fault = DescriptionText::integer(text, &entry.value);
            entry.hasValue = fault == NumberFault::None;
            if (!entry.hasValue) {
                isFaulty = true;
                draft.addFault(
                    line, title + ": " + DescriptionText::describe(fault, rule->tag, text), true);
            }
        } else if (rule->tag == "pIsImplemented") {
            entry.implementedBy.append(draft.refer(rule->tag, text, line));
        } else if (rule->tag == "pIsAvailable") {
            entry.availableBy.append(draft.refer(rule->tag, text, line));
        } else if (rule->take == takeMention || rule->tag == "pIsLocked") {
            draft.refer(rule->tag, text, line);
        }
    }
    if (!entry.hasValue && !isFaulty) {
        draft.addFault(entry.line, title, true);
    }
    draft.info.entries.append(entry);
}
