#pragma once

#include "ControlKit/CustomObject.h"

#include <QMap>

#include <array>

/// What was set on one widget. Questions fall back to the normal state; an answer that is invalid, empty or
/// negative leaves the choice to the style.
class CustomObject::Attributes
{
public:
    struct Border
    {
        QColor colour;
        int width = -1;
    };
    struct State
    {
        QColor fontColour;
        QString family;
        QBrush background;
        QString image;
        Border border;
        int fontSize = -1;
        int radius = -1;
    };
    using Borders = std::array<Border, Custom::STATUS_COUNT>;

    /// Whether the state has a background of its own.
    bool hasOwnBackground(Custom::ItemStatus status) const
    {
        return states[status].background.style() != Qt::NoBrush || !states[status].image.isEmpty();
    }
    /// A colour of the normal state does not serve the disabled one: that is grey unless it was given a colour.
    QColor fontColour(Custom::ItemStatus status) const
    {
        const QColor &own = states[status].fontColour;
        return own.isValid() || status == Custom::STATUS_DISABLED
            ? own
            : states[Custom::STATUS_NORMAL].fontColour;
    }
    QString family(Custom::ItemStatus status) const
    {
        return fallBack(states[status].family, &State::family);
    }
    int fontSize(Custom::ItemStatus status) const
    {
        return states[status].fontSize > 0 ? states[status].fontSize
                                           : states[Custom::STATUS_NORMAL].fontSize;
    }
    QBrush background(Custom::ItemStatus status) const
    {
        const QBrush &own = states[status].background;
        return own.style() != Qt::NoBrush ? own : states[Custom::STATUS_NORMAL].background;
    }
    QString image(Custom::ItemStatus status) const
    {
        return fallBack(states[status].image, &State::image);
    }
    int radius(Custom::ItemStatus status) const
    {
        return states[status].radius >= 0 ? states[status].radius
                                          : states[Custom::STATUS_NORMAL].radius;
    }
    Border border(Custom::ItemStatus status, int slot = Custom::BORDER_ALL) const;

    std::array<State, Custom::STATUS_COUNT> states;
    QMap<int, Borders> parts; ///< borders of parts, by Custom::BorderSlot

private:
    QString fallBack(const QString &own, QString State::*member) const
    {
        return own.isEmpty() ? states[Custom::STATUS_NORMAL].*member : own;
    }
};
