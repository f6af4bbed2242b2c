#include "ControlKit/CustomLabel.h"

#include "host/controlkit/BoxPainter.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

CustomLabel::CustomLabel(QWidget *parent)
    : QLabel(parent)
    , CustomQssHelper(this)
{
}

CustomLabel::CustomLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
    , CustomQssHelper(this)
{
}

CustomLabel::~CustomLabel() = default;

/// One line of plain text: what QLabel would cut.
bool CustomLabel::isElidable() const
{
    const QString content = text();
    const bool rich = textFormat() == Qt::RichText
        || (textFormat() == Qt::AutoText && Qt::mightBeRichText(content));
    return !content.isEmpty() && !wordWrap() && !rich && !content.contains(QLatin1Char('\n'))
        && textInteractionFlags() == Qt::LinksAccessibleByMouse && !buddy();
}

QString CustomLabel::shownText() const
{
    const int width = contentsRect().width() - 2 * margin() - qMax(0, indent());
    return fontMetrics().elidedText(text(), Qt::ElideRight, width);
}

QSize CustomLabel::minimumSizeHint() const
{
    constexpr int LEAST_CHARACTERS = 12;
    const QSize whole = QLabel::minimumSizeHint();
    const int least = LEAST_CHARACTERS * fontMetrics().horizontalAdvance(QLatin1Char('x'));
    return isElidable() ? QSize(qMin(whole.width(), least), whole.height()) : whole;
}

void CustomLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
}

bool CustomLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isElidable()
        && shownText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text().toHtmlEscaped(),
                           this);
        return true;
    }
    return QLabel::event(event);
}

void CustomLabel::paintEvent(QPaintEvent *event)
{
    const Custom::ItemStatus status = BoxPainter::statusOf(this);
    const CustomObject::Attributes *const attributes = cHasAttributes() ? &cAttributes() : nullptr;
    if (attributes) {
        QPainter painter(this);
        BoxLook look;
        look.borderWidth = 0;
        look.radius = 0;
        BoxPainter::apply(look, attributes, status);
        BoxPainter::draw(&painter, rect(), look);
    }
    if (!isElidable()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    painter.setFont(BoxPainter::font(font(), attributes, status));
    painter.setPen(BoxPainter::textColour(attributes, status, palette().color(foregroundRole())));
    const int side = margin();
    const int inset = qMax(0, indent());
    const bool right = alignment() & Qt::AlignRight;
    const QRect area = contentsRect().adjusted(side + (right ? 0 : inset), side,
                                               -side - (right ? inset : 0), -side);
    painter.drawText(
        area, int(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine,
        shownText());
}
