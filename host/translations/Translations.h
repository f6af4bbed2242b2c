#pragma once

class QCoreApplication;
class QString;

/// Swaps the application's words to a language, "CH" or "ENG" (any other text gives "ENG"): those of this project and
/// Qt's own, where Qt's are installed. Widgets hear of it by a LanguageChange event. GUI thread; texts may be looked
/// up on other threads meanwhile, and get either language.
void installLanguage(QCoreApplication &application, const QString &language);
