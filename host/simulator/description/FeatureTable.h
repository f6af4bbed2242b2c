#pragma once

#include "host/simulator/description/RegisterSpec.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QVector>

class FeatureBuilder;

/// One element below a node of the description, <pVariable Name="W">Width</pVariable>.
struct PropertyRow
{
    QByteArray m_strTag;
    QByteArray m_strText;
    QByteArray m_strAttribute; ///< its name, empty for none
    QByteArray m_strAttributeValue;
};

/// One node of the description.
struct NodeRow
{
    QByteArray m_strTag;
    QByteArray m_strName;
    QByteArray m_strGroup; ///< category whose rows brought it
    QByteArray m_strNameSpace;
    QVector<PropertyRow> m_properties;
    QVector<NodeRow> m_children; ///< EnumEntry or StructEntry
};

/// One stretch of memory behind a register node.
struct RegisterRow
{
    QByteArray m_strName; ///< register node, or the word that several fields share
    quint64 m_nAddress = 0;
    QByteArray m_initial;
    bool m_bWritable = false;
    bool m_bStored = false; ///< belongs to the user sets
    bool m_bLittleEndian = false;
};

/// What a register node reads and writes.
struct FieldRow
{
    RegisterSpec m_spec;
    quint64 m_nAddress = 0;
};

/// The Chinese texts of a node.
struct TextRow
{
    QByteArray m_strDisplayName;
    QByteArray m_strDescription;
    QMap<QByteArray, QByteArray> m_entries;
};

/// The texts of a row: description in English, name and description in Chinese.
struct Texts
{
    const char *m_strDescription;
    const char *m_strNameCn;
    const char *m_strDescriptionCn;
};

/// Everything that a built-in device is made of: the nodes of its description, the registers that they name and
/// the Chinese texts. One row brings all three, so that they cannot disagree.
class FeatureTable
{
public:
    /// All registers of rows that follow, as USB3 Vision and Camera Link devices lay them.
    void setLittleEndian() { m_bLittleEndian = true; }
    /// Rows that follow stand in this category; their registers are laid from `base` on. An empty parent is Root.
    void category(const char *name, const Texts &texts, quint64 base, const char *parent = "Root",
                  const char *visibility = "Beginner");
    /// Goes back to a category that has rows already.
    void resume(const char *name) { m_strCategory = name; }

    FeatureBuilder integer(const char *name, const Texts &texts);
    FeatureBuilder floating(const char *name, const Texts &texts);
    FeatureBuilder boolean(const char *name, const Texts &texts);
    FeatureBuilder enumeration(const char *name, const Texts &texts);
    FeatureBuilder command(const char *name, const Texts &texts);
    /// StringReg and IntReg features are registers themselves.
    FeatureBuilder string(const char *name, const Texts &texts, const RegisterSpec &spec);
    FeatureBuilder directRegister(const char *name, const Texts &texts, const RegisterSpec &spec);
    /// A feature of the tag Register; it may lie over the bytes of a register that has a row (within()).
    FeatureBuilder bytes(const char *name, const Texts &texts, const RegisterSpec &spec);

    /// Nodes that features stand on.
    void registerNode(const char *name, const RegisterSpec &spec);
    /// A node of the tag Register, raw bytes.
    void rawRegister(const char *name, const RegisterSpec &spec);
    using Variables = QVector<QPair<const char *, const char *>>; ///< name in the formula, node
    void intSwissKnife(const char *name, const char *formula, const Variables &variables);
    void swissKnife(const char *name, const char *formula, const Variables &variables);
    void intConverter(const char *name, const char *to, const char *from, const char *value,
                      const Variables &variables = {});
    void converter(const char *name, const char *to, const char *from, const char *value,
                   const Variables &variables = {}, const char *slope = "Increasing");
    /// A constant of the description, an Integer with a Value.
    void constant(const char *name, qint64 value);
    /// A StructReg word; its fields follow with structEntry.
    void structRegister(const char *name, const RegisterSpec &spec);
    void structEntry(const char *structName, const char *name, int shift, int width,
                     qint64 initial);

    /// The feature stands in this category too.
    void alsoIn(const char *category, const char *feature);

    /// The feature by another name, wherever it stands. Its register keeps its own.
    void rename(const QByteArray &from, const QByteArray &to);

    /// The feature goes, with every place in which it stands. Its register stays, unnamed by any feature.
    void remove(const QByteArray &name);

    const QVector<NodeRow> &nodes() const { return m_nodes; }
    const QVector<RegisterRow> &registers() const { return m_registers; }
    const QMap<QByteArray, TextRow> &texts() const { return m_texts; }
    /// Null for an unknown name.
    const RegisterRow *findRegister(const QByteArray &name) const;
    const FieldRow *findField(const QByteArray &name) const;

private:
    friend class FeatureBuilder;

    NodeRow &node(const QByteArray &name);
    NodeRow &addNode(const char *tag, const QByteArray &name);
    FeatureBuilder addFeature(const char *tag, const char *name, const Texts &texts);
    void addTexts(NodeRow &row, const Texts &texts);
    RegisterSpec ordered(RegisterSpec spec) const;
    quint64 place(const QByteArray &name, const RegisterSpec &spec);
    void describeRegister(NodeRow &row, const RegisterSpec &spec, quint64 address);
    void addFormulaNode(const char *tag, const char *name, const QVector<PropertyRow> &formulas,
                        const Variables &variables);

    QVector<NodeRow> m_nodes;
    QHash<QByteArray, int> m_nodeIndex;
    QVector<RegisterRow> m_registers;
    QHash<QByteArray, int> m_registerIndex;
    QHash<QByteArray, FieldRow> m_fields;
    QMap<QByteArray, TextRow> m_texts;
    QByteArray m_strCategory;
    quint64 m_nNextAddress = 0;
    bool m_bLittleEndian = false;
};

/// "ExposureTime" as "Exposure Time".
QByteArray spacedName(const QByteArray &name);
