#pragma once

#include <QMutex>
#include <QString>

class QVariant;

/// The values that the client keeps between runs, cached in memory and written through to one INI file. Any thread.
class SettingsStore
{
public:
    static SettingsStore &instance();

    /// Reads the values from this file and keeps them there from now on. False when the file cannot be used; the
    /// values then live in memory only.
    bool useFile(const QString &path);
    /// Default values, kept in memory only.
    void useTransient();

    int userLevel();
    void setUserLevel(int level);
    QString propertyLanguage();
    void setPropertyLanguage(const QString &language);
    QString codeFormat();

private:
    struct Values
    {
        int nUserLevel;
        QString strLanguage;
        QString strCodeFormat;
    };

    SettingsStore();
    void ensureLoaded();
    bool load(const QString &path);
    void save(const char *key, const QVariant &value);

    QMutex m_mutex;
    Values m_values;
    bool m_bLoaded = false;
    QString m_strPath; ///< empty while the values are transient
};
