#pragma once

#include <QColor>

/// The colours of the dark look; each stands here once.
namespace KitColour {

constexpr QRgb ACCENT = 0xFFF76900;
constexpr QRgb ACCENT_HOVER = 0xFFFF7F1F;
constexpr QRgb ACCENT_PRESSED = 0xFFD45A00;
constexpr QRgb ACCENT_DISABLED = 0xFF7D573A;

constexpr QRgb WINDOW = 0xFF3E4043;
constexpr QRgb WINDOW_DARK = 0xFF35373A; ///< title bars, headers
constexpr QRgb LINE = 0xFF27292C;
constexpr QRgb BASE = 0xFF2E3033; ///< behind what is edited
constexpr QRgb BASE_HOVER = 0xFF34373B;
constexpr QRgb BASE_DISABLED = 0xFF3A3C3F;
constexpr QRgb BASE_ALTERNATE = 0xFF33353A;
constexpr QRgb POPUP = 0xFF2B2D31;

constexpr QRgb BORDER = 0xFF626D84;
constexpr QRgb BORDER_HOVER = 0xFF8592AE;
constexpr QRgb BORDER_DISABLED = 0xFF4D5158;
constexpr QRgb FRAME = 0xFF565B66; ///< around windows and panels

constexpr QRgb BUTTON = 0xFF656B78;
constexpr QRgb BUTTON_HOVER = 0xFF747B8A;
constexpr QRgb BUTTON_PRESSED = 0xFF545963;
constexpr QRgb BUTTON_DISABLED = 0xFF4B505A;
constexpr QRgb BUTTON_BORDER = 0x33A6B2C9;

constexpr QRgb TEXT = 0xFFD1D1D1;
constexpr QRgb TEXT_BRIGHT = 0xFFF2F2F2;
constexpr QRgb TEXT_DISABLED = 0xFF7F8287;
constexpr QRgb TEXT_READ_ONLY = 0xFFA0A0A4; ///< values that are there to be read
constexpr QRgb TEXT_HINT = 0xFF9A9DA3; ///< placeholders
constexpr QRgb LINK = 0xFFFF9A4D;

constexpr QRgb ROW_HOVER = 0x1AA6B2C9;
constexpr QRgb ROW_SELECTED = 0x38A6B2C9;
constexpr QRgb ITEM_SELECTED = 0x66F76900; ///< in menus and lists that open

constexpr QRgb THUMB = 0xFF6A6F79;
constexpr QRgb THUMB_HOVER = 0xFF8C929D;

/// The colour with its alpha.
inline QColor of(QRgb rgb)
{
    return QColor::fromRgba(rgb);
}

} // namespace KitColour
