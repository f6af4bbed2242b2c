#pragma once

#include "UtilityKit/VexaInterface.h"

/// What the host application sets for UtilityKit. Any thread.
namespace UtilityHost {

/// "ENG" or "CH"; anything else is "ENG". Kept between runs.
UTILITYKIT_API void setLanguage(const QString &language);
/// Whether this build carries a brand of its own (false) or none; lasts for the run.
UTILITYKIT_API void setNeutralVision(bool neutral);
/// From now on the settings start from their defaults and live in memory only: for tests and headless runs.
UTILITYKIT_API void useTransientSettings();

} // namespace UtilityHost
