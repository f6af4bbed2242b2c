#include "ControlKit/CustomObject.h"

#include "host/controlkit/CustomObjectAttributes.h"

#include <QPalette>
#include <QWidget>

namespace {

constexpr QPalette::ColorRole TEXT_ROLES[] = {QPalette::WindowText, QPalette::Text,
                                              QPalette::ButtonText};

bool isStatus(Custom::ItemStatus status)
{
    return status >= Custom::STATUS_NORMAL && status < Custom::STATUS_COUNT;
}

/// A size in pixels that fonts and pens can take.
int checkedPixels(int pixels)
{
    constexpr int LARGEST = 1000;
    return qBound(0, pixels, LARGEST);
}

void setTextColour(QWidget *widget, const QColor &colour, Custom::ItemStatus status)
{
    QPalette palette = widget->palette();
    for (const QPalette::ColorRole role : TEXT_ROLES) {
        if (status == Custom::STATUS_DISABLED) {
            palette.setColor(QPalette::Disabled, role, colour);
        } else {
            palette.setColor(QPalette::Active, role, colour);
            palette.setColor(QPalette::Inactive, role, colour);
        }
    }
    widget->setPalette(palette);
}

void setFont(QWidget *widget, const CustomObject::Attributes &attributes)
{
    QFont font = widget->font();
    const int size = attributes.fontSize(Custom::STATUS_NORMAL);
    const QString family = attributes.family(Custom::STATUS_NORMAL);
    if (size > 0) {
        font.setPixelSize(size);
    }
    if (!family.isEmpty()) {
        font.setFamily(family);
    }
    widget->setFont(font);
}

} // namespace

CustomObject::Attributes::Border CustomObject::Attributes::border(Custom::ItemStatus status,
                                                                  int slot) const
{
    const auto part = parts.constFind(slot);
    const bool isPart = slot != Custom::BORDER_ALL;
    if (isPart && part == parts.constEnd()) {
        return Border();
    }
    Border result = isPart ? part.value()[status] : states[status].border;
    const Border &normal =
        isPart ? part.value()[Custom::STATUS_NORMAL] : states[Custom::STATUS_NORMAL].border;
    if (!result.colour.isValid()) {
        result.colour = normal.colour;
    }
    if (result.width < 0) {
        result.width = normal.width;
    }
    return result;
}

CustomObject::CustomObject(QWidget *owner)
    : m_pOwner(owner)
{
}

CustomObject::~CustomObject() = default;

const CustomObject::Attributes &CustomObject::cAttributes() const
{
    static const Attributes s_unset;
    return m_pAttributes ? *m_pAttributes : s_unset;
}

bool CustomObject::cHasAttributes() const
{
    return bool(m_pAttributes);
}

void CustomObject::cAttributesChanged()
{
}

CustomObject::Attributes &CustomObject::ownAttributes()
{
    if (!m_pAttributes) {
        m_pAttributes = std::make_unique<Attributes>();
    }
    return *m_pAttributes;
}

void CustomObject::changed(Custom::ItemStatus status)
{
    if (status == Custom::STATUS_HOVER) {
        m_pOwner->setAttribute(Qt::WA_Hover);
    }
    m_pOwner->update();
    cAttributesChanged();
}

void CustomObject::cSetFontColor(const QColor &colour, Custom::ItemStatus status)
{
    if (!isStatus(status) || cAttributes().states[status].fontColour == colour) {
        return;
    }
    ownAttributes().states[status].fontColour = colour;
    if (colour.isValid()
        && (status == Custom::STATUS_NORMAL || status == Custom::STATUS_DISABLED)) {
        setTextColour(m_pOwner, colour, status);
    }
    changed(status);
}

void CustomObject::cSetFontSize(int pixels, Custom::ItemStatus status)
{
    if (!isStatus(status) || cAttributes().states[status].fontSize == pixels) {
        return;
    }
    ownAttributes().states[status].fontSize = checkedPixels(pixels);
    if (status == Custom::STATUS_NORMAL) {
        setFont(m_pOwner, *m_pAttributes);
    }
    changed(status);
}

void CustomObject::cSetFontFamily(const QString &family, Custom::ItemStatus status)
{
    if (!isStatus(status) || cAttributes().states[status].family == family) {
        return;
    }
    ownAttributes().states[status].family = family;
    if (status == Custom::STATUS_NORMAL) {
        setFont(m_pOwner, *m_pAttributes);
    }
    changed(status);
}

void CustomObject::cSetBackgroundColor(const QBrush &brush, Custom::ItemStatus status)
{
    if (isStatus(status) && cAttributes().states[status].background != brush) {
        ownAttributes().states[status].background = brush;
        changed(status);
    }
}

void CustomObject::cSetBackgroundImage(const QString &path, Custom::ItemStatus status)
{
    if (isStatus(status) && cAttributes().states[status].image != path) {
        ownAttributes().states[status].image = path;
        changed(status);
    }
}

void CustomObject::cSetBorderColor(const QColor &colour, Custom::ItemStatus status,
                                   Custom::BorderSlot slot)
{
    if (isStatus(status)) {
        Attributes &own = ownAttributes();
        (slot == Custom::BORDER_ALL ? own.states[status].border : own.parts[slot][status]).colour =
            colour;
        changed(status);
    }
}

void CustomObject::cSetBorderWidth(int pixels, Custom::ItemStatus status, Custom::BorderSlot slot)
{
    if (isStatus(status)) {
        Attributes &own = ownAttributes();
        (slot == Custom::BORDER_ALL ? own.states[status].border : own.parts[slot][status]).width =
            checkedPixels(pixels);
        changed(status);
    }
}

void CustomObject::cSetBorderRadius(int pixels, Custom::ItemStatus status)
{
    if (isStatus(status) && cAttributes().states[status].radius != pixels) {
        ownAttributes().states[status].radius = checkedPixels(pixels);
        changed(status);
    }
}

void CustomObject::cCopyAttribute(const CustomObject *source)
{
    if (!source || source == this) {
        return;
    }
    if (!source->m_pAttributes) {
        m_pAttributes.reset();
        changed(Custom::STATUS_NORMAL);
        return;
    }
    ownAttributes() = *source->m_pAttributes;
    for (const Custom::ItemStatus status : {Custom::STATUS_NORMAL, Custom::STATUS_DISABLED}) {
        const QColor colour = m_pAttributes->states[status].fontColour;
        if (colour.isValid()) {
            setTextColour(m_pOwner, colour, status);
        }
    }
    setFont(m_pOwner, *m_pAttributes);
    changed(Custom::STATUS_HOVER);
}
