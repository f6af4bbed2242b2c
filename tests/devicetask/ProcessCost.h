#pragma once

#include <QtGlobal>

#include <ctime>

/// What a piece of a test costs, from the start of its life on. Under a sanitizer, which keeps freed memory and walks
/// the stack at each allocation, neither number means anything and nothing is verified.
class ProcessCost
{
public:
    ProcessCost();
    static bool isMeasured();
    /// Fails the test when the process grew by more at any time since.
    void verifyGrowth(qint64 mebibytes) const;
    /// Fails the test when the process worked longer since, waiting not counted. Builds without optimization get
    /// a multiple.
    void verifyTime(qint64 milliseconds) const;

private:
    qint64 m_nMemory; ///< KiB
    std::clock_t m_nClock;
};
