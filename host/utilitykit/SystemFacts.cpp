#include "UtilityKit/VexaInterface.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>

QString VexaInterface::softwareVersion()
{
    return QStringLiteral(CLIENT_VERSION);
}

QString VexaInterface::programDataPath()
{
    QString folder = qEnvironmentVariable("VEXA_DATA_PATH");
    if (folder.isEmpty()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    }
    folder = QDir::cleanPath(QDir(folder).absolutePath());
    if (!QDir().mkpath(folder)) {
        qWarning("The data folder %s cannot be made.", qPrintable(folder));
    }
    return folder;
}

bool VexaInterface::IsDiskFull(const QString &path, qint64 bytesNeeded, bool *ok)
{
    // A file that is yet to be written lies on the disk of the nearest folder above it that exists.
    QFileInfo place(path);
    while (!path.isEmpty() && !place.exists() && !place.isRoot()) {
        place.setFile(place.absolutePath());
    }
    const QStorageInfo disk(place.absoluteFilePath());
    const bool known = !path.isEmpty() && disk.isValid() && disk.isReady();
    if (ok) {
        *ok = known;
    }
    return known && disk.bytesAvailable() < bytesNeeded;
}
