#pragma once

#include "ControlKit/ControlKitGlobal.h"
#include "ControlKit/Custom.h"

#include <QBrush>
#include <QColor>
#include <QString>

#include <memory>

class QWidget;

/// Style attributes of one widget by state. A mix-in beside the widget's Qt base: it repaints the widget when an
/// attribute changes; the kit's style draws it, no style sheet is involved. An attribute that was never set falls
/// back to that of the normal state, then to the style; what a disabled widget takes over that way is greyed.
/// GUI thread.
class CONTROLKIT_API CustomObject
{
public:
    /// `owner` is the widget that this object is a base of.
    explicit CustomObject(QWidget *owner);
    virtual ~CustomObject();

    void cSetFontColor(const QColor &colour, Custom::ItemStatus status = Custom::STATUS_NORMAL);
    /// Font size in pixels.
    void cSetFontSize(int pixels, Custom::ItemStatus status = Custom::STATUS_NORMAL);
    void cSetFontFamily(const QString &family, Custom::ItemStatus status = Custom::STATUS_NORMAL);
    void cSetBackgroundColor(const QBrush &brush,
                             Custom::ItemStatus status = Custom::STATUS_NORMAL);
    /// Path of an image or SVG that fills the widget.
    void cSetBackgroundImage(const QString &path,
                             Custom::ItemStatus status = Custom::STATUS_NORMAL);
    void cSetBorderColor(const QColor &colour, Custom::ItemStatus status = Custom::STATUS_NORMAL,
                         Custom::BorderSlot slot = Custom::BORDER_ALL);
    void cSetBorderWidth(int pixels, Custom::ItemStatus status = Custom::STATUS_NORMAL,
                         Custom::BorderSlot slot = Custom::BORDER_ALL);
    void cSetBorderRadius(int pixels, Custom::ItemStatus status = Custom::STATUS_NORMAL);
    /// Takes over all attributes of the other object.
    void cCopyAttribute(const CustomObject *source);

    class Attributes;
    /// For the kit's style and the kit's own widgets.
    const Attributes &cAttributes() const;
    /// Whether any attribute was ever set here.
    bool cHasAttributes() const;

protected:
    /// Called after every change, for widgets that hand attributes on to their parts.
    virtual void cAttributesChanged();

private:
    Q_DISABLE_COPY(CustomObject)
    Attributes &ownAttributes();
    void changed(Custom::ItemStatus status);

    QWidget *m_pOwner;
    std::unique_ptr<Attributes> m_pAttributes; ///< shared defaults until the first set
};
