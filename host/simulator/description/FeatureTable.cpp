#include "host/simulator/description/FeatureTable.h"

#include "host/simulator/description/FeatureBuilder.h"

#include <algorithm>

namespace {

constexpr quint64 kAlignment = 4; // GigE Vision addresses registers in 4-byte steps

} // namespace

QByteArray spacedName(const QByteArray &name)
{
    const auto isUpper = [&name](int i) {
        return i < name.size() && name.at(i) >= 'A' && name.at(i) <= 'Z';
    };
    const auto isLower = [&name](int i) {
        return i < name.size() && name.at(i) >= 'a' && name.at(i) <= 'z';
    };
    QByteArray spaced;
    for (int i = 0; i < name.size(); ++i) {
        const bool startsWord = spaced.isEmpty() || spaced.endsWith(' ');
        if (name.at(i) == '_') {
            spaced += startsWord ? "" : " ";
            continue;
        }
        if (!startsWord && isUpper(i) && (!isUpper(i - 1) || (isLower(i + 1) && isLower(i + 2)))) {
            spaced += ' ';
        }
        spaced += startsWord ? QByteArray(1, name.at(i)).toUpper() : QByteArray(1, name.at(i));
    }
    return spaced;
}

void FeatureTable::category(const char *name, const Texts &texts, quint64 base, const char *parent,
                            const char *visibility)
{
    m_strCategory = name;
    m_nNextAddress = base;
    NodeRow &row = addNode("Category", name);
    row.m_strNameSpace = "Standard";
    addTexts(row, texts);
    row.m_properties.append({"Visibility", visibility, {}, {}});
    if (!m_nodeIndex.contains(parent)) {
        m_strCategory.clear();
        addNode("Category", parent).m_strNameSpace = "Standard";
        m_strCategory = name;
    }
    alsoIn(parent, name);
}

FeatureBuilder FeatureTable::integer(const char *name, const Texts &texts)
{
    return addFeature("Integer", name, texts);
}

FeatureBuilder FeatureTable::floating(const char *name, const Texts &texts)
{
    return addFeature("Float", name, texts);
}

FeatureBuilder FeatureTable::boolean(const char *name, const Texts &texts)
{
    return addFeature("Boolean", name, texts);
}

FeatureBuilder FeatureTable::enumeration(const char *name, const Texts &texts)
{
    return addFeature("Enumeration", name, texts);
}

FeatureBuilder FeatureTable::command(const char *name, const Texts &texts)
{
    return addFeature("Command", name, texts);
}

FeatureBuilder FeatureTable::string(const char *name, const Texts &texts, const RegisterSpec &spec)
{
    FeatureBuilder builder = addFeature("StringReg", name, texts);
    describeRegister(node(name), spec, place(name, spec));
    return builder;
}

FeatureBuilder FeatureTable::directRegister(const char *name, const Texts &texts,
                                            const RegisterSpec &spec)
{
    FeatureBuilder builder = addFeature("IntReg", name, texts);
    describeRegister(node(name), spec, place(name, spec));
    return builder;
}

FeatureBuilder FeatureTable::bytes(const char *name, const Texts &texts, const RegisterSpec &spec)
{
    FeatureBuilder builder = addFeature("Register", name, texts);
    const QByteArray owner = spec.m_strWord.isEmpty() ? QByteArray(name) : spec.m_strWord;
    describeRegister(node(name), spec, place(owner, spec));
    return builder;
}

void FeatureTable::registerNode(const char *name, const RegisterSpec &spec)
{
    static const QHash<int, const char *> kTags = {
        {int(RegisterSpec::Kind::Integer), "IntReg"},
        {int(RegisterSpec::Kind::Masked), "MaskedIntReg"},
        {int(RegisterSpec::Kind::Float), "FloatReg"},
        {int(RegisterSpec::Kind::Text), "StringReg"},
    };
    const quint64 address =
        place(spec.m_strWord.isEmpty() ? QByteArray(name) : spec.m_strWord, spec);
    describeRegister(addNode(kTags.value(int(spec.m_eKind)), name), spec, address);
}

void FeatureTable::rawRegister(const char *name, const RegisterSpec &spec)
{
    describeRegister(addNode("Register", name), spec, place(name, spec));
}

void FeatureTable::intSwissKnife(const char *name, const char *formula, const Variables &variables)
{
    addFormulaNode("IntSwissKnife", name, {{"Formula", formula, {}, {}}}, variables);
}

void FeatureTable::swissKnife(const char *name, const char *formula, const Variables &variables)
{
    addFormulaNode("SwissKnife", name, {{"Formula", formula, {}, {}}}, variables);
}

