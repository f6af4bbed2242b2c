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
    bool list = false;
    bool help = false;
    bool version = false;
    QString language; ///< "ENG" or "CH"
    int userLevel = -1; ///< 0 guru, 1 expert, 2 beginner
    QString dumpFile; ///< "-" is the standard output
    QString readName;
    QString screenshotFile;

    /// A job that needs no display and ends by itself.
    bool isHeadless() const
    {
        return !dumpFile.isEmpty() || !readName.isEmpty() || !screenshotFile.isEmpty();
    }
};
