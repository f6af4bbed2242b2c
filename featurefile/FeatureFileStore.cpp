#include "featurefile/FeatureFileStore.h"

#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFormat.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QTextStream>

namespace {

constexpr qint64 DISK_RESERVE = 1024;

bool write(const QString &path, QIODevice::OpenMode mode, const QString &text)
{
    QFile file(path);
    if (!file.open(mode)) {
        qCritical().noquote() << QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    // In the process's codec, whatever the declaration says.
    QTextStream stream(&file);
    stream << text;
    stream.flush();
    bool isWhole = stream.status() == QTextStream::Ok && file.flush();
    const QString error = file.errorString();
    file.close();
    const QFileInfo written(path);
    isWhole = isWhole && written.exists() && written.size() >= 1
        && !VexaInterface::IsDiskFull(path, DISK_RESERVE, nullptr);
    if (!isWhole) {
        qCritical().noquote()
            << QStringLiteral("%1 is not whole and is deleted: %2").arg(path, error);
        file.remove();
    }
    return isWhole;
}

} // namespace

bool FeatureFileStore::writeFile(const QString &path, const QString &text)
{
    return write(path, QIODevice::WriteOnly, text);
}

bool FeatureFileStore::appendToBag(const QString &path, const QString &serialNumber,
                                   const QString &text)
{
    static QMutex s_mutex;
    const QMutexLocker locker(&s_mutex);
    return write(path, QIODevice::WriteOnly | QIODevice::Append,
                 FeatureFileFormat::BAG_SERIAL_MARKER + serialNumber
                     + FeatureFileFormat::BAG_FILE_MARKER + text);
}