void FeatureTable::intConverter(const char *name, const char *to, const char *from,
                                const char *value, const Variables &variables)
{
    addFormulaNode(
        "IntConverter", name,
        {{"FormulaTo", to, {}, {}}, {"FormulaFrom", from, {}, {}}, {"pValue", value, {}, {}}},
        variables);
}

void FeatureTable::converter(const char *name, const char *to, const char *from, const char *value,
                             const Variables &variables, const char *slope)
{
    addFormulaNode("Converter", name,
                   {{"FormulaTo", to, {}, {}},
                    {"FormulaFrom", from, {}, {}},
                    {"pValue", value, {}, {}},
                    {"Slope", slope, {}, {}}},
                   variables);
}

void FeatureTable::constant(const char *name, qint64 value)
{
    NodeRow &row = addNode("Integer", name);
    row.m_properties.append({"Visibility", "Invisible", {}, {}});
    row.m_properties.append({"Value", QByteArray::number(value), {}, {}});
}

void FeatureTable::structRegister(const char *name, const RegisterSpec &spec)
{
    describeRegister(addNode("StructReg", name), spec, place(name, spec));
}

void FeatureTable::structEntry(const char *structName, const char *name, int shift, int width,
                               qint64 initial)
{
    RegisterRow &word = m_registers[m_registerIndex.value(structName)];
    RegisterSpec spec = Bits(structName, shift, width, initial);
    spec.m_bLittleEndian = word.m_bLittleEndian;
    const QByteArray bytes = spec.initialBytes();
    for (int i = 0; i < bytes.size(); ++i) {
        word.m_initial[i] = char(word.m_initial.at(i) | bytes.at(i));
    }
    NodeRow entry;
    entry.m_strTag = "StructEntry";
    entry.m_strName = name;
    entry.m_properties.append({"LSB", QByteArray::number(spec.describedLsb()), {}, {}});
    entry.m_properties.append({"MSB", QByteArray::number(spec.describedMsb()), {}, {}});
    node(structName).m_children.append(entry);
}

void FeatureTable::alsoIn(const char *category, const char *feature)
{
    node(category).m_properties.append({"pFeature", feature, {}, {}});
}

void FeatureTable::rename(const QByteArray &from, const QByteArray &to)
{
    Q_ASSERT_X(m_nodeIndex.contains(from) && !m_nodeIndex.contains(to), "FeatureTable",
               to.constData());
    m_nodeIndex.insert(to, m_nodeIndex.take(from));
    m_texts.insert(to, m_texts.take(from));
    node(to).m_strName = to;
    for (NodeRow &row : m_nodes) {
        for (PropertyRow &property : row.m_properties) {
            if (property.m_strTag.startsWith('p') && property.m_strText == from) {
                property.m_strText = to;
            } else if (row.m_strName == to && property.m_strTag == "DisplayName") {
                property.m_strText = spacedName(to);
            }
        }
    }
}

void FeatureTable::remove(const QByteArray &name)
{
    Q_ASSERT_X(m_nodeIndex.contains(name), "FeatureTable", name.constData());
    m_nodes.remove(m_nodeIndex.value(name));
    m_texts.remove(name);
    m_nodeIndex.clear();
    for (int index = 0; index < m_nodes.size(); ++index) {
        NodeRow &row = m_nodes[index];
        m_nodeIndex.insert(row.m_strName, index);
        row.m_properties.erase(std::remove_if(row.m_properties.begin(), row.m_properties.end(),
                                              [&name](const PropertyRow &property) {
                                                  return property.m_strTag.startsWith('p')
                                                      && property.m_strText == name;
                                              }),
                               row.m_properties.end());
    }
}

const RegisterRow *FeatureTable::findRegister(const QByteArray &name) const
{
    const auto found = m_registerIndex.constFind(name);
    return found == m_registerIndex.constEnd() ? nullptr : &m_registers.at(*found);
}

const FieldRow *FeatureTable::findField(const QByteArray &name) const
{
    const auto found = m_fields.constFind(name);
    return found == m_fields.constEnd() ? nullptr : &*found;
}

NodeRow &FeatureTable::node(const QByteArray &name)
{
    Q_ASSERT_X(m_nodeIndex.contains(name), "FeatureTable", name.constData());
    return m_nodes[m_nodeIndex.value(name)];
}

NodeRow &FeatureTable::addNode(const char *tag, const QByteArray &name)
{
    Q_ASSERT_X(!m_nodeIndex.contains(name), "FeatureTable", name.constData());
    m_nodeIndex.insert(name, m_nodes.size());
    NodeRow row;
    row.m_strTag = tag;
    row.m_strName = name;
    row.m_strGroup = m_strCategory;
    m_nodes.append(row);
    return m_nodes.last();
}

