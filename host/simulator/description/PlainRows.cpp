#include "host/simulator/description/PlainRows.h"

RowOptions &RowOptions::standard()
{
    m_bStandard = true;
    return *this;
}

RowOptions &RowOptions::property(const char *tag, const char *text)
{
    m_properties.append(qMakePair(tag, text));
    return *this;
}

RowOptions &RowOptions::selectedBy(const char *selector)
{
    m_selectors.append(selector);
    return *this;
}

RowOptions &RowOptions::at(quint64 address)
{
    m_nAddress = address;
    return *this;
}

RowOptions &RowOptions::readOnly()
{
    m_bReadOnly = true;
    return *this;
}

RowOptions &RowOptions::transient()
{
    m_bTransient = true;
    return *this;
}

RowOptions &RowOptions::moving(int pollingTime)
{
    m_pollingTimes = {pollingTime};
    return *this;
}

RowOptions &RowOptions::littleEndian()
{
    m_bLittleEndian = true;
    return *this;
}

RowOptions &RowOptions::invalidatedBy(const char *node)
{
    m_invalidators.append(node);
    return *this;
}

RowOptions &RowOptions::indexedBy(const char *node, quint32 count)
{
    m_strIndex = node;
    m_nCount = count;
    return *this;
}

RowOptions &RowOptions::offsetBy(const char *node, quint32 count)
{
    m_strOffset = node;
    m_nCount = count;
    return *this;
}

RegisterSpec RowOptions::applied(RegisterSpec spec) const
{
    spec.m_nAddress = m_nAddress;
    spec.m_strIndex = m_strIndex;
    spec.m_strOffset = m_strOffset;
    spec.m_nCount = m_nCount;
    spec.m_bLittleEndian = m_bLittleEndian;
    if (m_bReadOnly) {
        spec.readOnly();
    }
    if (m_bTransient) {
        spec.transient();
    }
    for (const int time : m_pollingTimes) {
        spec.moving(time);
    }
    for (const char *node : m_invalidators) {
        spec.invalidatedBy(node);
    }
    return spec;
}

void RowOptions::applyTo(FeatureBuilder &feature) const
{
    for (const auto &property : m_properties) {
        feature.property(property.first, property.second);
    }
    for (const char *selector : m_selectors) {
        feature.selectedBy(selector);
    }
    if (!m_bStandard) {
        feature.custom();
    }
}

void addRows(FeatureTable &table, const QVector<SwitchRow> &rows)
{
    for (const SwitchRow &row : rows) {
        FeatureBuilder feature = table.boolean(row.m_strName, row.m_texts);
        feature.in(row.m_options.applied(Int(4, row.m_nInitial)));
        row.m_options.applyTo(feature);
    }
}

void addRows(FeatureTable &table, const QVector<NumberRow> &rows)
{
    for (const NumberRow &row : rows) {
        FeatureBuilder feature = table.integer(row.m_strName, row.m_texts);
        feature.in(row.m_options.applied(Int(4, row.m_nInitial))).range(row.m_strMin, row.m_strMax);
        if (*row.m_strUnit) {
            feature.unit(row.m_strUnit);
        }
        row.m_options.applyTo(feature);
    }
}

void addRows(FeatureTable &table, const QVector<RealRow> &rows)
{
    for (const RealRow &row : rows) {
        FeatureBuilder feature = table.floating(row.m_strName, row.m_texts);
        feature.in(row.m_options.applied(Real(4, row.m_fInitial)))
            .range(row.m_strMin, row.m_strMax);
        if (*row.m_strUnit) {
            feature.unit(row.m_strUnit);
        }
        row.m_options.applyTo(feature);
    }
}

void addRows(FeatureTable &table, const QVector<StringRow> &rows)
{
    for (const StringRow &row : rows) {
        const RegisterSpec spec = row.m_options.applied(Text(row.m_nLength, row.m_strInitial));
        FeatureBuilder feature = table.string(row.m_strName, row.m_texts, spec);
        if (spec.m_bStored) {
            feature.streamable();
        }
        row.m_options.applyTo(feature);
    }
}

void addRows(FeatureTable &table, const QVector<ChoiceRow> &rows)
{
    for (const ChoiceRow &row : rows) {
        FeatureBuilder feature = table.enumeration(row.m_strName, row.m_texts);
        row.m_options.applyTo(feature); // ahead of the entries, which take its name space over
        for (const EntryRow &entry : row.m_entries) {
            const QByteArray name = *entry.m_strDisplayName ? QByteArray(entry.m_strDisplayName)
                                                            : spacedName(entry.m_strName);
            feature.entryShown(entry.m_strName, name, entry.m_nValue, entry.m_strNameCn,
                               entry.m_conditions);
        }
        feature.in(row.m_options.applied(Int(4, row.m_nInitial)));
    }
}

void addRows(FeatureTable &table, const QVector<CommandRow> &rows)
{
    for (const CommandRow &row : rows) {
        FeatureBuilder feature = table.command(row.m_strName, row.m_texts);
        feature.runs(row.m_options.applied(Trigger()));
        row.m_options.applyTo(feature);
    }
}
