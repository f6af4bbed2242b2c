#pragma once

#include <QPalette>

namespace KitPalette {

/// The palette of the dark look.
QPalette make();

} // namespace KitPalette
