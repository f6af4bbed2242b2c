#pragma once

#include <QString>
#include <QTextStream>

/// The table that a benchmark prints, and whether a figure was over its budget.
namespace BenchReport {

inline bool &isOverBudget()
{
    static bool s_bOver = false;
    return s_bOver;
}

inline void report(const QString &what, double measured, double budget, const QString &unit)
{
    const bool over = measured > budget;
    isOverBudget() = isOverBudget() || over;
    QTextStream(stdout) << what.leftJustified(66)
                        << QString::number(measured, 'f', 3).rightJustified(10) << ' '
                        << unit.leftJustified(6) << " (at most " << budget << ')'
                        << (over ? "  OVER" : "") << '\n';
}

} // namespace BenchReport