FeatureBuilder FeatureTable::addFeature(const char *tag, const char *name, const Texts &texts)
{
    NodeRow &row = addNode(tag, name);
    row.m_strNameSpace = "Standard";
    addTexts(row, texts);
    alsoIn(m_strCategory.constData(), name);
    return {this, m_nodeIndex.value(name)};
}

void FeatureTable::addTexts(NodeRow &row, const Texts &texts)
{
    const QByteArray description = texts.m_strDescription;
    const int firstSentence = description.indexOf(". ");
    row.m_properties.append(
        {"ToolTip", firstSentence < 0 ? description : description.left(firstSentence + 1), {}, {}});
    row.m_properties.append({"Description", description, {}, {}});
    row.m_properties.append({"DisplayName", spacedName(row.m_strName), {}, {}});
    m_texts.insert(row.m_strName, {texts.m_strNameCn, texts.m_strDescriptionCn, {}});
}

RegisterSpec FeatureTable::ordered(RegisterSpec spec) const
{
    spec.m_bLittleEndian = spec.m_bLittleEndian || m_bLittleEndian;
    return spec;
}

quint64 FeatureTable::place(const QByteArray &name, const RegisterSpec &given)
{
    const RegisterSpec spec = ordered(given);
    const QByteArray bytes = spec.initialBytes();
    const bool isNextFree = spec.m_nAddress == RegisterSpec::kNextFree;
    const auto known = m_registerIndex.constFind(name);
    if (known != m_registerIndex.constEnd()) {
        RegisterRow &word = m_registers[*known];
        for (int i = 0; i < bytes.size(); ++i) {
            word.m_initial[i] = char(word.m_initial.at(i) | bytes.at(i));
        }
        word.m_bWritable = word.m_bWritable || spec.isWritable();
        word.m_bStored = word.m_bStored || spec.m_bStored;
        return isNextFree ? word.m_nAddress : spec.m_nAddress;
    }
    RegisterRow row;
    row.m_strName = name;
    row.m_nAddress = isNextFree ? m_nNextAddress : spec.m_nAddress;
    row.m_initial = bytes;
    row.m_bWritable = spec.isWritable();
    row.m_bStored = spec.m_bStored;
    row.m_bLittleEndian = spec.m_bLittleEndian;
    if (isNextFree) {
        m_nNextAddress += (quint64(bytes.size()) + kAlignment - 1) / kAlignment * kAlignment;
    }
    m_registerIndex.insert(name, m_registers.size());
    m_registers.append(row);
    return row.m_nAddress;
}

void FeatureTable::describeRegister(NodeRow &row, const RegisterSpec &given, quint64 address)
{
    const RegisterSpec spec = ordered(given);
    m_fields.insert(row.m_strName, {spec, address});
    auto &properties = row.m_properties;
    const auto add = [&properties](const char *tag, const QByteArray &text) {
        properties.append({tag, text, {}, {}});
    };
    add("Address", "0x" + QByteArray::number(address, 16).toUpper());
    if (!spec.m_strOffset.isEmpty()) {
        add("pAddress", spec.m_strOffset);
    }
    if (!spec.m_strIndex.isEmpty()) {
        properties.append(
            {"pIndex", spec.m_strIndex, "Offset", QByteArray::number(spec.m_nLength)});
    }
    add("Length", QByteArray::number(spec.m_nLength));
    add("AccessMode", spec.m_strAccess);
    add("pPort", "Device");
    if (!spec.m_strCachable.isEmpty()) {
        add("Cachable", spec.m_strCachable);
    }
    if (spec.m_nPollingTime >= 0) {
        add("PollingTime", QByteArray::number(spec.m_nPollingTime));
    }
    for (const QByteArray &invalidator : spec.m_invalidators) {
        add("pInvalidator", invalidator);
    }
    if (spec.m_eKind == RegisterSpec::Kind::Masked) {
        if (spec.m_nWidth == 1) {
            add("Bit", QByteArray::number(spec.describedLsb()));
        } else {
            add("LSB", QByteArray::number(spec.describedLsb()));
            add("MSB", QByteArray::number(spec.describedMsb()));
        }
    }
    const bool isInteger = row.m_strTag == "IntReg" || row.m_strTag == "MaskedIntReg";
    if (isInteger) {
        add("Sign", spec.m_bSigned ? "Signed" : "Unsigned");
    }
    if (isInteger || row.m_strTag == "FloatReg" || row.m_strTag == "StructReg") {
        add("Endianess", spec.m_bLittleEndian ? "LittleEndian" : "BigEndian");
    }
}

void FeatureTable::addFormulaNode(const char *tag, const char *name,
                                  const QVector<PropertyRow> &formulas, const Variables &variables)
{
    NodeRow &row = addNode(tag, name);
    for (const auto &variable : variables) {
        row.m_properties.append({"pVariable", variable.second, "Name", variable.first});
    }
    row.m_properties += formulas;
}
