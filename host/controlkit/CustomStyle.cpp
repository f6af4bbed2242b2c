#include "host/controlkit/CustomStyle.h"

#include "ControlKit/Custom.h"
#include "host/controlkit/BoxPainter.h"
#include "host/controlkit/KitColours.h"
#include "host/controlkit/KitIcons.h"
#include "host/controlkit/KitPalette.h"
#include "host/controlkit/StyleBars.h"
#include "host/controlkit/StyleButtons.h"
#include "host/controlkit/StyleInputs.h"
#include "host/controlkit/StyleViews.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QTabBar>
#include <QTableView>
#include <QToolTip>
#include <QTreeWidget>

namespace {

constexpr int FONT_SIZE = 13;
constexpr int ROW_HEIGHT = 24;
constexpr int BUTTON_PADDING = 24;
constexpr int BUTTON_MIN_WIDTH = 64;
constexpr int CELL_MARGIN = 6; ///< beside the text of lists and tables

struct ArrowRow
{
    QStyle::PrimitiveElement element;
    const char *icon;
};

const ArrowRow ARROWS[] = {
    {QStyle::PE_IndicatorArrowUp, "arrow_up"},
    {QStyle::PE_IndicatorArrowDown, "arrow_down"},
    {QStyle::PE_IndicatorArrowLeft, "arrow_left"},
    {QStyle::PE_IndicatorArrowRight, "arrow_right"},
    {QStyle::PE_IndicatorButtonDropDown, "arrow_down"},
    {QStyle::PE_IndicatorHeaderArrow, nullptr},
};

/// True when the element was an arrow and is drawn.
bool drawArrow(QStyle::PrimitiveElement element, const QStyleOption *option, QPainter *painter)
{
    for (const ArrowRow &row : ARROWS) {
        if (row.element != element) {
            continue;
        }
        const char *icon = row.icon;
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
            header && !icon) {
            icon = header->sortIndicator & QStyleOptionHeader::SortUp ? "arrow_up" : "arrow_down";
        }
        const int size = qMin(16, qMin(option->rect.width(), option->rect.height()));
        const QRect place(option->rect.center() - QPoint(size / 2 - 1, size / 2 - 1),
                          QSize(size, size));
        const QRgb colour =
            option->state & QStyle::State_Enabled ? KitColour::TEXT : KitColour::TEXT_DISABLED;
        KitIcons::draw(painter, place, icon ? KitIcons::path(icon) : QString(),
                       KitColour::of(colour));
        return true;
    }
    return false;
}

/// A tree may have editors that draw their own text in line with that of the other rows.
bool isListOrTable(const QWidget *widget)
{
    return qobject_cast<const QListView *>(widget) || qobject_cast<const QTableView *>(widget)
        || qobject_cast<const QTreeWidget *>(widget);
}

/// Views claim of every focus that it came by a key.
bool showsFocus(const QStyleOption *option, const QWidget *widget)
{
    return (option->state & QStyle::State_KeyboardFocusChange)
        && (!widget
            || (!widget->inherits("QComboBoxListView")
                && widget->window()->testAttribute(Qt::WA_KeyboardFocusChange)));
}

} // namespace

CustomStyle::CustomStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

CustomStyle::~CustomStyle() = default;

void CustomStyle::install(QApplication &application)
{
    QApplication::setStyle(new CustomStyle);
    // Widgets may ask for it by name; where it is not installed they would get any font.
    QFont::insertSubstitution(QStringLiteral("Microsoft YaHei"),
                              Custom::globalFontFamily(Custom::LANGUAGE_CHINESE));
    QFont font(Custom::globalFontFamily());
    font.setPixelSize(FONT_SIZE);
    application.setFont(font);
}

QPalette CustomStyle::standardPalette() const
{
    return KitPalette::make();
}

void CustomStyle::polish(QApplication *application)
{
    QProxyStyle::polish(application);
    // Else icons of Qt's own widgets are drawn at scale 1 and enlarged.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QPalette palette = KitPalette::make();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

void CustomStyle::polish(QPalette &palette)
{
    palette = KitPalette::make();
}

void CustomStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QLineEdit *>(widget) || qobject_cast<QTabBar *>(widget)) {
        widget->setAttribute(Qt::WA_Hover);
    }
}

void CustomStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                QPainter *painter, const QWidget *widget) const
{
    if (drawArrow(element, option, painter)) {
        return;
    }
    const auto *const item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    const auto *const frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    switch (element) {
    case PE_PanelLineEdit:
        if (frame) {
            StyleInputs::drawLinePanel(frame, painter, widget);
        }
        return;
    case PE_FrameLineEdit:
    case PE_Frame:
        StyleInputs::drawTextFrame(option, painter, widget);
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        StyleButtons::drawCheckIndicator(option, painter);
        return;
    case PE_IndicatorRadioButton:
        StyleButtons::drawRadioIndicator(option, painter);
        return;
    case PE_PanelButtonTool:
        StyleButtons::drawToolPanel(option, painter);
        return;
    case PE_FrameFocusRect:
        if (showsFocus(option, widget)) {
            BoxPainter::drawFocus(painter, option->rect, 1, 2);
        }
        return;
    case PE_PanelItemViewItem:
        if (item) {
            StyleViews::drawItemPanel(item, painter, widget);
        }
        return;
    case PE_PanelItemViewRow:
        if (item) {
            StyleViews::drawRowPanel(item, painter, widget);
        }
        return;
    case PE_IndicatorBranch:
        StyleViews::drawBranch(option, painter);
        return;
    case PE_PanelMenu:
    case PE_FrameMenu:
        StyleViews::drawMenuPanel(option, painter);
        return;
    case PE_PanelTipLabel:
        StyleViews::drawToolTipPanel(option, painter);
        return;
    case PE_FrameTabBarBase:
    case PE_FrameDefaultButton:
    case PE_FrameStatusBarItem:
    case PE_FrameButtonBevel:
        return;
    case PE_FrameTabWidget:
        painter->fillRect(QRect(option->rect.left(), option->rect.top(), option->rect.width(), 1),
                          KitColour::of(KitColour::LINE));
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void CustomStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
        if (element == CE_PushButtonBevel) {
            StyleButtons::drawBevel(button, painter, widget);
            return;
        }
        if (element == CE_PushButtonLabel) {
            StyleButtons::drawLabel(button, painter, widget);
            return;
        }
        if (element == CE_CheckBox && StyleButtons::drawSwitch(button, painter, widget)) {
            return;
        }
        if (element == CE_CheckBox || element == CE_RadioButton) {
            // The indicator shows the focus; Fusion would frame the text as well.
            QStyleOptionButton plain = *button;
            plain.state &= ~State_HasFocus;
            QStyleOptionButton indicator = *button;
            const bool box = element == CE_CheckBox;
            indicator.rect = subElementRect(box ? SE_CheckBoxIndicator : SE_RadioButtonIndicator,
                                            button, widget);
            drawPrimitive(box ? PE_IndicatorCheckBox : PE_IndicatorRadioButton, &indicator, painter,
                          widget);
            plain.rect =
                subElementRect(box ? SE_CheckBoxContents : SE_RadioButtonContents, button, widget);
            QProxyStyle::drawControl(box ? CE_CheckBoxLabel : CE_RadioButtonLabel, &plain, painter,
                                     widget);
            return;
        }
    }
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        combo && element == CE_ComboBoxLabel) {
        StyleInputs::drawComboLabel(combo, painter, widget);
        return;
    }
    if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
        header && element == CE_HeaderSection) {
        StyleViews::drawHeaderSection(header, painter);
        return;
    }
    if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option);
        tab && element == CE_TabBarTabShape) {
        StyleViews::drawTabShape(tab, painter);
        return;
    }
    if (const auto *menu = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
        if (element == CE_MenuItem) {
            StyleViews::drawMenuItem(menu, painter);
            return;
        }
        if (element == CE_MenuBarItem) {
            StyleViews::drawMenuBarItem(menu, painter);
            return;
        }
    }
    if (const auto *progress = qstyleoption_cast<const QStyleOptionProgressBar *>(option); progress
        && element == CE_ProgressBarContents
        && StyleBars::drawProgressContents(progress, painter)) {
        return;
    }
    switch (element) {
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, KitColour::of(KitColour::WINDOW_DARK));
        return;
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, KitColour::of(KitColour::WINDOW_DARK));
        return;
    case CE_Splitter:
        StyleBars::drawSplitter(option, painter);
        return;
    case CE_ProgressBarGroove:
        StyleBars::drawProgressGroove(option, painter);
        return;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void CustomStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     QPainter *painter, const QWidget *widget) const
{
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        combo && control == CC_ComboBox) {
        StyleInputs::drawComboBox(combo, painter, widget);
    } else if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
               spin && control == CC_SpinBox) {
        StyleInputs::drawSpinBox(spin, painter, widget);
    } else if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
               bar && control == CC_ScrollBar) {
        StyleBars::drawScrollBar(bar, painter);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect CustomStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                  SubControl subControl, const QWidget *widget) const
{
    QRect part;
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        combo && control == CC_ComboBox) {
        part = StyleInputs::comboPart(combo, subControl);
    } else if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
               spin && control == CC_SpinBox) {
        part = StyleInputs::spinPart(spin, subControl);
    } else if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
               bar && control == CC_ScrollBar) {
        part = StyleBars::scrollPart(bar, subControl);
    } else {
        return QProxyStyle::subControlRect(control, option, subControl, widget);
    }
    return visualRect(option->direction, option->rect, part);
}

