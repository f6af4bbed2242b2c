#include "host/workbench/WorkbenchTexts.h"

#include <QTranslator>

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
