#pragma once

#include <QCoreApplication>
#include <QString>

/// The workbench's own words: keys "lang_workbench_..." of the context "QWorkbench".
inline QString workbenchText(const char *key)
{
    return QCoreApplication::translate("QWorkbench", key);
}

/// A message of one line for the log: the title as a sentence or a heading before the text. Markup goes, if `isMarkup`.
QString messageLine(const QString &title, const QString &text, bool isMarkup);

/// Loads the workbench's words in "ENG" or "CH" in place of those loaded before. GUI thread.
void installWorkbenchTexts(const QString &language);