QRect CustomStyle::subElementRect(SubElement element, const QStyleOption *option,
                                  const QWidget *widget) const
{
    if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        frame && element == SE_LineEditContents) {
        return visualRect(frame->direction, frame->rect, StyleInputs::lineContents(frame));
    }
    QRect place = QProxyStyle::subElementRect(element, option, widget);
    if (element == SE_HeaderLabel) {
        place.setTop(option->rect.top());
        place.setBottom(option->rect.bottom());
    }
    const bool box = element == SE_CheckBoxIndicator || element == SE_RadioButtonIndicator;
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    // Letters stand a little below the middle of their line.
    return box && button && !button->text.isEmpty() ? place.translated(0, 1) : place;
}

QSize CustomStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                    const QSize &size, const QWidget *widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
    case CT_PushButton:
        result = QSize(qMax(BUTTON_MIN_WIDTH, size.width() + BUTTON_PADDING),
                       qMax(StyleInputs::MIN_HEIGHT, size.height() + 8));
        break;
    case CT_LineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth > 0) {
            result.setHeight(qMax(StyleInputs::MIN_HEIGHT, result.height()));
        }
        break;
    case CT_ComboBox:
    case CT_SpinBox:
        result.setHeight(qMax(StyleInputs::MIN_HEIGHT, result.height()));
        break;
    case CT_MenuItem:
        if (const auto *menu = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            const bool separator = menu->menuItemType == QStyleOptionMenuItem::Separator;
            const int shortcut =
                menu->text.contains(QLatin1Char('\t')) ? StyleViews::MENU_RIGHT : 0;
            result = QSize(size.width() + StyleViews::MENU_LEFT + StyleViews::MENU_RIGHT + shortcut,
                           separator ? StyleViews::MENU_SEPARATOR_HEIGHT
                                     : qMax(StyleViews::MENU_ITEM_HEIGHT, size.height() + 6));
        }
        break;
    case CT_MenuBarItem:
        result = size + QSize(20, 10);
        break;
    case CT_ItemViewItem:
        result.setHeight(qMax(ROW_HEIGHT, result.height()));
        break;
    case CT_TabBarTab:
        result.setHeight(qMax(30, result.height()));
        break;
    case CT_HeaderSection:
        // The margin is meant for the sides.
        result.setHeight(qMax(StyleInputs::MIN_HEIGHT, result.height() - 2 * CELL_MARGIN));
        break;
    default:
        break;
    }
    return result;
}

int CustomStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                             const QWidget *widget) const
{
    switch (metric) {
    case PM_DefaultFrameWidth:
        return 1;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return StyleButtons::INDICATOR;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 6;
    case PM_HeaderMargin:
        return CELL_MARGIN;
    case PM_FocusFrameHMargin:
        return isListOrTable(widget) ? CELL_MARGIN - 1
                                     : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_ScrollBarExtent:
        return StyleBars::SCROLL_EXTENT;
    case PM_ScrollBarSliderMin:
        return StyleBars::SCROLL_MIN_THUMB;
    case PM_SplitterWidth:
        return 7;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return 4;
    case PM_MenuHMargin:
        return 0;
    case PM_ToolTipLabelFrameWidth:
        return 5;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ButtonDefaultIndicator:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabOverlap:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int CustomStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_ComboBox_Popup: // a list below the box, which scrolls, not a menu over it
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ScrollView_FrameOnlyAroundContents:
    case SH_ScrollBar_LeftClickAbsolutePosition:
        return 0;
    case SH_ComboBox_ListMouseTracking:
        return 1;
    case SH_ToolTipLabel_Opacity:
        return 255;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QIcon CustomStyle::standardIcon(StandardPixmap icon, const QStyleOption *option,
                                const QWidget *widget) const
{
    switch (icon) {
    case SP_TitleBarCloseButton:
    case SP_DockWidgetCloseButton:
    case SP_LineEditClearButton:
        return QIcon(KitIcons::path("close"));
    case SP_ArrowLeft:
        return QIcon(KitIcons::path("arrow_left"));
    case SP_ArrowRight:
        return QIcon(KitIcons::path("arrow_right"));
    case SP_ArrowUp:
        return QIcon(KitIcons::path("arrow_up"));
    case SP_ArrowDown:
        return QIcon(KitIcons::path("arrow_down"));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}
