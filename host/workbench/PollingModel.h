#pragma once

#include "host/workbench/PollingSetReader.h"

#include <QStandardItemModel>

class CTreeItemValue;
class VexaFeatureTree;

/// The table of polling parameters of a code reader: a row a parameter, a column for each set that "PollingParam" can
/// select, and the date of the last write. The module writes into its items by the roles of PollingRole; the items'
/// own texts are the keys that the module looks for, so what is shown comes from the model.
class PollingModel : public QStandardItemModel
{
    Q_OBJECT
public:
    /// From the features of an opened tree whose first full update has ended. Empty without polling parameters.
    explicit PollingModel(const VexaFeatureTree &tree, QObject *parent = nullptr);

    bool isEmpty() const { return m_rows.isEmpty(); }
    QVector<PollingParameter> parameters() const;
    /// The rows as the module takes them.
    QMap<int, QList<QStandardItem *>> rows() const;
    /// Enters what was read of one set.
    void enter(const PollingReading &reading);
    /// Nothing is known of any set any more.
    void forgetValues();
    /// The language of node texts or of the program has changed.
    void retranslate();

    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Texts
    {
        QString english;
        QString chinese;
        QString shown() const;
    };
    struct Row
    {
        PollingParameter parameter;
        Texts title;
        QMap<qint64, Texts> entries; ///< of an enumeration
    };

    static QMap<qint64, Texts> entriesOf(const CTreeItemValue &value);
    void addRow(const VexaFeatureTree &tree, const QString &name);
    int rowOf(const QString &name) const;
    QString shownValue(const Row &row, const QString &value) const;
    QString shownCell(const QModelIndex &index) const;
    bool isSet(int column) const { return column < columnCount() - 1; }

    QVector<Row> m_rows;
    QMap<qint64, Texts> m_sets; ///< by the value of "PollingParam", which is the column
    qint64 m_nSelected = -1;
};
