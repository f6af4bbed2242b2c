#include "tree/FeatureToolTip.h"

#include "ShellServicesModule/QFunction.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tree/FeatureReader.h"

#include <QColor>
#include <QSet>

namespace {

const QLatin1String LANGUAGE_CHINESE("CH");
constexpr float SMALLEST_SHOWN_MAXIMUM = 0.0001F;
constexpr int ASSEMBLY_PLACEHOLDERS = 8;
constexpr qint64 LONGEST_GROWTH = 1 << 16; // characters

QString body(const QString &text)
{
    return QFunction::stringToHtmlFilter(text, QColor(250, 250, 250), false);
}

QString bodyLine(const QString &text)
{
    return body(text + QLatin1Char('\n'));
}

/// Labels never change, so that they are converted once.
struct Labels
{
    const QString nodeName = body(QStringLiteral("Node Name: "));
    const QString type = body(QStringLiteral("Type: "));
    const QString nameSpace = body(QStringLiteral("Name Space: "));
    const QString visibility = body(QStringLiteral("Visibility: "));
    const QString streamable = body(QStringLiteral("Streamable: "));
    const QString minimum = body(QStringLiteral("Min: "));
    const QString maximum = body(QStringLiteral("Max: "));
    const QString increment = body(QStringLiteral("Inc: "));
    const QString entryName = body(QStringLiteral("Enum Entry Name: "));
    const QString entryValue = body(QStringLiteral("Enum Entry Value: "));
    const QString entryNameSpace = body(QStringLiteral("Name Spac: "));
    const QString paragraph = body(QStringLiteral("\n\n"));
    const QString assembly = QStringLiteral("%1%2") + nodeName + QStringLiteral("%3") + type
        + QStringLiteral("%4") + nameSpace + QStringLiteral("%5") + visibility
        + QStringLiteral("%6") + streamable + QStringLiteral("%7%8");
};

const Labels &labels()
{
    static const Labels instance;
    return instance;
}

bool isWithoutTail(const QString &nodeName)
{
    static const QSet<QString> names{QStringLiteral("GevCurrentIPAddress"),
                                     QStringLiteral("GevCurrentSubnetMask"),
                                     QStringLiteral("GevCurrentDefaultGateway")};
    return names.contains(nodeName);
}

bool isWithoutRange(const QString &nodeName)
{
    static const QSet<QString> names{QStringLiteral("GevPersistentIPAddress"),
                                     QStringLiteral("GevPersistentSubnetMask"),
                                     QStringLiteral("GevPersistentDefaultGateway"),
                                     QStringLiteral("GevSCDA"), QStringLiteral("GevSCSP")};
    return names.contains(nodeName);
}

QString integerInfo(const CTreeIntergerItemValue &value, const QString &nodeName)
{
    QString text;
    if (!isWithoutRange(nodeName)) {
        text += labels().minimum + bodyLine(QString::number(value.m_nMinValue));
        text += labels().maximum + bodyLine(QString::number(value.m_nMaxValue));
    }
    if (value.m_nIncValue >= 1) {
        text += labels().increment + bodyLine(QString::number(value.m_nIncValue));
    }
    return text;
}

QString floatInfo(const CTreeFloatItemValue &value)
{
    if (!(value.m_fMaxValue > SMALLEST_SHOWN_MAXIMUM)) {
        return QString();
    }
    const auto number = [](float f) { return QString::number(static_cast<double>(f), 'g'); };
    return labels().minimum + bodyLine(number(value.m_fMinValue)) + labels().maximum
        + bodyLine(number(value.m_fMaxValue));
}

/// The heading of an entry is its name in both languages; neither display name nor translation is shown.
QString entryInfo(const EnumEntryReading &entry)
{
    const EnumEntryFacts &facts = entry.facts;
    const QString name =
        facts.name == QLatin1String("Mode") ? QStringLiteral("AdvancedMode") : facts.name;
    return bodyLine(QLatin1Char('\n') + name + QLatin1Char('\n')) + labels().entryName
        + bodyLine(name) + labels().entryValue + bodyLine(facts.valueText) + labels().entryNameSpace
        + bodyLine(facts.nameSpace) + labels().visibility + bodyLine(facts.visibility);
}

/// One arg call after the other: a percent sign and a digit in a text are taken for a placeholder, unless there are so
/// many that thousands of such texts would outgrow the memory.
QString assembled(QStringList parts)
{
    QString text = labels().assembly;
    for (const QString &part : qAsConst(parts)) {
        const int percentSigns = text.count(QLatin1Char('%'));
        if (percentSigns > ASSEMBLY_PLACEHOLDERS
            && qint64(percentSigns) * part.size() > LONGEST_GROWTH) {
            return assembled(parts.replaceInStrings(QStringLiteral("%"), QStringLiteral("&#37;")));
        }
        text = text.arg(part);
    }
    return text;
}

} // namespace

