#include "ControlKit/Custom.h"

#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/FileDialogs.h"

#include <QBoxLayout>
#include <QColor>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGradient>
#include <QGuiApplication>
#include <QLocale>
#include <QStringList>

namespace {

/// The first of the families that is installed, else what the application's font comes to.
QString firstInstalled(const QStringList &families)
{
    const QStringList installed = QFontDatabase().families();
    for (const QString &family : families) {
        if (installed.contains(family)) {
            return family;
        }
    }
    return QFontInfo(QGuiApplication::font()).family();
}

QString chineseFamily()
{
    static const QString s_family = firstInstalled(
        {QStringLiteral("Microsoft YaHei"), QStringLiteral("Noto Sans CJK SC"),
         QStringLiteral("Source Han Sans SC"), QStringLiteral("WenQuanYi Micro Hei")});
    return s_family;
}

QString englishFamily()
{
    static const QString s_family =
        firstInstalled({QStringLiteral("Segoe UI"), QStringLiteral("Noto Sans"),
                        QStringLiteral("Noto Sans CJK SC"), QStringLiteral("DejaVu Sans")});
    return s_family;
}

QString number(double value)
{
    return QLocale::c().toString(value, 'g', 6);
}

} // namespace

QString Custom::styleSheet(StyleSheetType type)
{
    Q_UNUSED(type)
    return QString(); // CustomStyle draws them all
}

QString Custom::globalFontFamily()
{
    return globalFontFamily(LANGUAGE_CURRENT);
}

QString Custom::globalFontFamily(Language language)
{
    const bool chinese = language == LANGUAGE_CHINESE
        || (language == LANGUAGE_CURRENT && VexaInterface::language(false) == QLatin1String("CH"));
    return chinese ? chineseFamily() : englishFamily();
}

QBoxLayout *Custom::createLayout(Qt::Orientation orientation)
{
    auto *const layout = new QBoxLayout(orientation == Qt::Horizontal ? QBoxLayout::LeftToRight
                                                                      : QBoxLayout::TopToBottom);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

QString Custom::color2String(const QColor &colour)
{
    return colour.name(QColor::HexArgb).toUpper();
}

QString Custom::gradient2String(const QGradient &gradient)
{
    if (gradient.type() != QGradient::LinearGradient) {
        return QString();
    }
    const auto &linear = static_cast<const QLinearGradient &>(gradient);
    QString text = QStringLiteral("qlineargradient(x1:%1, y1:%2, x2:%3, y2:%4")
                       .arg(number(linear.start().x()), number(linear.start().y()),
                            number(linear.finalStop().x()), number(linear.finalStop().y()));
    const QGradientStops stops = linear.stops();
    for (const QGradientStop &stop : stops) {
        text += QStringLiteral(", stop:%1 %2").arg(number(stop.first), color2String(stop.second));
    }
    return text + QLatin1Char(')');
}

QString Custom::getSaveFileName(QWidget *parent, const QString &title, const QString &path,
                                const QString &filter, const QString &defaultSuffix)
{
    return FileDialogs::saveFile(parent, title, path, filter, defaultSuffix);
}
