#pragma once

#include "host/simulator/description/FeatureTable.h"

/// Conditions of an enumeration entry, each an integer node; empty for none.
struct EntryConditions
{
    const char *m_strAvailable = "";
    const char *m_strImplemented = "";
    const char *m_strLocked = "";
};

/// Completes the row of one feature, by chaining. A builder is used up before the next row is added.
class FeatureBuilder
{
public:
    FeatureBuilder(FeatureTable *table, int row)
        : m_pTable(table)
        , m_nRow(row)
    {
    }

    /// The value lies in a register of its own, in the node <name>Reg.
    FeatureBuilder &in(const RegisterSpec &spec);
    /// The value is that of another node.
    FeatureBuilder &from(const char *node) { return property("pValue", node); }
    /// The value stands in the description.
    FeatureBuilder &value(const char *text) { return property("Value", text); }
    /// Integer and Float: constant limits; an empty text leaves the limit to a node or to the register.
    FeatureBuilder &range(const char *min, const char *max, const char *inc = "");
    FeatureBuilder &min(const char *node) { return property("pMin", node); }
    FeatureBuilder &max(const char *node) { return property("pMax", node); }
    FeatureBuilder &inc(const char *node) { return property("pInc", node); }
    FeatureBuilder &unit(const char *text) { return property("Unit", text); }
    FeatureBuilder &shownAs(const char *representation)
    {
        return property("Representation", representation);
    }
    /// Boolean: the numbers behind true and false.
    FeatureBuilder &numbers(const char *on, const char *off);
    /// Command: written to the register to run it; 1 is usual.
    FeatureBuilder &runs(const RegisterSpec &spec, const char *commandValue = "1");
    FeatureBuilder &entry(const char *name, qint64 value, const char *nameCn,
                          const EntryConditions &conditions = EntryConditions());
    /// An entry whose display name does not follow from its name.
    FeatureBuilder &entryShown(const char *name, const QByteArray &displayName, qint64 value,
                               const char *nameCn,
                               const EntryConditions &conditions = EntryConditions());
    FeatureBuilder &expert() { return visibility("Expert"); }
    FeatureBuilder &guru() { return visibility("Guru"); }
    FeatureBuilder &invisible() { return visibility("Invisible"); }
    /// Locked while the transport layer is locked, or by another node.
    FeatureBuilder &locked(const char *node = "TLParamsLocked")
    {
        return property("pIsLocked", node);
    }
    FeatureBuilder &available(const char *node) { return property("pIsAvailable", node); }
    FeatureBuilder &implemented(const char *node) { return property("pIsImplemented", node); }
    FeatureBuilder &readOnly() { return property("ImposedAccessMode", "RO"); }
    /// Settings that a client saves and restores; registers of their own say so by themselves.
    FeatureBuilder &streamable();
    FeatureBuilder &selectedBy(const char *selector);
    /// A feature of this maker, not of the standard.
    FeatureBuilder &custom();
    FeatureBuilder &property(const char *tag, const QByteArray &text);

private:
    NodeRow &row() { return m_pTable->m_nodes[m_nRow]; }
    FeatureBuilder &visibility(const char *text) { return property("Visibility", text); }

    FeatureTable *m_pTable;
    int m_nRow;
};
