#pragma once

#include "model/FeatureFileValues.h"

#include <QDomElement>
#include <QString>
#include <QStringList>

#include <optional>

class QCameraTask;

/// Which features a file carries, by name and by description.
namespace FeatureFileRules {

/// Whether a feature belongs to one device or chooses what a user set command works on: neither saved nor restored.
bool isIdentity(const QString &name);
/// Whether one of the eight sets of polling parameters stands behind it.
bool isPollingParameter(const QString &name);
/// Why its Representation or the exclusion list keeps a feature out of files; nothing for one that goes in.
std::optional<FeatureFileReason> exclusionOf(const QString &name, const QDomElement &element,
                                             const QStringList &exclusions);
/// Whether words in its name or its conditions keep a feature out of exports.
bool isLeftOutByWords(const QString &name, const QString &isImplemented,
                      const QString &isAvailable);
/// Whether its pIsAvailable asks for code quality, which "Quality1DEnable_Inq" tells of.
bool needsQuality(const QString &isAvailable);

/// The device's firmware, under the first name that it answers; false, with a log line, without one. `error` gets the
/// last failure.
bool readFirmware(QCameraTask *task, QString *tag, QString *version, int *error);

/// A failure of one access that leaves the rest of the job alone.
bool isHarmless(int error);
/// The device does not answer any more.
bool isGone(int error);

} // namespace FeatureFileRules
