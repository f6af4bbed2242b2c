#pragma once

#include <QByteArray>
#include <QString>

/// A file that is written under another name beside its target and takes the target's place when all went well: until
/// then the target stays as it was. What was not committed is removed.
class StagedFile
{
public:
    /// Nothing is made yet.
    explicit StagedFile(const QString &target);
    ~StagedFile();
    StagedFile(const StagedFile &) = delete;
    StagedFile &operator=(const StagedFile &) = delete;

    const QString &target() const { return m_strTarget; }
    /// Where to write; the name is unused.
    const QString &path() const { return m_strPath; }
    /// Replaces what stands at path().
    bool write(const QByteArray &bytes, QString *reason);
    /// Puts what stands at path() in the place of the target, with the permissions of a former one.
    bool commit(QString *reason);

private:
    QString m_strTarget;
    QString m_strPath;
};
