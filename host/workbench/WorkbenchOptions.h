#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <QString>
#include <QStringList>

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
        return !dumpFile.isEmpty() || !readName.isEmpty() || !screenshotFile.isEmpty();
    }
};
