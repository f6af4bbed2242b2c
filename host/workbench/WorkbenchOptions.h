#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// A write or a command of the command line.
struct FeatureJob
{
    enum class Kind { Write, Run };
    Kind kind = Kind::Write;
    QString name;
    QString text; ///< the value of a write
};

/// A file of the device that the command line fetches or sends.
struct FileJob
{
    enum class Kind { Get, Put };
    Kind kind = Kind::Get;
    QString name; ///< entry of FileSelector, or its display name
    QString path; ///< of the host
};

/// What the command line asks for. Empty texts and -1 mean "not given".
struct WorkbenchOptions
{
    QStringList devices; ///< catalogue ids, in the order given
    QStringList descriptions; ///< files with a GenICam description
    SimulatorControl::MemoryPattern memoryPattern = SimulatorControl::MemoryPattern::Zero;
    QStringList gigeAddresses;
    QStringList usbIds;
    bool list = false;
    bool help = false;
    bool version = false;
    QString lintFile; ///< a description to check; nothing is opened
    QString language; ///< "ENG" or "CH"
    int userLevel = -1; ///< 0 guru, 1 expert, 2 beginner
    QVector<FeatureJob> featureJobs; ///< in the order given
    QVector<FileJob> fileJobs; ///< in the order given
    bool files = false; ///< print what files there are
    bool yes = false; ///< the answer to every question
    QString dumpFile; ///< "-" is the standard output
    QString readName;
    QString screenshotFile;

    /// How many devices are named, of whatever kind.
    int namedDevices() const
    {
        return devices.size() + descriptions.size() + gigeAddresses.size() + usbIds.size();
    }
    /// A job that needs no display and ends by itself.
    bool isHeadless() const
    {
        return !featureJobs.isEmpty() || !fileJobs.isEmpty() || files || !dumpFile.isEmpty()
            || !readName.isEmpty() || !screenshotFile.isEmpty();
    }
};
