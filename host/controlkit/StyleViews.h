#pragma once

#include <QStyleOption>

class QPainter;
class QWidget;

/// Rows and branches of item views, headers, tabs, menus, tool tips.
namespace StyleViews {

constexpr int MENU_ITEM_HEIGHT = 28;
constexpr int MENU_SEPARATOR_HEIGHT = 7;
constexpr int MENU_LEFT = 30; ///< column of check marks and icons
constexpr int MENU_RIGHT = 26;

void drawItemPanel(const QStyleOptionViewItem *option, QPainter *painter, const QWidget *widget);
void drawRowPanel(const QStyleOptionViewItem *option, QPainter *painter, const QWidget *widget);
void drawBranch(const QStyleOption *option, QPainter *painter);
void drawHeaderSection(const QStyleOptionHeader *option, QPainter *painter);
void drawTabShape(const QStyleOptionTab *option, QPainter *painter);
void drawMenuPanel(const QStyleOption *option, QPainter *painter);
void drawMenuItem(const QStyleOptionMenuItem *option, QPainter *painter);
void drawMenuBarItem(const QStyleOptionMenuItem *option, QPainter *painter);
void drawToolTipPanel(const QStyleOption *option, QPainter *painter);

} // namespace StyleViews
