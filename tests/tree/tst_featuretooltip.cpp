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

/// What a reader of the pane sees.
QString shownText(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

} // namespace

class tst_featuretooltip : public QObject
{
    Q_OBJECT
private slots:
    void head_data();
    void head();
    void integerTail_data();
    void integerTail();
    void floatTail_data();
    void floatTail();
    void entries();
    void nothingWithoutFacts();
};

void tst_featuretooltip::head_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("descriptionTrans");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("expected");

    const QByteArray gain = "<Command Name='Gain'/>";
    QTest::newRow("no name space is Standard") << gain << "Text"
                                               << ""
                                               << "ENG"
                                               << "Name Space: Standard";
    QTest::newRow("own name space")
        << QByteArray("<Command Name='Gain' NameSpace='Custom'/>") << "Text"
        << ""
        << "ENG"
        << "Name Space: Custom";
    QTest::newRow("type is the tag") << gain << "Text"
                                     << ""
                                     << "ENG"
                                     << "Type: Command";
    QTest::newRow("streamable as given")
        << QByteArray("<Command Name='Gain'><Streamable>Yes</Streamable></Command>") << "Text"
        << ""
        << "ENG"
        << "Streamable: Yes";
    QTest::newRow("visibility of the node")
        << QByteArray("<Command Name='Gain'><Visibility>Expert</Visibility></Command>") << "Text"
        << ""
        << "ENG"
        << "Visibility: Expert";
    QTest::newRow("double quotes become single") << gain << "a \"b\" c"
                                                 << ""
                                                 << "ENG"
                                                 << "a 'b' c";
    QTest::newRow("markup stays text") << gain << "x < y & z"
                                       << ""
                                       << "ENG"
                                       << "x < y & z";
    QTest::newRow("English keeps the English text")
        << gain << "Text" << QString::fromUtf8("文本") << "ENG"
        << "Text";
    QTest::newRow("Chinese shows the translation")
        << gain << "" << QString::fromUtf8("文本") << "CH" << QString::fromUtf8("文本");
    QTest::newRow("Chinese without a translation") << gain << "Text"
                                                   << ""
                                                   << "CH"
                                                   << "Text";
    QTest::newRow("Chinese title is the translated name") << gain << "Text"
                                                          << ""
                                                          << "CH" << QString::fromUtf8("增益");
}

void tst_featuretooltip::head()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, description);
    QFETCH(QString, descriptionTrans);
    QFETCH(QString, language);
    QFETCH(QString, expected);

    CTreeItemValue value;
    value.m_strDescription = description;
    value.m_strDescriptionTrans = descriptionTrans;
    value.m_strTranslateName = QString::fromUtf8("增益");
    const NodeFacts facts = factsOf(xml);
    FeatureToolTipSource source;
    source.facts = &facts;
    source.value = &value;
    const QString text = shownText(FeatureToolTip::CreateToolTip(source, language));
    QVERIFY2(text.contains(expected), qPrintable(text));
}

void tst_featuretooltip::integerTail_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("increment");
    QTest::addColumn<QString>("expected");

    QTest::newRow("range and increment")
        << "Width" << qint64(4) << "Min: 16|Max: 9007199254740993|Inc: 4|";
    QTest::newRow("no increment of 0") << "Width" << qint64(0) << "Min: 16|Max: 9007199254740993|";
    QTest::newRow("address shows its increment only")
        << "GevPersistentIPAddress" << qint64(1) << "Inc: 1|";
    QTest::newRow("current address has no tail") << "GevCurrentIPAddress" << qint64(1) << "";
}

void tst_featuretooltip::integerTail()
{
    QFETCH(QString, name);
    QFETCH(qint64, increment);
    QFETCH(QString, expected);

    CTreeIntergerItemValue value;
    value.m_nMinValue = 16;
    value.m_nMaxValue = 9007199254740993; // 2^53 + 1: lost by a double
    value.m_nIncValue = increment;
    const NodeFacts facts = factsOf("<Integer Name='" + name.toUtf8() + "'/>");
    FeatureToolTipSource source;
    source.facts = &facts;
    source.value = &value;
    QCOMPARE(shownText(FeatureToolTip::CreateValueInfo(source))
                 .replace(QLatin1Char('\n'), QLatin1Char('|'))
                 .trimmed(),
             expected);
}

void tst_featuretooltip::floatTail_data()
{
    QTest::addColumn<float>("maximum");
    QTest::addColumn<QString>("expected");
    QTest::newRow("range") << 1e9F << "Min: 0.5|Max: 1e+09|";
    QTest::newRow("maximum of 0 shows none") << 0.0F << "";
    QTest::newRow("negative maximum shows none") << -1.0F << "";
    QTest::newRow("maximum that is no number shows none")
        << std::numeric_limits<float>::quiet_NaN() << "";
}

void tst_featuretooltip::floatTail()
{
    QFETCH(float, maximum);
    QFETCH(QString, expected);
    CTreeFloatItemValue value;
    value.m_fMinValue = 0.5F;
    value.m_fMaxValue = maximum;
    const NodeFacts facts = factsOf("<Float Name='Gain'/>");
    FeatureToolTipSource source;
    source.facts = &facts;
    source.value = &value;
    QCOMPARE(shownText(FeatureToolTip::CreateValueInfo(source))
                 .replace(QLatin1Char('\n'), QLatin1Char('|'))
                 .trimmed(),
             expected);
}

void tst_featuretooltip::entries()
{
    CTreeItemValue value;
    const NodeFacts facts = factsOf("<Enumeration Name='Shape'/>");
    FeatureToolTipSource source;
    source.facts = &facts;
    source.value = &value;
    EnumEntryReading shown;
    shown.facts.name = QStringLiteral("Mode");
    shown.facts.displayName = QStringLiteral("Something else");
    shown.facts.valueText = QStringLiteral("7");
    shown.facts.visibility = QStringLiteral("Guru");
    EnumEntryReading hidden;
    hidden.facts.name = QStringLiteral("Hidden");
    hidden.implementedAndAvailable = false;
    source.entries = {shown, hidden};
    const QString text = shownText(FeatureToolTip::CreateValueInfo(source));
    QVERIFY2(text.contains(QLatin1String("Enum Entry Name: AdvancedMode")), qPrintable(text));
    QVERIFY(text.contains(QLatin1String("Enum Entry Value: 7")));
    QVERIFY(text.contains(QLatin1String("Visibility: Guru")));
    QVERIFY(!text.contains(QLatin1String("Something else")));
    QVERIFY(!text.contains(QLatin1String("Hidden")));
}

void tst_featuretooltip::nothingWithoutFacts()
{
    CTreeItemValue value;
    FeatureToolTipSource source;
    source.value = &value;
    QVERIFY(FeatureToolTip::CreateToolTip(source, QStringLiteral("ENG")).isEmpty());
    source.value = nullptr;
    const NodeFacts facts = factsOf("<Command Name='Gain'/>");
    source.facts = &facts;
    QVERIFY(FeatureToolTip::CreateToolTip(source, QStringLiteral("ENG")).isEmpty());
}

QTEST_MAIN(tst_featuretooltip)
#include "tst_featuretooltip.moc"
