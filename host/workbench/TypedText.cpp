#include "host/workbench/TypedText.h"

#include "ShellServicesModule/QPropertyLineEdit.h"
#include "host/shellservices/ValueText.h"
#include "host/workbench/OfferedEntries.h"
#include "host/workbench/WorkbenchTexts.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "tree/VexaFeatureTree.h"

namespace {

using TypedText::Result;

Result refused(const QString &reason)
{
    return {QVariant(), reason};
}

Result withinRange(const ValueText::Parsed &parsed, const QVariant &maximum,
                   const QVariant &minimum, int mode)
{
    if (!parsed.isValid()) {
        return refused(parsed.strReason);
    }
    const QString reason = ValueText::rangeRefusal(parsed.value, maximum, minimum, mode);
    return reason.isEmpty() ? Result{parsed.value, QString()} : refused(reason);
}

Result integer(const CTreeIntergerItemValue &feature, const QString &text)
{
    ValueText::Parsed parsed = ValueText::parse(text, feature.type());
    if (!parsed.isValid()) {
        const QString trimmed = text.trimmed();
        const bool hexadecimal = trimmed.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
        const ValueText::Parsed number = ValueText::parse(
            trimmed, hexadecimal ? QPropertyLineEdit::TEXT_HEX : QPropertyLineEdit::TEXT_DECIMAL);
        parsed = number.isValid() ? number : parsed;
    }
    return withinRange(parsed, feature.m_nMaxValue, feature.m_nMinValue, feature.type());
}

Result number(const CTreeFloatItemValue &feature, const QString &text)
{
    return withinRange(ValueText::parse(text, QPropertyLineEdit::TEXT_FLOAT), feature.m_fMaxValue,
                       feature.m_fMinValue, QPropertyLineEdit::TEXT_FLOAT);
}

Result boolean(const QString &text)
{
    static const struct
    {
        const char *word;
        bool value;
    } WORDS[] = {{"true", true},   {"on", true},   {"1", true},
                 {"false", false}, {"off", false}, {"0", false}};
    for (const auto &row : WORDS) {
        if (text.trimmed().compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0) {
            return {row.value, QString()};
        }
    }
    return refused(workbenchText("lang_workbench_notaswitch").arg(text));
}

Result enumeration(const VexaFeatureTree &tree, const CTreeEnumationItemValue &feature,
                   const QString &text)
{
    const QVector<OfferedEntry> entries = offeredEntries(tree, feature);
    // A name first: entries may be named like the number of another one.
    for (QString OfferedEntry::*word : {&OfferedEntry::name, &OfferedEntry::displayName}) {
        for (const OfferedEntry &entry : entries) {
            if (entry.*word == text) {
                return {entry.value, QString()};
            }
        }
    }
    bool isNumber = false;
    const qint64 wanted = text.trimmed().toLongLong(&isNumber);
    QStringList names;
    for (const OfferedEntry &entry : entries) {
        if (isNumber && entry.value == wanted) {
            return {entry.value, QString()};
        }
        names += entry.name;
    }
    return refused(
        workbenchText("lang_workbench_noentry").arg(text, names.join(QStringLiteral(", "))));
}

} // namespace

TypedText::Result TypedText::valueOf(const VexaFeatureTree &tree, const CTreeItemValue &feature,
                                     const QString &text)
{
    if (const auto *value = dynamic_cast<const CTreeIntergerItemValue *>(&feature)) {
        return integer(*value, text);
    }
    if (const auto *value = dynamic_cast<const CTreeFloatItemValue *>(&feature)) {
        return number(*value, text);
    }
    if (dynamic_cast<const CTreeBooleanItemValue *>(&feature)) {
        return boolean(text);
    }
    if (const auto *value = dynamic_cast<const CTreeEnumationItemValue *>(&feature)) {
        return enumeration(tree, *value, text);
    }
    if (const auto *value = dynamic_cast<const CTreeStringItemValue *>(&feature)) {
        const QString reason = ValueText::lengthRefusal(text, value->m_nMaxLength);
        return reason.isEmpty() ? Result{text, QString()} : refused(reason);
    }
    return refused(workbenchText("lang_workbench_notext"));
}