QString FeatureToolTip::CreateToolTip(const FeatureToolTipSource &source, const QString &language)
{
    if (!source.facts || !source.value) {
        return QString();
    }
    const CTreeItemValue &value = *source.value;
    const NodeFacts &facts = *source.facts;
    QString title = facts.name;
    QString description = value.m_strDescription;
    if (language == LANGUAGE_CHINESE) {
        title = value.translateName();
        if (!value.m_strDescriptionTrans.isEmpty()) {
            description = value.m_strDescriptionTrans;
        }
    }
    const QString titleHtml =
        QFunction::stringToHtmlFilter(title + QStringLiteral("\n\n"), QColor(255, 255, 255), true);
    description.replace(QLatin1Char('"'), QLatin1Char('\''));

    const QString text = assembled(
        {titleHtml, body(description) + labels().paragraph, bodyLine(facts.name),
         bodyLine(facts.tagName),
         bodyLine(facts.nameSpace.isEmpty() ? QStringLiteral("Standard") : facts.nameSpace),
         bodyLine(facts.visibility), bodyLine(facts.streamable), CreateValueInfo(source)});
    return QStringLiteral("<span style=\"width:2px;height:12px; background-color:#FF7500; "
                          "\">&nbsp;</span>&nbsp;")
        + text;
}

QString FeatureToolTip::CreateValueInfo(const FeatureToolTipSource &source)
{
    const QString &nodeName = source.facts->name;
    if (isWithoutTail(nodeName)) {
        return QString();
    }
    QString text = QStringLiteral("\n");
    const QString &tagName = source.facts->tagName;
    if (tagName == QLatin1String("Integer")) {
        const auto *value = dynamic_cast<const CTreeIntergerItemValue *>(source.value);
        if (value && source.valueRead) {
            text += integerInfo(*value, nodeName);
        }
    } else if (tagName == QLatin1String("Enumeration")) {
        for (const EnumEntryReading &entry : source.entries) {
            if (entry.implementedAndAvailable) {
                text += entryInfo(entry);
            }
        }
    } else if (tagName == QLatin1String("Float")) {
        if (const auto *value = dynamic_cast<const CTreeFloatItemValue *>(source.value)) {
            text += floatInfo(*value);
        }
    }
    return text;
}

QByteArray FeatureToolTip::stateOf(const CTreeItemValue &value, bool valueRead,
                                   const QVector<EnumEntryReading> &entries)
{
    QByteArray state;
    state.reserve(32 + entries.size());
    const auto add = [&state](auto number) {
        state.append(reinterpret_cast<const char *>(&number), sizeof number);
    };
    add(valueRead);
    // A translation comes once and stays.
    add(value.m_strTranslateName.isEmpty());
    add(value.m_strDescriptionTrans.isEmpty());
    if (const auto *integer = dynamic_cast<const CTreeIntergerItemValue *>(&value)) {
        add(integer->m_nMinValue);
        add(integer->m_nMaxValue);
        add(integer->m_nIncValue);
    } else if (const auto *number = dynamic_cast<const CTreeFloatItemValue *>(&value)) {
        add(number->m_fMinValue);
        add(number->m_fMaxValue);
    }
    for (const EnumEntryReading &entry : entries) {
        add(entry.implementedAndAvailable);
    }
    return state;
}
