#include <QDirIterator>
#include <QDomDocument>
#include <QRegularExpression>
#include <QtTest>

namespace {

/// Translations by context and source text; empty for one that is unfinished or obsolete.
using Messages = QMap<QString, QMap<QString, QString>>;

void readFile(const QString &path, Messages &messages)
{
    QFile file(QStringLiteral(PROJECT_FOLDER "/host/") + path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
        return;
    }
    const QDomNodeList contexts = document.elementsByTagName("context");
    for (int i = 0; i < contexts.size(); ++i) {
        const QDomElement context = contexts.at(i).toElement();
        const QString strContext = context.firstChildElement("name").text();
        for (QDomElement message = context.firstChildElement("message"); !message.isNull();
             message = message.nextSiblingElement("message")) {
            const QDomElement translation = message.firstChildElement("translation");
            messages[strContext][message.firstChildElement("source").text()] =
                translation.hasAttribute("type") ? QString() : translation.text();
        }
    }
}

/// All words of one language, "en" or "zh": those that the module asks for and the workbench's own.
Messages readMessages(const QString &language)
{
    Messages messages;
    const bool isEnglish = language == QLatin1String("en");
    readFile(isEnglish ? "translations/vexa_en.ts" : "translations/vexa_zh_CN.ts", messages);
    readFile("workbench/workbench_" + language + ".ts", messages);
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

/// Source texts of the module and the host, by file name.
QMap<QString, QString> sourceFiles()
{
    QMap<QString, QString> sources;
    for (const char *pFolder :
         {"shell", "model", "tree", "view", "editors", "featurefile", "fileaccess", "host"}) {
        QDirIterator files(QStringLiteral(PROJECT_FOLDER "/") + QLatin1String(pFolder),
                           {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly)) {
                sources.insert(file.fileName(), QString::fromUtf8(file.readAll()));
            }
        }
    }
    return sources;
}

} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT
private slots:
    void everyTextOfTheSourcesIsThere();
    void bothLanguagesAgree();
};

/// Keys anywhere, and the look-ups that name their text in place: translate("Context", "text"), and tr("text") of the
/// class that gives the file its name.
void tst_Translations::everyTextOfTheSourcesIsThere()
{
    const Messages messages = readMessages("en");
    QStringList known;
    for (const auto &context : messages) {
        known += context.keys();
    }
    // A key that ends in "_" is a prefix that code completes.
    const QRegularExpression key("\"(lang_[a-z0-9_]*[a-z0-9])\"");
    const QRegularExpression translate("\\btranslate\\(\\s*\"(\\w+)\",\\s*\"([^\"]+)\"");
    const QRegularExpression tr("(?:(\\w+)::)?\\btr\\(\\s*\"([^\"]+)\"");
    const QMap<QString, QString> sources = sourceFiles();
    QVERIFY2(sources.size() > 10, "the sources were not found");
    QSet<QString> missing;
    for (auto source = sources.cbegin(); source != sources.cend(); ++source) {
        for (auto it = key.globalMatch(source.value()); it.hasNext();) {
            const QString strKey = it.next().captured(1);
            if (!known.contains(strKey)) {
                missing.insert(strKey + " of " + source.key());
            }
        }
        for (const QRegularExpression &lookUp : {translate, tr}) {
            for (auto it = lookUp.globalMatch(source.value()); it.hasNext();) {
                const QRegularExpressionMatch match = it.next();
                const QString strContext = match.captured(1).isEmpty()
                    ? QFileInfo(source.key()).completeBaseName()
                    : match.captured(1);
                if (!messages.value(strContext).contains(match.captured(2))) {
                    missing.insert(strContext + ": " + match.captured(2));
                }
            }
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.values().join('\n')));
}

void tst_Translations::bothLanguagesAgree()
{
    const Messages english = readMessages("en");
    const Messages chinese = readMessages("zh");
    QVERIFY(!english.isEmpty());
    QCOMPARE(english.keys(), chinese.keys());
    for (auto context = english.cbegin(); context != english.cend(); ++context) {
        QCOMPARE(context->keys(), chinese.value(context.key()).keys());
        for (auto it = context->cbegin(); it != context->cend(); ++it) {
            const QString other = chinese.value(context.key()).value(it.key());
            const QByteArray name = it.key().toUtf8();
            QVERIFY2(!it->isEmpty() && !other.isEmpty(), name);
            QVERIFY2(placeholders(*it) == placeholders(other), name);
            QVERIFY2(it.key().startsWith("lang_") || placeholders(it.key()) == placeholders(*it),
                     name);
        }
    }
}

QTEST_GUILESS_MAIN(tst_Translations)
#include "tst_translations.moc"
