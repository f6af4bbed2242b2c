#include "host/workbench/CodeTypeModel.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "host/workbench/WorkbenchTexts.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

enum Column { COLUMN_NAME, COLUMN_LIMIT, COLUMN_COUNT };

const QLatin1String COUNTING[] = {QLatin1String("LocBarNum"), QLatin1String("IdxLocCodeNum"),
                                  QLatin1String("StackBarNum")};

} // namespace

CodeTypeModel::CodeTypeModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

bool CodeTypeModel::counts(const QString &name)
{
    return std::find(std::begin(COUNTING), std::end(COUNTING), name) != std::end(COUNTING);
}

bool CodeTypeModel::take(const VexaFeatureTree &tree)
{
    QVector<Row> rows;
    for (const QLatin1String name : COUNTING) {
        const VexaPropertyTreeItem *item = tree.propertyItemByName(name);
        const std::unique_ptr<CTreeItemValue> value =
            item && item->isValueCached() ? item->valueSnapshot() : nullptr;
        if (const auto *count = dynamic_cast<const CTreeIntergerItemValue *>(value.get())) {
            const qint64 limit =
                qBound<qint64>(0, count->m_nMaxValue, std::numeric_limits<int>::max());
            rows.append({name, count->displayName(), count->translateName(), int(limit)});
        }
    }
    const QMap<QString, int> former = limits();
    beginResetModel();
    m_rows = rows;
    endResetModel();
    return limits() != former;
}

QMap<QString, int> CodeTypeModel::limits() const
{
    QMap<QString, int> map;
    for (const Row &row : m_rows) {
        map.insert(row.name, row.limit);
    }
    return map;
}

void CodeTypeModel::retranslate()
{
    beginResetModel();
    endResetModel();
}

int CodeTypeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int CodeTypeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : COLUMN_COUNT;
}

QVariant CodeTypeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return QVariant();
    }
    const Row &row = m_rows.at(index.row());
    if (index.column() == COLUMN_LIMIT) {
        return QString::number(row.limit);
    }
    if (role == Qt::ToolTipRole) {
        return row.name;
    }
    const bool isChinese = QLocalCfg::Instance()->GetPropertyLan() == QLatin1String("CH");
    return isChinese ? row.translatedName : row.displayName;
}

QVariant CodeTypeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QVariant();
    }
    return workbenchText(section == COLUMN_NAME ? "lang_workbench_codetype"
                                                : "lang_workbench_mostcodes");
}
