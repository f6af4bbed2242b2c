#include "host/workbench/PollingModel.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "host/workbench/WorkbenchTexts.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/PollingRoles.h"
#include "tree/VexaFeatureTree.h"

#include <QColor>
#include <QFont>

#include <algorithm>
#include <iterator>

namespace {

/// More sets than any device has; a column each.
constexpr qint64 MAXIMUM_SETS = 64;
constexpr QRgb COLOUR_UNKNOWN = 0xFF7F8287;
constexpr QRgb COLOUR_SELECTED = 0xFFF2F2F2;

/// The key of the column that the module puts the date of a write into.
const QLatin1String CHANGE_TIME("PollingParamChgTime");

/// Features of the polling as a whole; all others whose names begin so belong to a set.
bool belongsToSet(const QString &name)
{
    static const QLatin1String WHOLE[] = {QLatin1String("PollingEnable"),
                                          QLatin1String("PollingTarget"),
                                          QLatin1String("PollingParam"), CHANGE_TIME};
    return name.startsWith(QLatin1String("Polling"))
        && std::find(std::begin(WHOLE), std::end(WHOLE), name) == std::end(WHOLE);
}

/// A selector and what a set holds once for each of its values.
struct SelectedRow
{
    QLatin1String selector;
    QLatin1String selected;
};

const SelectedRow SELECTED_ROWS[] = {
    {QLatin1String("PollingLightSelector"), QLatin1String("PollingLightEnable")},
    {QLatin1String("PollingIOSelector"), QLatin1String("PollingIOAction")}};

using SelectedValues = QMap<int, int>;

} // namespace

QString PollingModel::Texts::shown() const
{
    const bool isChinese = QLocalCfg::Instance()->GetPropertyLan() == QLatin1String("CH");
    return isChinese && !chinese.isEmpty() ? chinese : english;
}

PollingModel::PollingModel(const VexaFeatureTree &tree, QObject *parent)
    : QStandardItemModel(parent)
{
    VexaPropertyTreeItem *selector = tree.propertyItemByName(QStringLiteral("PollingParam"));
    const VexaPropertyTreeItem *category =
        selector ? selector->parent(PARENT_FEATURE_TREE) : nullptr;
    if (!category || !selector->value()) {
        return;
    }
    m_sets = entriesOf(*selector->valueSnapshot());
    for (auto it = m_sets.begin(); it != m_sets.end();) {
        it = it.key() < 0 || it.key() >= MAXIMUM_SETS ? m_sets.erase(it) : std::next(it);
    }
    for (int row = 0; row < category->childCount() && !m_sets.isEmpty(); ++row) {
        const VexaPropertyTreeItem *child = category->child(row);
        if (child->value() && child->itemType() == ITEM_FEATURE
            && belongsToSet(child->value()->m_strNodeName)) {
            addRow(tree, child->value()->m_strNodeName);
        }
    }
}

QMap<qint64, PollingModel::Texts> PollingModel::entriesOf(const CTreeItemValue &value)
{
    QMap<qint64, Texts> texts;
    if (const auto *enumeration = dynamic_cast<const CTreeEnumationItemValue *>(&value)) {
        const QMap<qint64, QString> names = enumeration->getAllEnumationMap();
        const QStringList english = enumeration->getDisplayList();
        const QStringList chinese = enumeration->getDisplayListCN();
        for (auto it = names.cbegin(); it != names.cend(); ++it) {
            texts.insert(it.key(), {it.value(), chinese.value(english.indexOf(it.value()))});
        }
    }
    return texts;
}

void PollingModel::addRow(const VexaFeatureTree &tree, const QString &name)
{
    const VexaPropertyTreeItem *feature = tree.propertyItemByName(name);
    const std::unique_ptr<CTreeItemValue> value = feature->valueSnapshot();
    m_rows.append({{name, feature->tagName()},
                   {value->displayName(), value->translateName()},
                   entriesOf(*value)});
    QList<QStandardItem *> items;
    for (qint64 set = 0; set <= m_sets.lastKey(); ++set) {
        items += new QStandardItem;
    }
    items.first()->setText(name);
    items += new QStandardItem(CHANGE_TIME);
    for (QStandardItem *item : qAsConst(items)) {
        item->setEditable(false);
    }
    appendRow(items);
}

QVector<PollingParameter> PollingModel::parameters() const
{
    QVector<PollingParameter> all;
    for (const Row &row : m_rows) {
        all += row.parameter;
    }
    return all;
}

