#include "view/EditorValue.h"

#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "view/ItemNames.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace {

constexpr float FLOAT_TOLERANCE = 0.001F;

struct TagRule
{
    bool (*isEqual)(const CTreeItemValue *pValue, const QVariant &value); ///< null: never equal
    void (*store)(CTreeItemValue *pValue, const QString &strNodeName, const QVariant &value);
};

template<typename Value>
const Value &as(const CTreeItemValue *pValue)
{
    return *static_cast<const Value *>(pValue);
}

template<typename Value>
Value &as(CTreeItemValue *pValue)
{
    return *static_cast<Value *>(pValue);
}

const TagRule *findRule(const QString &strTag)
{
    static const QHash<QString, TagRule> rules = {
        {QStringLiteral("Boolean"),
         {[](const CTreeItemValue *p, const QVariant &v) {
              return as<CTreeBooleanItemValue>(p).m_bValue == v.toBool();
          },
          [](CTreeItemValue *p, const QString &, const QVariant &v) {
              as<CTreeBooleanItemValue>(p).m_bValue = v.toBool();
          }}},
        // A value beyond 32 bits never counts as held and is written again.
        {QStringLiteral("Integer"),
         {[](const CTreeItemValue *p, const QVariant &v) {
              const qint64 nValue = v.toLongLong();
              return nValue == int(nValue) && as<CTreeIntergerItemValue>(p).m_nValue == nValue;
          },
          [](CTreeItemValue *p, const QString &, const QVariant &v) {
              as<CTreeIntergerItemValue>(p).m_nValue = v.toLongLong();
          }}},
        // The number of an entry has 32 bits without a sign: pixel formats of a maker's own have the top one set.
        {QStringLiteral("Enumeration"),
         {[](const CTreeItemValue *p, const QVariant &v) {
              return as<CTreeEnumationItemValue>(p).m_nValue == v.toLongLong();
          },
          [](CTreeItemValue *p, const QString &, const QVariant &v) {
              as<CTreeEnumationItemValue>(p).m_nValue = v.toLongLong();
          }}},
        {QStringLiteral("Float"),
         {[](const CTreeItemValue *p, const QVariant &v) {
              const float fValue = float(v.toDouble());
              const float fHeld = as<CTreeFloatItemValue>(p).m_fValue;
              return fValue >= fHeld - FLOAT_TOLERANCE && fValue <= fHeld + FLOAT_TOLERANCE;
          },
          [](CTreeItemValue *p, const QString &, const QVariant &v) {
              as<CTreeFloatItemValue>(p).m_fValue = float(v.toDouble());
          }}},
        {QStringLiteral("StringReg"),
         {[](const CTreeItemValue *p, const QVariant &v) {
              return as<CTreeStringItemValue>(p).m_strValue == v.toString();
          },
          [](CTreeItemValue *p, const QString &, const QVariant &v) {
              as<CTreeStringItemValue>(p).m_strValue = v.toString();
          }}},
        {QStringLiteral("CustomWatermarkFeatureTag"),
         {nullptr,
          [](CTreeItemValue *p, const QString &name, const QVariant &v) {
              auto &row = as<CTreeCustomWaterMarkItemValue>(p);
              int &nState = name == row.m_strFirstNodeName ? row.m_nFirstValue : row.m_nSecondValue;
              nState = v.toBool() ? Qt::Checked : Qt::Unchecked;
          }}},
    };
    const auto it = rules.constFind(strTag);
    return it == rules.constEnd() ? nullptr : &*it;
}

} // namespace

bool EditorValue::isEqual(const VexaPropertyTreeItem *pItem, const QVariant &value)
{
    const TagRule *const pRule = findRule(pItem->tagName());
    const ItemLock lock(pItem);
    return pRule && pRule->isEqual && pItem->value() && pItem->isValueCached()
        && pRule->isEqual(pItem->value(), value);
}

void EditorValue::store(VexaPropertyTreeItem *pItem, const QString &strNodeName,
                        const QVariant &value)
{
    const TagRule *const pRule = findRule(pItem->tagName());
    if (!pRule) {
        return;
    }
    const quint64 nReading = pItem->beginReading();
    const ItemLock lock(pItem);
    if (pItem->value()) {
        pItem->publishReading(nReading, VexaPropertyTreeItem::READING_VALUE);
        pRule->store(pItem->value(), strNodeName, value);
    }
}

bool EditorValue::isTextInteger(const VexaPropertyTreeItem *pItem)
{
    static const QLatin1String textRepresentations[] = {
        QLatin1String("HexNumber"),
        QLatin1String("IPV4Address"),
        QLatin1String("MACAddress"),
        QLatin1String("PureNumber"),
    };
    const ItemLock lock(pItem);
    const auto *const pValue = dynamic_cast<const CTreeIntergerItemValue *>(pItem->value());
    return pValue
        && std::find(std::begin(textRepresentations), std::end(textRepresentations),
                     pValue->m_strRepresentation)
        != std::end(textRepresentations);
}
