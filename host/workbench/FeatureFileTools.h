#pragma once

#include <QString>

/// Jobs with feature files that need no device. They print to the standard output, and what is wrong to the standard
/// error, and return the program's exit code.
namespace FeatureFileTools {

enum CompareCode { COMPARE_SAME = 0, COMPARE_DIFFERENT = 1, COMPARE_TROUBLE = 2 };

/// A line for each value that differs: an empty cell, its name, the value in each file, "/" where it has none.
int compareFiles(const QString &first, const QString &second);
/// Puts every record of a bag in a file of its own in this folder, which is made; a line for each with file, serial
/// number and model. Nothing is written when one record is no feature file. 0 or 1.
int splitBag(const QString &bag, const QString &folder);

} // namespace FeatureFileTools
