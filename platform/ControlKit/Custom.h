#pragma once

#include "ControlKit/ControlKitGlobal.h"

#include <QString>

class QBoxLayout;
class QColor;
class QGradient;
class QWidget;

/// Free functions and enumerations of the control kit. GUI thread.
namespace Custom {

/// State of a widget that a style attribute belongs to.
enum ItemStatus {
    STATUS_NORMAL = 0,
    STATUS_HOVER = 1,
    STATUS_PRESSED = 2,
    STATUS_DISABLED = 3,
    STATUS_COUNT = 4
};

/// Which border an attribute belongs to: the four edges of the widget, or a part that a widget draws itself.
enum BorderSlot {
    BORDER_ALL = 0, ///< all four edges
    BORDER_LARGE_BUTTON = 3, ///< CustomCalendar: its button
    BORDER_POPUP = 4 ///< CustomCalendar: the calendar that opens
};

/// Languages that a font family is asked for; LANGUAGE_CURRENT is the client's.
enum Language { LANGUAGE_CHINESE = 0, LANGUAGE_ENGLISH = 1, LANGUAGE_CURRENT = 2 };

/// Style sheets by number; one that the client's style already draws is empty.
enum StyleSheetType { STYLE_TEXT_EDIT = 4, STYLE_TABLE = 9, STYLE_TREE = 10 };

/// The style sheet of that number; empty when the client's style draws such widgets by itself.
CONTROLKIT_API QString styleSheet(StyleSheetType type);
/// Font family of the client's language, or of the one that is asked for.
CONTROLKIT_API QString globalFontFamily();
CONTROLKIT_API QString globalFontFamily(Language language);
/// A box layout without margins and spacing; the caller owns it until a widget or layout takes it.
CONTROLKIT_API QBoxLayout *createLayout(Qt::Orientation orientation);
/// "#AARRGGBB" of a colour, and the "qlineargradient(...)" text of a linear gradient, for style sheets.
CONTROLKIT_API QString color2String(const QColor &colour);
CONTROLKIT_API QString gradient2String(const QGradient &gradient);
/// Save dialog of the client, modal. `defaultSuffix` is added to a name without one. Empty when the user gave up.
CONTROLKIT_API QString getSaveFileName(QWidget *parent, const QString &title, const QString &path,
                                       const QString &filter, const QString &defaultSuffix);

} // namespace Custom
