#pragma once

#include <QStyle>
#include <QStyleOption>

class QPainter;

/// Scroll bars, splitters, progress bars.
namespace StyleBars {

constexpr int SCROLL_EXTENT = 12;
constexpr int SCROLL_MIN_THUMB = 28;

void drawScrollBar(const QStyleOptionSlider *option, QPainter *painter);
/// A bar of the kit has no arrow buttons: their parts are empty.
QRect scrollPart(const QStyleOptionSlider *option, QStyle::SubControl part);
void drawSplitter(const QStyleOption *option, QPainter *painter);
void drawProgressGroove(const QStyleOption *option, QPainter *painter);
/// False for a bar without an end, which needs an animation.
bool drawProgressContents(const QStyleOptionProgressBar *option, QPainter *painter);

} // namespace StyleBars
