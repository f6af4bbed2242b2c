#include "ControlKit/CustomLabel.h"
#include "editors/QCustomReverseHintWidget.h"

#include <QApplication>
#include <QTest>

class TestQCustomReverseHintWidget : public QObject
{
    Q_OBJECT
private slots:
    void texts_data();
    void texts();
    void languageChangeShowsTheKeysAgain();
};

static QList<CustomLabel *> labels(const QWidget &widget)
{
    return widget.findChildren<CustomLabel *>(QString(), Qt::FindDirectChildrenOnly); // icon, text
}

void TestQCustomReverseHintWidget::texts_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    const QString key = "lang_qcustomreversehintwidget_";
    QTest::newRow("kinds 0 and 1 swapped") << 0 << "ENG" << key + "xmirror";
    QTest::newRow("fixed Chinese text") << 1 << "CH" << QStringLiteral(u"Y\u955c\u50cf");
    QTest::newRow("Chinese without a fixed text") << 7 << "CH" << key + "hdrenable";
    QTest::newRow("last kind") << 8 << "ENG" << key + "selftriggerperiod";
    QTest::newRow("kind beyond the table") << 9 << "CH" << QString();
    QTest::newRow("negative kind") << -1 << "ENG" << QString();
}

void TestQCustomReverseHintWidget::texts()
{
    QFETCH(int, kind);
    QFETCH(QString, language);
    QCustomReverseHintWidget widget(nullptr, kind);
    widget.setLanguage(language);
    QTEST(labels(widget).at(1)->text(), "text");
    QTEST(labels(widget).at(1)->toolTip(), "text");
    QCOMPARE(labels(widget).at(0)->toolTip().isEmpty(), labels(widget).at(1)->text().isEmpty());
}

void TestQCustomReverseHintWidget::languageChangeShowsTheKeysAgain()
{
    QCustomReverseHintWidget widget(nullptr, 2);
    widget.setLanguage("CH");
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(&widget, &change);
    QCOMPARE(labels(widget).at(1)->text(),
             QString("lang_qcustomreversehintwidget_pharmacodeonetrack"));
}

QTEST_MAIN(TestQCustomReverseHintWidget)
#include "tst_QCustomReverseHintWidget.moc"
