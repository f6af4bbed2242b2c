#include "host/translations/Translations.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QDomDocument>
#include <QPushButton>
#include <QRegularExpression>
#include <QTranslator>
#include <QtTest>

namespace {

struct Message
{
    QString strTranslation;
    QString strType; ///< "unfinished", "obsolete"; empty when the text is finished
};

using Messages = QMap<QString, QMap<QString, Message>>; ///< by context and source text

Messages readMessages(const QString &fileName)
{
    QFile file(QStringLiteral(PROJECT_FOLDER "/host/translations/") + fileName);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
        return {};
    }
    Messages messages;
    const QDomNodeList contexts = document.elementsByTagName("context");
    for (int i = 0; i < contexts.size(); ++i) {
        const QDomElement context = contexts.at(i).toElement();
        const QString strContext = context.firstChildElement("name").text();
        for (QDomElement message = context.firstChildElement("message"); !message.isNull();
             message = message.nextSiblingElement("message")) {
            const QDomElement translation = message.firstChildElement("translation");
            messages[strContext][message.firstChildElement("source").text()]
                = { translation.text(), translation.attribute("type") };
        }
    }
    return messages;
}

QSet<QString> placeholders(const QString &text)
{
    static const QRegularExpression s_placeholder(QStringLiteral("%L?[0-9]{1,2}|%n"));
    QSet<QString> found;
    for (auto it = s_placeholder.globalMatch(text); it.hasNext();) {
        found.insert(it.next().captured());
    }
    return found;
}

/// Every key that a source file of the module or the host mentions, with the files that do.
QMap<QString, QStringList> keysInSources()
{
    // A key that ends in "_" is a prefix that code completes.
    static const QRegularExpression s_key(QStringLiteral("\"(lang_[a-z0-9_]*[a-z0-9])\""));
    QMap<QString, QStringList> keys;
    for (const char *pFolder : { "shell", "model", "tree", "view", "editors", "featurefile", "fileaccess", "host" }) {
        QDirIterator files(QStringLiteral(PROJECT_FOLDER "/") + QLatin1String(pFolder), { "*.cpp", "*.h" },
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly)) {
                continue;
            }
            for (auto it = s_key.globalMatch(QString::fromUtf8(file.readAll())); it.hasNext();) {
                keys[it.next().captured(1)].append(file.fileName());
            }
        }
    }
    return keys;
}

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT
private slots:
    void everyKeyOfTheSourcesHasWords_data();
    void everyKeyOfTheSourcesHasWords();
    void bothLanguagesAgree();
    void switchesAtRunTime();
    void widgetsHearOfIt();
    void unknownLanguagesAreEnglish();
};

void tst_Translations::everyKeyOfTheSourcesHasWords_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("English") << "vexa_en.ts";
    QTest::newRow("Chinese") << "vexa_zh_CN.ts";
}

void tst_Translations::everyKeyOfTheSourcesHasWords()
{
    QFETCH(QString, fileName);
    QMap<QString, Message> byKey;
    const Messages messages = readMessages(fileName);
    for (const auto &context : messages) {
        for (auto it = context.cbegin(); it != context.cend(); ++it) {
            byKey.insert(it.key(), it.value());
        }
    }
    const QMap<QString, QStringList> keys = keysInSources();
    QVERIFY2(keys.size() > 10, "the sources were not found");
    QStringList missing;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        const Message message = byKey.value(it.key());
        if (message.strTranslation.isEmpty() || !message.strType.isEmpty()) {
            missing.append(it.key() + " of " + it.value().first());
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join('\n')));
}

void tst_Translations::bothLanguagesAgree()
{
    const Messages english = readMessages("vexa_en.ts");
    const Messages chinese = readMessages("vexa_zh_CN.ts");
    QVERIFY(!english.isEmpty());
    QCOMPARE(english.keys(), chinese.keys());
    for (auto context = english.cbegin(); context != english.cend(); ++context) {
        QCOMPARE(context->keys(), chinese.value(context.key()).keys());
        for (auto it = context->cbegin(); it != context->cend(); ++it) {
            const Message other = chinese.value(context.key()).value(it.key());
            const QByteArray name = it.key().toUtf8();
            QVERIFY2(!it->strTranslation.isEmpty() && !other.strTranslation.isEmpty(), name.constData());
            QVERIFY2(it->strType.isEmpty() && other.strType.isEmpty(), name.constData());
            QVERIFY2(placeholders(it->strTranslation) == placeholders(other.strTranslation), name.constData());
            if (!it.key().startsWith("lang_")) {
                QVERIFY2(placeholders(it.key()) == placeholders(it->strTranslation), name.constData());
            }
        }
    }
}

void tst_Translations::switchesAtRunTime()
{
    const auto guru = [] { return QCoreApplication::translate("QFeatureTree", "lang_qfeaturetree_guru"); };
    installLanguage(*qApp, "ENG");
    QCOMPARE(guru(), QString("Guru"));
    installLanguage(*qApp, "CH");
    QCOMPARE(guru(), QString::fromUtf8("大师"));
    installLanguage(*qApp, "ENG");
    QCOMPARE(guru(), QString("Guru"));
    QVERIFY2(qApp->findChildren<QTranslator *>().size() <= 2, "former translators pile up");
    // The placeholders of a text without a key.
    QCOMPARE(QCoreApplication::translate("VexaPropertySpinBox", "Min:%1; Max:%2; Step Value:%3"),
             QString("Min:%1; Max:%2; Step Value:%3"));
}

void tst_Translations::widgetsHearOfIt()
{
    struct Button : QPushButton
    {
        void changeEvent(QEvent *event) override
        {
            if (event->type() == QEvent::LanguageChange) {
                setText(QCoreApplication::translate("QFeatureToolBar", "lang_qfeaturetoolbar_featurerefresh"));
            }
            QPushButton::changeEvent(event);
        }
    };
    installLanguage(*qApp, "ENG");
    QWidget window;
    auto *pButton = new Button;
    pButton->setParent(&window);
    window.show();
    installLanguage(*qApp, "CH");
    QTRY_COMPARE(pButton->text(), QString::fromUtf8("刷新"));
}

void tst_Translations::unknownLanguagesAreEnglish()
{
    for (const char *pLanguage : { "", "FR", "ch" }) {
        installLanguage(*qApp, "CH");
        installLanguage(*qApp, pLanguage);
        QCOMPARE(QCoreApplication::translate("QFeatureTree", "lang_qfeaturetree_guru"), QString("Guru"));
    }
}

QTEST_MAIN(tst_Translations)
#include "tst_translations.moc"
