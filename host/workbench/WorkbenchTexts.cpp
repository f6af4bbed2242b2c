#include "host/workbench/WorkbenchTexts.h"

#include <QHash>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTranslator>

namespace {

/// More than the log shows lines; older ones keep their language.
constexpr int MOST_TEXTS = 4000;

struct Source
{
    QByteArray key;
    QStringList arguments;
};

QHash<QString, Source> &loggedSources()
{
    static QHash<QString, Source> sources;
    return sources;
}

} // namespace

QString loggedText(const char *key, const QStringList &arguments)
{
    QString text = workbenchText(key);
    for (const QString &argument : arguments) {
        text = text.arg(argument);
    }
    if (loggedSources().size() >= MOST_TEXTS) {
        loggedSources().clear();
    }
    loggedSources().insert(text, {key, arguments});
    return text;
}

QString retranslated(const QString &text)
{
    const auto source = loggedSources().constFind(text);
    if (source == loggedSources().constEnd()) {
        return text;
    }
    const Source copy = *source;
    return loggedText(copy.key.constData(), copy.arguments);
}

QString messageLine(const QString &title, const QString &text, bool isMarkup)
{
    // What only claims to be markup keeps its line ends.
    const QString plain = isMarkup && Qt::mightBeRichText(text)
        ? QTextDocumentFragment::fromHtml(text).toPlainText()
        : text;
    if (title.isEmpty()) {
        return plain;
    }
    return title + (title.back().isPunct() ? QStringLiteral(" ") : QStringLiteral(": ")) + plain;
}

void installWorkbenchTexts(const QString &language)
{
    // The resource stands in a static library, which would drop it unasked.
    Q_INIT_RESOURCE(workbench);
    static QTranslator translator;
    QCoreApplication::removeTranslator(&translator);
    if (translator.load(language == QLatin1String("CH")
                            ? QStringLiteral(":/workbench/workbench_zh.qm")
                            : QStringLiteral(":/workbench/workbench_en.qm"))) {
        QCoreApplication::installTranslator(&translator);
    }
}
