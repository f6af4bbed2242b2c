#include "host/workbench/StagedFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

/// A file behind a link is replaced, not the link.
QString realTarget(const QString &target)
{
    const QString canonical = QFileInfo(target).canonicalFilePath();
    return canonical.isEmpty() ? QFileInfo(target).absoluteFilePath() : canonical;
}

/// A folder, a device or a pipe must not give way to a file, nor one that the user has protected.
bool isReplaceable(const QString &target, QString *reason)
{
    const QFileInfo info(target);
    if (!info.exists()) {
        return true;
    }
    if (!info.isFile()) {
        *reason = QStringLiteral("it is no file");
    } else if (!info.isWritable()) {
        *reason = QString::fromLocal8Bit(std::strerror(EACCES));
    }
    return info.isFile() && info.isWritable();
}

} // namespace

StagedFile::StagedFile(const QString &target)
    : m_strTarget(target)
{
    const QFileInfo real(realTarget(target));
    do {
        m_strPath = real.dir().filePath(
            QStringLiteral(".%1.%2.part")
                .arg(real.fileName())
                .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0')));
    } while (QFileInfo::exists(m_strPath));
}

StagedFile::~StagedFile()
{
    QFile::remove(m_strPath);
}

bool StagedFile::write(const QByteArray &bytes, QString *reason)
{
    if (!isReplaceable(m_strTarget, reason)) {
        return false;
    }
    QFile file(m_strPath);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    if (!written) {
        *reason = file.errorString();
    }
    return written;
}

bool StagedFile::commit(QString *reason)
{
    const QString target = realTarget(m_strTarget);
    if (!isReplaceable(target, reason)) {
        return false;
    }
    QFile file(m_strPath);
    // On the disk before it has the name that is relied on.
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && ::fsync(file.handle()) == 0) {
        if (QFileInfo::exists(target)) {
            file.setPermissions(QFile::permissions(target));
        }
        file.close();
        if (std::rename(QFile::encodeName(m_strPath).constData(),
                        QFile::encodeName(target).constData())
            == 0) {
            return true;
        }
    }
    *reason = file.error() == QFileDevice::NoError ? QString::fromLocal8Bit(std::strerror(errno))
                                                   : file.errorString();
    return false;
}
