#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct FeatureFileDocument;
struct FeatureFileEntry;

/// Puts the text of a feature file together. It knows the format and nothing of devices. Nothing is escaped but the
/// angle brackets of strings and the formulas of register dumps.
class FeatureFileWriter
{
public:
    explicit FeatureFileWriter(const QString &version);

    /// A line of the header; before addFeatures.
    void addHeader(const QString &tag, const QString &value);
    void beginFeatures();
    void addFeature(const QString &name, const QString &type, const QString &value);
    /// A register dump made of the texts below.
    void addComplexFeature(const QString &name, const QString &text);
    void finish();
    const QString &text() const { return m_text; }

    /// Names of the groups that make the text unreadable or come back as another group, each with whether it is the
    /// former; empty for a text that its own reader takes whole.
    struct Culprit
    {
        QString name;
        bool unreadable;
    };
    QVector<Culprit> culprits() const;

    static QString complexBegin(const QString &name, qint64 length, const QString &reg);
    static QString regValue(const QString &address, const QString &variables, const QString &words);
    /// `from` is escaped here.
    static QString regValue(const QString &address, const QString &variables, const QString &value,
                            quint32 to, const QString &from);
    static QString complexEnd();
    /// A register dump that was read, as it would have been written.
    static QString complexOf(const FeatureFileEntry &entry);

private:
    enum class Kind { Header, Value, Dump };
    struct Group
    {
        Kind kind;
        QString name;
        int begin;
        int length;
        QString type;
        QString value;
    };
    bool comesBack(const Group &group, const FeatureFileDocument &document, int entry) const;
    void add(const Group &group, const QString &text);

    QString m_text;
    QVector<Group> m_groups;
};
