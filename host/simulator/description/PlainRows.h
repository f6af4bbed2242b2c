#pragma once

#include "host/simulator/description/FeatureBuilder.h"

/// What a plain row has besides its name, texts and register. Written by chaining.
class RowOptions
{
public:
    RowOptions &expert() { return visibility("Expert"); }
    RowOptions &guru() { return visibility("Guru"); }
    RowOptions &invisible() { return visibility("Invisible"); }
    /// A feature of SFNC; all others are this maker's own.
    RowOptions &standard();
    RowOptions &available(const char *node) { return property("pIsAvailable", node); }
    RowOptions &implemented(const char *node) { return property("pIsImplemented", node); }
    RowOptions &locked(const char *node = "TLParamsLocked") { return property("pIsLocked", node); }
    RowOptions &shownAs(const char *representation)
    {
        return property("Representation", representation);
    }
    RowOptions &property(const char *tag, const char *text);
    RowOptions &selectedBy(const char *selector);
    /// See RegisterSpec.
    RowOptions &at(quint64 address);
    RowOptions &readOnly();
    RowOptions &transient();
    RowOptions &moving(int pollingTime = -1);
    RowOptions &littleEndian();
    RowOptions &invalidatedBy(const char *node);
    RowOptions &indexedBy(const char *node, quint32 count);
    RowOptions &offsetBy(const char *node, quint32 count);

    /// The register of a row, changed as these options say.
    RegisterSpec applied(RegisterSpec spec) const;
    void applyTo(FeatureBuilder &feature) const;

private:
    RowOptions &visibility(const char *text) { return property("Visibility", text); }

    QVector<QPair<const char *, const char *>> m_properties;
    QVector<const char *> m_selectors;
    QVector<const char *> m_invalidators;
    QVector<int> m_pollingTimes;
    quint64 m_nAddress = RegisterSpec::kNextFree;
    const char *m_strIndex = "";
    const char *m_strOffset = "";
    quint32 m_nCount = 1;
    bool m_bStandard = false;
    bool m_bReadOnly = false;
    bool m_bTransient = false;
    bool m_bLittleEndian = false;
};

struct SwitchRow
{
    const char *m_strName;
    Texts m_texts;
    int m_nInitial = 0;
    RowOptions m_options = RowOptions();
};

/// Integer in 4 bytes; empty limits are those of the register.
struct NumberRow
{
    const char *m_strName;
    Texts m_texts;
    qint64 m_nInitial = 0;
    const char *m_strMin = "";
    const char *m_strMax = "";
    const char *m_strUnit = "";
    RowOptions m_options = RowOptions();
};

/// Float in 4 bytes.
struct RealRow
{
    const char *m_strName;
    Texts m_texts;
    double m_fInitial = 0;
    const char *m_strMin = "";
    const char *m_strMax = "";
    const char *m_strUnit = "";
    RowOptions m_options = RowOptions();
};

struct StringRow
{
    const char *m_strName;
    Texts m_texts;
    quint32 m_nLength = 32;
    const char *m_strInitial = "";
    RowOptions m_options = RowOptions();
};

struct EntryRow
{
    const char *m_strName;
    qint64 m_nValue;
    const char *m_strNameCn;
    EntryConditions m_conditions = EntryConditions();
    const char *m_strDisplayName = ""; ///< empty: follows from the name
};

struct ChoiceRow
{
    const char *m_strName;
    Texts m_texts;
    QVector<EntryRow> m_entries;
    qint64 m_nInitial = 0;
    RowOptions m_options = RowOptions();
};

struct CommandRow
{
    const char *m_strName;
    Texts m_texts;
    RowOptions m_options = RowOptions();
};

/// Features that need nothing but a register of their own, <name>Reg, each from one row of a table.
void addRows(FeatureTable &table, const QVector<SwitchRow> &rows);
void addRows(FeatureTable &table, const QVector<NumberRow> &rows);
void addRows(FeatureTable &table, const QVector<RealRow> &rows);
void addRows(FeatureTable &table, const QVector<StringRow> &rows);
void addRows(FeatureTable &table, const QVector<ChoiceRow> &rows);
void addRows(FeatureTable &table, const QVector<CommandRow> &rows);
