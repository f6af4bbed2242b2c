#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>

class CTreeItemValue;
class QString;

class VexaFeatureTree;
class VexaPropertyTreeItem;

/// The feature tree of one camera as JSON: an array with one object for each item in tree order, one line each. What
/// was never read from the device is null. GUI thread; the access modes are read from the device now.
class DumpWriter
{
public:
    explicit DumpWriter(const VexaFeatureTree &tree);

    QByteArray toJson() const;

private:
    void append(const VexaPropertyTreeItem &item, const QStringList &path, QByteArray &out) const;
    QVariantMap describe(VexaPropertyTreeItem &item, const QStringList &path) const;
    void describeValue(const CTreeItemValue &value, QVariantMap &object) const;
    QVariant accessMode(const QString &nodeName) const;

    const VexaFeatureTree &m_tree;
};
