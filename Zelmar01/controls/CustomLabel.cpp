#include <Zelmar01/controls/CustomLabel.h>

#include "ControlsAccessible.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace Zelmar01 {

TCustomLabel::TCustomLabel(QWidget *parent) : QLabel(parent), m_placement(new TPlacement(this))
{
    InstallControlsAccessibility();
    setTextFormat(Qt::PlainText);
}

QString TCustomLabel::PlainCaption() const
{
    const auto caption = text();
    if (!m_showAccelChar || textFormat() != Qt::PlainText)
        return caption;
    QString plain;
    for (qsizetype i = 0; i < caption.size(); ++i)
        if (caption[i] != QLatin1Char('&') || (++i < caption.size()))
            plain += caption[i];
    return plain;
}

void TCustomLabel::setColor(TColor color)
{
    m_color = color;
    m_parentColor = false;
    update();
}

void TCustomLabel::resetColor()
{
    m_color = clBtnFace;
    setParentColor(true);
}

void TCustomLabel::setParentColor(bool parentColor)
{
    m_parentColor = parentColor;
    update();
}

void TCustomLabel::setTransparent(bool transparent)
{
    m_transparent = transparent;
    update();
}

void TCustomLabel::setFont_Color(TColor color)
{
    m_fontColor = color;
    update();
}

void TCustomLabel::setShowAccelChar(bool show)
{
    m_showAccelChar = show;
    update();
}

bool TCustomLabel::hasGround() const
{
    return !m_transparent && !m_parentColor && !m_color.IsNone();
}

QColor TCustomLabel::ground() const
{
    if (hasGround())
        return m_color.Resolved(palette());
    return GroundBehind(*this).color();
}

QColor TCustomLabel::readable(TColor color) const
{
    const auto resolved = (color.IsNone() ? clBtnText : color).Resolved(palette());
    return color.IsFixed() && hasGround() && m_color.IsFixed() ? resolved : WithContrast(resolved, ground());
}

QRect TCustomLabel::captionRect() const
{
    auto rect = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    const auto sides = QStyle::visualAlignment(layoutDirection(), alignment());
    // QLabel keeps half the width of an x from its frame unless told otherwise.
    const int apart = indent() >= 0      ? indent()
                      : frameWidth() > 0 ? fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2 - margin()
                                         : 0;
    if (apart > 0) {
        if (sides & Qt::AlignLeft)
            rect.setLeft(rect.left() + apart);
        if (sides & Qt::AlignRight)
            rect.setRight(rect.right() - apart);
        if (sides & Qt::AlignTop)
            rect.setTop(rect.top() + apart);
        if (sides & Qt::AlignBottom)
            rect.setBottom(rect.bottom() - apart);
    }
    return rect;
}

QRect TCustomLabel::captionBounds() const
{
    return fontMetrics().boundingRect(captionRect(), captionFlags(), text());
}

int TCustomLabel::captionFlags() const
{
    int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    if (wordWrap())
        flags |= Qt::TextWordWrap;
    if (m_showAccelChar)
        flags |= style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) ? Qt::TextShowMnemonic
                                                                                 : Qt::TextHideMnemonic;
    return flags;
}

QColor TCustomLabel::captionColor() const
{
    return isEnabled() ? readable(m_fontColor) : palette().color(QPalette::Disabled, QPalette::WindowText);
}

void TCustomLabel::paintCaption(QPainter &painter, const QColor &color, const QRect &place) const
{
    painter.setPen(color);
    painter.drawText(place, captionFlags(), text());
}

void TCustomLabel::paintText(QPainter &painter) const
{
    paintCaption(painter, captionColor(), captionRect());
}

bool TCustomLabel::event(QEvent *event)
{
    if (event->type() == GroundChange())
        update();
    return QLabel::event(event);
}

void TCustomLabel::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (hasGround())
        painter.fillRect(rect(), ground());
    if (textFormat() != Qt::PlainText || text().isEmpty()) {
        painter.end();
        QLabel::paintEvent(event);
        return;
    }
    drawFrame(&painter);
    paintText(painter);
}

} // namespace Zelmar01
