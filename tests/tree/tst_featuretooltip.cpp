#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tree/FeatureReader.h"
#include "tree/FeatureToolTip.h"

#include <QDomDocument>
#include <QTextDocument>
#include <QtTest>

namespace {

NodeFacts factsOf(const QByteArray &xml)
{
    QDomDocument document;
    document.setContent(xml);
    return NodeFacts(document.documentElement());
}

/// What a reader of the pane sees, with "|" at the end of a line.
QString shownText(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText().replace('\n', '|').trimmed();
}

QString tailOf(const QByteArray &xml, const CTreeItemValue &value,
               const QVector<EnumEntryReading> &entries = {}, bool valueRead = true)
{
    const NodeFacts facts = factsOf(xml);
    FeatureToolTipSource source;
    source.facts = &facts;
    source.value = &value;
    source.entries = entries;
    source.valueRead = valueRead;
    return shownText(FeatureToolTip::CreateValueInfo(source));
}

} // namespace

class tst_featuretooltip : public QObject
{
    Q_OBJECT
private slots:
    void head();
    void tail();
    void entries();
};

void tst_featuretooltip::head()
{
    const char *const plain = "<Command Name='Gain'/>";
    const struct
    {
        const char *fault;
        const char *xml;
        QString description;
        QString translation;
        const char *language;
        const char *expected;
    } rows[] = {
        {"no name space is Standard", plain, "", "", "ENG", "Name Space: Standard"},
        {"visibility of the node", "<Command><Visibility>Expert</Visibility></Command>", "", "",
         "ENG", "Visibility: Expert"},
        {"double quotes become single", plain, "a \"b\" c", "", "ENG", "a 'b' c"},
        {"a placeholder takes what stands there", plain, "a %7 b", "", "ENG", "a No"},
        {"a text full of placeholders stays text", plain, QString("%8").repeated(70000), "", "ENG",
         "%8%8"},
        {"markup stays text", plain, "x < y & z", "", "ENG", "x < y & z"},
        {"Chinese shows the translation", plain, "", "文本", "CH", "文本"},
        {"Chinese title is the translated name", plain, "Text", "", "CH", "增益"},
    };
    for (const auto &row : rows) {
        CTreeItemValue value;
        value.m_strDescription = row.description;
        value.m_strDescriptionTrans = row.translation;
        value.m_strTranslateName = QString("增益");
        const NodeFacts facts = factsOf(row.xml);
        FeatureToolTipSource source;
        source.facts = &facts;
        source.value = &value;
        const QString text = shownText(FeatureToolTip::CreateToolTip(source, row.language));
        QVERIFY2(text.contains(row.expected), row.fault);
    }
}

void tst_featuretooltip::tail()
{
    CTreeIntergerItemValue integer;
    integer.m_nMinValue = 16;
    integer.m_nMaxValue = 9007199254740993; // 2^53 + 1: lost by a double
    integer.m_nIncValue = 4;
    QCOMPARE(tailOf("<Integer Name='Width'/>", integer),
             QString("Min: 16|Max: 9007199254740993|Inc: 4|"));
    QCOMPARE(tailOf("<Integer Name='GevPersistentIPAddress'/>", integer), QString("Inc: 4|"));
    QCOMPARE(tailOf("<Integer Name='GevCurrentIPAddress'/>", integer), QString());
    QCOMPARE(tailOf("<Integer Name='Width'/>", CTreeIntergerItemValue(), {}, false), QString());
    integer.m_nIncValue = 0;
    QCOMPARE(tailOf("<Integer Name='Width'/>", integer), QString("Min: 16|Max: 9007199254740993|"));
    CTreeFloatItemValue number;
    number.m_fMinValue = 0.5F;
    number.m_fMaxValue = 1e9F;
    QCOMPARE(tailOf("<Float Name='Gain'/>", number), QString("Min: 0.5|Max: 1e+09|"));
    for (const float none : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        number.m_fMaxValue = none;
        QCOMPARE(tailOf("<Float Name='Gain'/>", number), QString());
    }
}

void tst_featuretooltip::entries()
{
    EnumEntryReading shown;
    shown.facts.name = QString("Mode");
    shown.facts.displayName = QString("Something else");
    shown.facts.valueText = QString("7");
    shown.facts.visibility = QString("Guru");
    EnumEntryReading hidden;
    hidden.facts.name = QString("Hidden");
    hidden.implementedAndAvailable = false;
    const QString text = tailOf("<Enumeration Name='Shape'/>", CTreeItemValue(), {shown, hidden});
    for (const char *part :
         {"Enum Entry Name: AdvancedMode", "Enum Entry Value: 7", "Visibility: Guru"}) {
        QVERIFY2(text.contains(part), qPrintable(text));
    }
    QVERIFY(!text.contains("Something else") && !text.contains("Hidden"));
}

QTEST_MAIN(tst_featuretooltip)
#include "tst_featuretooltip.moc"
