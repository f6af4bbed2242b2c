#include "host/utilitykit/HostSettings.h"

#include <QMutexLocker>
#include <QSettings>
#include <QStandardPaths>

namespace {

constexpr char LANGUAGE_KEY[] = "Client/Language";
constexpr char LAST_FOLDER_KEY[] = "Files/LastFolder";

QString checkedLanguage(const QString &language)
{
    return language == QLatin1String("CH") ? language : QStringLiteral("ENG");
}

} // namespace

HostSettings &HostSettings::instance()
{
    // Never destroyed: workers may still ask while the process ends. Every change is on disk already.
    static auto *const s_pInstance = new HostSettings;
    return *s_pInstance;
}

void HostSettings::ensureLoaded()
{
    if (m_bLoaded) {
        return;
    }
    m_bLoaded = true;
    m_strPath = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1String("/vexa-workbench/utility.ini");
    load();
}

void HostSettings::load()
{
    const QSettings settings(m_strPath, QSettings::IniFormat);
    m_strLanguage = checkedLanguage(settings.value(QLatin1String(LANGUAGE_KEY)).toString());
    m_strLastFolder = settings.value(QLatin1String(LAST_FOLDER_KEY)).toString();
}

void HostSettings::save(const char *key, const QString &value)
{
    if (m_strPath.isEmpty()) {
        return;
    }
    // One of its own each time: a QSettings that is kept belongs to the thread that made it.
    QSettings settings(m_strPath, QSettings::IniFormat);
    settings.setValue(QLatin1String(key), value);
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        qWarning("The settings file %s cannot be written; changes last for this run only.",
                 qPrintable(m_strPath));
        m_strPath.clear();
    }
}

QString HostSettings::language(bool reload)
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    if (reload && !m_strPath.isEmpty()) {
        load();
    }
    return m_strLanguage;
}

void HostSettings::setLanguage(const QString &language)
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    const QString checked = checkedLanguage(language);
    if (m_strLanguage != checked) {
        m_strLanguage = checked;
        save(LANGUAGE_KEY, checked);
    }
}

QString HostSettings::lastFolder()
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    return m_strLastFolder;
}

void HostSettings::setLastFolder(const QString &folder)
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    if (m_strLastFolder != folder) {
        m_strLastFolder = folder;
        save(LAST_FOLDER_KEY, folder);
    }
}

bool HostSettings::isNeutralVision()
{
    QMutexLocker lock(&m_mutex);
    return m_bNeutral;
}

void HostSettings::setNeutralVision(bool neutral)
{
    QMutexLocker lock(&m_mutex);
    m_bNeutral = neutral;
}

void HostSettings::useTransient()
{
    QMutexLocker lock(&m_mutex);
    m_strPath.clear();
    m_bLoaded = true;
    m_strLanguage = QStringLiteral("ENG");
    m_strLastFolder.clear();
}
