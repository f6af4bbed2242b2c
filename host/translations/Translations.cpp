#include "host/translations/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

constexpr char kTranslatorName[] = "VexaTranslator";

struct LanguageFiles
{
    const char *language;
    const char *words;
    const char *qtWords; ///< null where Qt's source texts serve
};

const LanguageFiles kLanguages[] = {
    {"ENG", ":/translations/vexa_en.qm", nullptr},
    {"CH", ":/translations/vexa_zh_CN.qm", "qtbase_zh_CN"},
};

const LanguageFiles &filesOf(const QString &language)
{
    for (const LanguageFiles &files : kLanguages) {
        if (language == QLatin1String(files.language)) {
            return files;
        }
    }
    return kLanguages[0];
}

QTranslator *newTranslator(QCoreApplication &application)
{
    auto *pTranslator = new QTranslator(&application);
    pTranslator->setObjectName(QLatin1String(kTranslatorName));
    return pTranslator;
}

} // namespace

/// A resource of a static library is linked only when it is asked for, outside of any namespace.
static void initTranslationResources()
{
    Q_INIT_RESOURCE(translations);
}

void installLanguage(QCoreApplication &application, const QString &language)
{
    initTranslationResources();
    const auto oldTranslators = application.findChildren<QTranslator *>(
        QLatin1String(kTranslatorName), Qt::FindDirectChildrenOnly);
    const LanguageFiles &files = filesOf(language);

    if (files.qtWords) {
        QTranslator *pQt = newTranslator(application);
        if (pQt->load(QLatin1String(files.qtWords),
                      QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
            QCoreApplication::installTranslator(pQt);
        } else {
            delete pQt; // its package is not installed: Qt's own few texts stay English
        }
    }
    QTranslator *pWords = newTranslator(application);
    if (!pWords->load(QLatin1String(files.words))) {
        qCritical("The words of language %s are missing.", files.language);
    }
    QCoreApplication::installTranslator(pWords);
    // The new ones come first in a look-up, so that no moment is without words.
    qDeleteAll(oldTranslators);
}
