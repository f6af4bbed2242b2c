#include "view/EnumerationRows.h"

#include "UtilityKit/VexaInterface.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/ItemLocks.h"

#include <QComboBox>
#include <QHash>
#include <QMutexLocker>

namespace {

struct Row
{
    QString strText;
    qint64 nValue;
};

QVector<Row> rowsOf(const CTreeEnumationItemValue &value, bool bChinese)
{
    const QMap<qint64, QString> entries = value.getAllEnumationMap();
    const QStringList names = value.getDisplayList();
    const QStringList namesCn = value.getDisplayListCN();
    const QStringList &texts = bChinese && !namesCn.isEmpty() ? namesCn : names;
    QHash<QString, qint64> numbers;
    for (auto it = entries.constBegin(); it != entries.constEnd(); ++it) {
        if (!numbers.contains(it.value()) || it.key() == value.m_nValue) {
            numbers.insert(it.value(), it.key());
        }
    }
    QVector<Row> rows;
    for (int i = 0; i < qMin(texts.size(), names.size()); ++i) {
        if (!texts.at(i).isEmpty()) {
            rows.append({texts.at(i), numbers.value(names.at(i))});
        }
    }
    return rows;
}

} // namespace

void EnumerationRows::show(QComboBox *pCombo, const CTreeEnumationItemValue &value, bool bChinese)
{
    const QVector<Row> rows = rowsOf(value, bChinese);
    bool bSame = rows.size() == pCombo->count();
    for (int i = 0; bSame && i < rows.size(); ++i) {
        bSame = pCombo->itemText(i) == rows.at(i).strText
            && pCombo->itemData(i).toLongLong() == rows.at(i).nValue;
    }
    if (bSame) {
        return;
    }
    pCombo->clear();
    for (const Row &row : rows) {
        pCombo->addItem(row.strText, row.nValue);
    }
}

void EnumerationRows::applyNeutralNames(VexaPropertyTreeItem *pItem, const QString &strNodeName)
{
    if (strNodeName != QLatin1String("VerifyEdition") || !VexaInterface::isNeutralVision()) {
        return;
    }
    const QString strBranded = QStringLiteral(" Mode");
    const QString strNeutral = QStringLiteral("Advanced Mode");
    const ItemLock lock(pItem);
    auto *const pValue = dynamic_cast<CTreeEnumationItemValue *>(pItem->value());
    if (!pValue) {
        return;
    }
    const QMutexLocker entriesLock(&pValue->m_mutex);
    if (pValue->m_displayList.isEmpty() || pValue->m_displayListCN.isEmpty()) {
        return;
    }
    for (int i = 0; i < pValue->m_displayList.size(); ++i) {
        if (pValue->m_displayList.at(i) == strBranded) {
            pValue->m_displayList[i] = strNeutral;
            if (i < pValue->m_displayListCN.size()) {
                pValue->m_displayListCN[i] = QStringLiteral(u"\u5148\u8fdb\u6a21\u5f0f");
            }
        }
    }
    for (QString &strName : pValue->m_enumationMap) {
        strName = strName == strBranded ? strNeutral : strName;
    }
    for (QString &strName : pValue->m_nameMap) {
        strName = strName == strBranded ? strNeutral : strName;
    }
}
