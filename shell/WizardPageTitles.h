#pragma once

#include <QtGlobal>

/// Titles of the host's wizard pages and labels of its views, for the host; no code of the module reads them. Context
/// "VexaFeatureWidget".
namespace WizardPageTitles {

constexpr const char *PAGES[] = {
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Device Connection"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Image Settings"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Algorithm Setting"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "I/O Control Settings"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Data Processing"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Communication Settings"),
    QT_TRANSLATE_NOOP("VexaFeatureWidget", "Config Management"),
};
constexpr const char *FEATURE_TREE = "Feature Tree";
constexpr const char *STATISTICS = "Statistics";

} // namespace WizardPageTitles
