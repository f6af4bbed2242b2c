// The one place that knows which class belongs to which tag.

#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeCommandItemValue.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeFormatStringItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"

#include <QHash>

#include <new>

namespace {

using Maker = CTreeItemValue *(*)();

template<typename Value>
CTreeItemValue *make()
{
    return new (std::nothrow) Value;
}

} // namespace

std::unique_ptr<CTreeItemValue> CTreeItemValue::create(const QString &strTagName)
{
    static const QHash<QString, Maker> makers{
        {QStringLiteral("Boolean"), &make<CTreeBooleanItemValue>},
        {QStringLiteral("Command"), &make<CTreeCommandItemValue>},
        {QStringLiteral("Integer"), &make<CTreeIntergerItemValue>},
        {QStringLiteral("Enumeration"), &make<CTreeEnumationItemValue>},
        {QStringLiteral("Float"), &make<CTreeFloatItemValue>},
        {QStringLiteral("StringReg"), &make<CTreeStringItemValue>},
        {QStringLiteral("CustomDrawFeatureTag"), &make<CTreeCustomDrawItemValue>},
        {QStringLiteral("CustomWatermarkFeatureTag"), &make<CTreeCustomWaterMarkItemValue>},
        {QStringLiteral("CustomAlgorithmCodeTag"), &make<CTreeCustomAlgorithmCodeItemValue>},
        {QStringLiteral("CustomLightingSelector"), &make<CTreeCustomLightingSelectorItemValue>},
        {QStringLiteral("CustomSpinBox"), &make<CTreeHorSpinBoxItemValue>},
        {QStringLiteral("CustomFormatEdit"), &make<CTreeFormatStringItemValue>},
        {QStringLiteral("CustomFormatTextEdit"), &make<CTreeFormatStringTextItemValue>},
        {QStringLiteral("CustomScreen"), &make<CTreeScreenSelectItemValue>},
    };
    return std::unique_ptr<CTreeItemValue>(makers.value(strTagName, &make<CTreeItemValue>)());
}
