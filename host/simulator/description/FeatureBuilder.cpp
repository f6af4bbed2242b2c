#include "host/simulator/description/FeatureBuilder.h"

FeatureBuilder &FeatureBuilder::in(const RegisterSpec &spec)
{
    const QByteArray name = row().m_strName + "Reg";
    m_pTable->registerNode(name.constData(), spec);
    if (spec.m_bStored) {
        streamable();
    }
    return property("pValue", name);
}

FeatureBuilder &FeatureBuilder::range(const char *min, const char *max, const char *inc)
{
    const QPair<const char *, const char *> bounds[] = {{"Min", min}, {"Max", max}, {"Inc", inc}};
    for (const auto &bound : bounds) {
        if (*bound.second) {
            property(bound.first, bound.second);
        }
    }
    return *this;
}

FeatureBuilder &FeatureBuilder::numbers(const char *on, const char *off)
{
    property("OnValue", on);
    return property("OffValue", off);
}

FeatureBuilder &FeatureBuilder::runs(const RegisterSpec &spec, const char *commandValue)
{
    const QByteArray name = row().m_strName + "Reg";
    m_pTable->registerNode(name.constData(), spec);
    property("pValue", name);
    return property("CommandValue", commandValue);
}

FeatureBuilder &FeatureBuilder::entry(const char *name, qint64 value, const char *nameCn,
                                      const EntryConditions &conditions)
{
    return entryShown(name, spacedName(name), value, nameCn, conditions);
}

FeatureBuilder &FeatureBuilder::entryShown(const char *name, const QByteArray &displayName,
                                           qint64 value, const char *nameCn,
                                           const EntryConditions &conditions)
{
    NodeRow entry;
    entry.m_strTag = "EnumEntry";
    entry.m_strName = name;
    entry.m_strNameSpace = row().m_strNameSpace;
    entry.m_properties.append({"DisplayName", displayName, {}, {}});
    const QPair<const char *, const char *> conditionRows[] = {
        {"pIsImplemented", conditions.m_strImplemented},
        {"pIsAvailable", conditions.m_strAvailable},
        {"pIsLocked", conditions.m_strLocked},
    };
    for (const auto &condition : conditionRows) {
        if (*condition.second) {
            entry.m_properties.append({condition.first, condition.second, {}, {}});
        }
    }
    entry.m_properties.append({"Value", QByteArray::number(value), {}, {}});
    row().m_children.append(entry);
    m_pTable->m_texts[row().m_strName].m_entries.insert(name, nameCn);
    return *this;
}

FeatureBuilder &FeatureBuilder::streamable()
{
    return property("Streamable", "Yes");
}

FeatureBuilder &FeatureBuilder::selectedBy(const char *selector)
{
    m_pTable->node(selector).m_properties.append({"pSelected", row().m_strName, {}, {}});
    return *this;
}

FeatureBuilder &FeatureBuilder::custom()
{
    row().m_strNameSpace = "Custom";
    return *this;
}

FeatureBuilder &FeatureBuilder::property(const char *tag, const QByteArray &text)
{
    row().m_properties.append({tag, text, {}, {}});
    return *this;
}
