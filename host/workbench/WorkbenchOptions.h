#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// A write or a command of the command line.
struct EditJob
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

/// A job with a feature file of the command line.
struct FeatureFileJob
{
    enum class Kind { Import, Export, ExportBag, Compare };
    Kind kind = Kind::Import;
    QString file;
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
    QVector<EditJob> featureJobs; ///< in the order given
    QVector<FileJob> fileJobs; ///< in the order given
    bool files = false; ///< print what files there are
    QVector<FeatureFileJob> featureFileJobs; ///< in the order of their kinds
    QString secondFile; ///< the first one's partner in a comparison of two files; nothing is opened
    QString bagFile; ///< a bag to split; nothing is opened
    QString bagFolder;
    bool yes = false; ///< the answer to every question
    QString dumpFile; ///< "-" is the standard output
    QString readName;
    QString screenshotFile;

    /// How many devices are named, of whatever kind.
    int namedDevices() const
    {
        return devices.size() + descriptions.size() + gigeAddresses.size() + usbIds.size();
    }
    /// Whether a device is compared with a file, which has exit codes of its own.
    bool isComparison() const
    {
        return !featureFileJobs.isEmpty()
            && featureFileJobs.last().kind == FeatureFileJob::Kind::Compare;
    }
    /// A job that needs no display and ends by itself.
    bool isHeadless() const
    {
        return !featureJobs.isEmpty() || !featureFileJobs.isEmpty() || !fileJobs.isEmpty() || files
            || !dumpFile.isEmpty() || !readName.isEmpty() || !screenshotFile.isEmpty();
    }
};
