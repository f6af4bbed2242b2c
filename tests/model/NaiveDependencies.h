#pragma once

#include <QDomElement>
#include <QMap>
#include <QPair>
#include <QStringList>
#include <QVector>

/// The dependency maps worked out in the slow and plain way, straight from the elements, for descriptions without
/// circles.
class NaiveDependencies
{
public:
    NaiveDependencies(const QDomElement &documentElement,
                      const QMap<QString, QDomElement> &elements, const QStringList &items);
    QStringList invalidatorList(const QString &strName) const;
    bool isNoCache(const QString &strName) const;
    bool isPolling(const QString &strName, qint64 &nPeriod) const;
    QMap<qint64, QStringList> pollingMap() const;

    QMap<QString, QStringList> m_invalidators;

private:
    void walk(const QDomElement &element);
    void property(const QString &strName, QStringList &invalidators, QStringList &variables) const;
    bool inList(const QString &strName, QStringList list) const;

    QMap<QString, QDomElement> m_elements;
    QStringList m_items;
    QMap<QString, QStringList> m_variables;
    QMap<QString, QString> m_pValues;
    QMap<QString, QString> m_pairs;
};
