#pragma once

#include "ControlKit/ControlKitGlobal.h"

#include <QProxyStyle>

class QApplication;

/// The dark look of the client, for the kit's widgets and for Qt's own. It draws the style attributes of a
/// CustomObject; no style sheet is involved. What it does not draw itself comes from Fusion in the dark palette.
class CONTROLKIT_API CustomStyle : public QProxyStyle
{
    Q_OBJECT
public:
    CustomStyle();
    ~CustomStyle() override;

    /// Makes this the application's style, with palette, tool tip palette and font.
    static void install(QApplication &application);

    QPalette standardPalette() const override;
    using QProxyStyle::polish;
    void polish(QApplication *application) override;
    void polish(QPalette &palette) override;
    void polish(QWidget *widget) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                         SubControl subControl, const QWidget *widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
};
