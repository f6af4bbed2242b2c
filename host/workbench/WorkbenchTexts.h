#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// The workbench's own words: keys "lang_workbench_..." of the context "QWorkbench".
inline QString workbenchText(const char *key)
{
    return QCoreApplication::translate("QWorkbench", key);
}

/// The same for a line of the message log, with its arguments; the log keeps it in the language of the program, see
/// retranslated().
QString loggedText(const char *key, const QStringList &arguments = QStringList());
/// A text of loggedText in the present language; any other text as it is. GUI thread.
QString retranslated(const QString &text);

/// A message of one line for the log: the title as a sentence or a heading before the text. Markup goes, if `isMarkup`.
QString messageLine(const QString &title, const QString &text, bool isMarkup);

/// Loads the workbench's words in "ENG" or "CH" in place of those loaded before. GUI thread.
void installWorkbenchTexts(const QString &language);
