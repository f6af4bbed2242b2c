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
        return !featureJobs.isEmpty() || !dumpFile.isEmpty() || !readName.isEmpty()
            || !screenshotFile.isEmpty();
    }
};
