#include "host/shellservices/SettingsStore.h"

#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

namespace {

constexpr int kBeginner = 2;
constexpr char kUserLevelKey[] = "User/Level";
constexpr char kLanguageKey[] = "Property/Language";
constexpr char kCodeFormatKey[] = "Property/CodeFormat";

int checkedLevel(int level)
{
    return level >= 0 && level <= kBeginner ? level : kBeginner;
}

QString checkedLanguage(const QString &language)
{
    return language == QLatin1String("CH") ? language : QStringLiteral("ENG");
}

} // namespace

SettingsStore::SettingsStore()
    : m_values{kBeginner, QStringLiteral("ENG"), QString()}
{
}

SettingsStore &SettingsStore::instance()
{
    // Never destroyed: workers may still ask while the process ends. Every change is on disk already.
    static auto *const s_pInstance = new SettingsStore;
    return *s_pInstance;
}

bool SettingsStore::useFile(const QString &path)
{
    QMutexLocker lock(&m_mutex);
    return load(path);
}

void SettingsStore::useTransient()
{
    QMutexLocker lock(&m_mutex);
    m_strPath.clear();
    m_values = {kBeginner, QStringLiteral("ENG"), QString()};
    m_bLoaded = true;
}

void SettingsStore::ensureLoaded()
{
    if (!m_bLoaded) {
        load(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
             + QLatin1String("/vexa-workbench/shell.ini"));
    }
}

bool SettingsStore::load(const QString &path)
{
    m_bLoaded = true;
    const QSettings settings(path, QSettings::IniFormat);
    bool bNumber = false;
    const int nLevel = settings.value(QLatin1String(kUserLevelKey)).toInt(&bNumber);
    m_values.nUserLevel = bNumber ? checkedLevel(nLevel) : kBeginner;
    m_values.strLanguage = checkedLanguage(settings.value(QLatin1String(kLanguageKey)).toString());
    m_values.strCodeFormat = settings.value(QLatin1String(kCodeFormatKey)).toString();
    const bool bUsable = settings.status() == QSettings::NoError && settings.isWritable();
    m_strPath = bUsable ? path : QString();
    if (!bUsable) {
        qWarning("The settings file %s cannot be used; changes last for this run only.",
                 qPrintable(path));
    }
    return bUsable;
}

void SettingsStore::save(const char *key, const QVariant &value)
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

int SettingsStore::userLevel()
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    return m_values.nUserLevel;
}

void SettingsStore::setUserLevel(int level)
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    const int nChecked = checkedLevel(level);
    if (m_values.nUserLevel != nChecked) {
        m_values.nUserLevel = nChecked;
        save(kUserLevelKey, nChecked);
    }
}

QString SettingsStore::propertyLanguage()
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    return m_values.strLanguage;
}

void SettingsStore::setPropertyLanguage(const QString &language)
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    const QString strChecked = checkedLanguage(language);
    if (m_values.strLanguage != strChecked) {
        m_values.strLanguage = strChecked;
        save(kLanguageKey, strChecked);
    }
}

QString SettingsStore::codeFormat()
{
    QMutexLocker lock(&m_mutex);
    ensureLoaded();
    return m_values.strCodeFormat;
}
