#pragma once

#include <QCoreApplication>
#include <QString>

/// The workbench's own words: keys "lang_workbench_..." of the context "QWorkbench".
inline QString workbenchText(const char *key)
{
    return QCoreApplication::translate("QWorkbench", key);
}

/// Loads the workbench's words in "ENG" or "CH" in place of those loaded before. GUI thread.
void installWorkbenchTexts(const QString &language);
