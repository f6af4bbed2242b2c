#include "host/controlkit/KitPalette.h"

#include "host/controlkit/KitColours.h"

namespace {

struct RoleColour
{
    QPalette::ColorRole role;
    QRgb colour;
    QRgb disabled;
};

const RoleColour COLOURS[] = {
    {QPalette::Window, KitColour::WINDOW, KitColour::WINDOW},
    {QPalette::WindowText, KitColour::TEXT, KitColour::TEXT_DISABLED},
    {QPalette::Base, KitColour::BASE, KitColour::BASE_DISABLED},
    {QPalette::AlternateBase, KitColour::BASE_ALTERNATE, KitColour::BASE_DISABLED},
    {QPalette::Text, KitColour::TEXT, KitColour::TEXT_READ_ONLY},
    {QPalette::PlaceholderText, KitColour::TEXT_HINT, KitColour::TEXT_DISABLED},
    {QPalette::Button, KitColour::WINDOW, KitColour::WINDOW},
    {QPalette::ButtonText, KitColour::TEXT_BRIGHT, KitColour::TEXT_DISABLED},
    {QPalette::BrightText, 0xFFFFFFFF, KitColour::TEXT_DISABLED},
    {QPalette::Highlight, KitColour::ACCENT, KitColour::BUTTON_DISABLED},
    {QPalette::HighlightedText, 0xFFFFFFFF, KitColour::TEXT_DISABLED},
    {QPalette::ToolTipBase, KitColour::POPUP, KitColour::POPUP},
    {QPalette::ToolTipText, KitColour::TEXT_BRIGHT, KitColour::TEXT_BRIGHT},
    {QPalette::Link, KitColour::LINK, KitColour::TEXT_DISABLED},
    {QPalette::LinkVisited, KitColour::LINK, KitColour::TEXT_DISABLED},
    {QPalette::Light, KitColour::BUTTON, KitColour::BUTTON},
    {QPalette::Midlight, KitColour::FRAME, KitColour::FRAME},
    {QPalette::Mid, KitColour::WINDOW_DARK, KitColour::WINDOW_DARK},
    {QPalette::Dark, KitColour::LINE, KitColour::LINE},
    {QPalette::Shadow, 0xFF1C1D1F, 0xFF1C1D1F},
};

} // namespace

QPalette KitPalette::make()
{
    QPalette palette;
    for (const RoleColour &row : COLOURS) {
        palette.setColor(QPalette::Active, row.role, KitColour::of(row.colour));
        palette.setColor(QPalette::Inactive, row.role, KitColour::of(row.colour));
        palette.setColor(QPalette::Disabled, row.role, KitColour::of(row.disabled));
    }
    return palette;
}
