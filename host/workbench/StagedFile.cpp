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
    QFile file(m_strPath);
    // On the disk before it has the name that is relied on.
    if (!QFileInfo(target).isDir() && file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)
        && ::fsync(file.handle()) == 0) {
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
