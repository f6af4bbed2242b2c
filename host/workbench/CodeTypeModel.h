#pragma once

#include <QAbstractTableModel>
#include <QMap>
#include <QVector>

class VexaFeatureTree;

/// How many codes each way of the search may look for: the features that count codes and their present maxima, as the
/// module takes them (VexaMainFeatureWidget::SetCodeTypeMap).
class CodeTypeModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit CodeTypeModel(QObject *parent = nullptr);

    /// Takes the maxima that the tree has read. True when one is another than before.
    bool take(const VexaFeatureTree &tree);
    /// By feature name.
    QMap<QString, int> limits() const;
    /// Whether the feature counts codes.
    static bool counts(const QString &name);
    void retranslate();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QString name;
        QString displayName;
        QString translatedName;
        int limit;
    };
    QVector<Row> m_rows;
};
