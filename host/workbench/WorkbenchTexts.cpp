#include "host/workbench/WorkbenchTexts.h"

#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTranslator>

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