QMap<int, QList<QStandardItem *>> PollingModel::rows() const
{
    QMap<int, QList<QStandardItem *>> all;
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            all[row] += item(row, column);
        }
    }
    return all;
}

int PollingModel::rowOf(const QString &name) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).parameter.name == name) {
            return row;
        }
    }
    return -1;
}

void PollingModel::enter(const PollingReading &reading)
{
    if (!m_sets.contains(reading.set)) {
        return;
    }
    m_nSelected = reading.set;
    const int column = static_cast<int>(reading.set);
    for (int row = 0; row < m_rows.size(); ++row) {
        const auto value = reading.values.constFind(m_rows.at(row).parameter.name);
        if (value != reading.values.constEnd()) {
            item(row, column)->setData(*value, POLLING_ROLE_VALUE);
        }
    }
    for (const SelectedRow &pair : SELECTED_ROWS) {
        const int row = rowOf(pair.selector);
        if (row >= 0 && reading.values.contains(pair.selector)
            && reading.values.contains(pair.selected)) {
            auto map = item(row, column)->data(POLLING_ROLE_MAP).value<SelectedValues>();
            map.insert(reading.values.value(pair.selector).toInt(),
                       reading.values.value(pair.selected).toInt());
            item(row, column)->setData(QVariant::fromValue(map), POLLING_ROLE_MAP);
        }
    }
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void PollingModel::forgetValues()
{
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; isSet(column); ++column) {
            for (const int role : {POLLING_ROLE_VALUE, POLLING_ROLE_MAP, POLLING_ROLE_CHANGED}) {
                item(row, column)->setData(QVariant(), role);
            }
        }
    }
}

void PollingModel::retranslate()
{
    if (!isEmpty()) {
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

QString PollingModel::shownValue(const Row &row, const QString &value) const
{
    if (row.parameter.tag == QLatin1String("Boolean")) {
        return workbenchText(value.toInt() ? "lang_workbench_on" : "lang_workbench_off");
    }
    const auto entry = row.entries.constFind(value.toLongLong());
    return entry == row.entries.constEnd() ? value : entry->shown();
}

QString PollingModel::shownCell(const QModelIndex &index) const
{
    const Row &row = m_rows.at(index.row());
    const QVariant value = QStandardItemModel::data(index, POLLING_ROLE_VALUE);
    if (!isSet(index.column())) {
        return value.toString();
    }
    const auto map = QStandardItemModel::data(index, POLLING_ROLE_MAP).value<SelectedValues>();
    QStringList parts;
    for (const SelectedRow &pair : SELECTED_ROWS) {
        const int selected = rowOf(pair.selected);
        if (row.parameter.name == pair.selector && selected >= 0) {
            for (auto it = map.cbegin(); it != map.cend(); ++it) {
                parts += QStringLiteral("%1: %2").arg(
                    shownValue(row, QString::number(it.key())),
                    shownValue(m_rows.at(selected), QString::number(it.value())));
            }
        }
    }
    if (!parts.isEmpty()) {
        return parts.join(QStringLiteral(", "));
    }
    return value.isValid() ? shownValue(row, value.toString()) : QString(QChar(0x2013));
}

QVariant PollingModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return QVariant();
    }
    const bool isKnown = QStandardItemModel::data(index, POLLING_ROLE_VALUE).isValid();
    switch (role) {
    case Qt::DisplayRole:
        return shownCell(index);
    case Qt::ToolTipRole:
        return isKnown || !isSet(index.column()) ? shownCell(index)
                                                 : workbenchText("lang_workbench_setunread");
    case Qt::ForegroundRole:
        return isKnown ? QVariant() : QVariant(QColor(COLOUR_UNKNOWN));
    case Qt::FontRole: {
        QFont font;
        font.setBold(QStandardItemModel::data(index, POLLING_ROLE_CHANGED).toBool());
        return font.bold() ? QVariant(font) : QVariant();
    }
    default:
        return QStandardItemModel::data(index, role);
    }
}

QVariant PollingModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isSetHeader = orientation == Qt::Horizontal && isSet(section);
    if (isSetHeader && role == Qt::FontRole && section == m_nSelected) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (isSetHeader && role == Qt::ForegroundRole && section == m_nSelected) {
        return QColor(COLOUR_SELECTED);
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return QVariant();
    }
    if (orientation == Qt::Vertical) {
        return section < m_rows.size() ? m_rows.at(section).title.shown() : QString();
    }
    return isSetHeader ? m_sets.value(section).shown() : workbenchText("lang_workbench_changed");
}
