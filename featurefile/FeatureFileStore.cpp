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

FeatureFileFailure write(const QString &path, QIODevice::OpenMode mode, const QString &text,
                         QString *detail)
{
    QFile file(path);
    // What is no file, a pipe or a device, must not be waited for, and least of all be deleted.
    const bool isOther = QFileInfo::exists(path) && !QFileInfo(path).isFile();
    if (isOther || !file.open(mode)) {
        *detail = QStringLiteral("%1: %2").arg(
            path, isOther ? QStringLiteral("it is no file") : file.errorString());
        qCritical().noquote() << *detail;
        return FeatureFileFailure::Open;
    }
    // In the process's codec, whatever the declaration says.
    QTextStream stream(&file);
    stream << text;
    stream.flush();
    bool isWhole = stream.status() == QTextStream::Ok && file.flush();
    // A disk that has room for a part only is no error.
    const QString error = file.error() == QFileDevice::NoError ? QString() : file.errorString();
    file.close();
    const QFileInfo written(path);
    const bool isFull = VexaInterface::IsDiskFull(path, DISK_RESERVE, nullptr);
    if (isWhole && written.exists() && written.size() >= 1 && !isFull) {
        return FeatureFileFailure::None;
    }
    *detail = error.isEmpty() ? path : QStringLiteral("%1: %2").arg(path, error);
    qCritical().noquote() << QStringLiteral("%1 is not whole and is deleted: %2").arg(path, error);
    file.remove();
    return isFull ? FeatureFileFailure::DiskFull : FeatureFileFailure::Write;
}

} // namespace

FeatureFileFailure FeatureFileStore::writeFile(const QString &path, const QString &text,
                                               QString *detail)
{
    return write(path, QIODevice::WriteOnly, text, detail);
}

FeatureFileFailure FeatureFileStore::appendToBag(const QString &path, const QString &serialNumber,
                                                 const QString &text, QString *detail)
{
    static QMutex s_mutex;
    const QMutexLocker locker(&s_mutex);
    return write(path, QIODevice::WriteOnly | QIODevice::Append,
                 FeatureFileFormat::BAG_SERIAL_MARKER + serialNumber
                     + FeatureFileFormat::BAG_FILE_MARKER + text,
                 detail);
}
