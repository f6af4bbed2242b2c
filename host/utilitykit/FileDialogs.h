#pragma once

#include "UtilityKit/VexaInterface.h"

#include <QString>

#include <functional>

/// The client's file dialogs; modal, GUI thread. They begin in the folder of the last choice when the caller names
/// none. The answer is empty when the user gave up or `parent` was destroyed meanwhile.
namespace FileDialogs {

UTILITYKIT_API QString openFile(QWidget *parent, const QString &title, const QString &path,
                                const QString &filter);
/// `defaultSuffix` is added to a name without one, before the user is asked about a file that exists.
UTILITYKIT_API QString saveFile(QWidget *parent, const QString &title, const QString &path,
                                const QString &filter, const QString &defaultSuffix = QString());
/// Lets a client answer saveFile() calls of this default suffix with another name than the chosen one; null takes the
/// hook away.
UTILITYKIT_API void setSaveNameHook(const QString &defaultSuffix,
                                    std::function<QString(const QString &chosen)> hook);

} // namespace FileDialogs
