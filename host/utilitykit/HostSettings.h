#pragma once

#include <QMutex>
#include <QString>

/// What UtilityKit keeps between runs, in one INI file. Any thread.
class HostSettings
{
public:
    static HostSettings &instance();

    /// "ENG" or "CH". `reload` reads it from the file first.
    QString language(bool reload);
    void setLanguage(const QString &language);
    QString lastFolder();
    void setLastFolder(const QString &folder);
    bool isNeutralVision();
    void setNeutralVision(bool neutral);
    /// Default values, in memory only from now on.
    void useTransient();

private:
    HostSettings() = default;
    void ensureLoaded();
    void load();
    void save(const char *key, const QString &value);

    QMutex m_mutex;
    bool m_bLoaded = false;
    bool m_bNeutral = false;
    QString m_strLanguage = QStringLiteral("ENG");
    QString m_strLastFolder;
    QString m_strPath; ///< empty while the values are transient
};
