#include <Zelmar01/controls/zmLabel.h>

#include <QPainter>

namespace Zelmar01 {

namespace {

// Contrasts of the edge.
constexpr double apartFromText = 4, apartFromGround = 1.6;

constexpr int shadowReach = 3; // of the label's own shadow

} // namespace

TzmLabel::TzmLabel(QWidget *parent) : TCustomLabel(parent)
{
    setParentColor(false);
    setShowAccelChar(false);
    QFont font(QStringLiteral("BenguiatGothic Medium"));
    font.setPixelSize(25);
    font.setBold(true);
    font.setItalic(true);
    setFont(font);
    setParentFont(false);
    TzmLabel::resetFont_Color();
}

void TzmLabel::setDepth(int depth)
{
    m_depth = qMax(0, depth);
    updateGeometry();
    update();
}

void TzmLabel::setLabelEffect(TLabelEffect effect)
{
    m_effect = effect;
    updateGeometry();
    update();
}

void TzmLabel::setShadowedColor(TColor color)
{
    m_shadowedColor = color;
    update();
}

void TzmLabel::setBorderStyle(TBorderStyle style)
{
    m_borderStyle = style;
    makeRoom();
}

void TzmLabel::setEdges(TEdges edges)
{
    m_edges = edges;
    makeRoom();
}

void TzmLabel::setShadow(bool shadow)
{
    m_shadow = shadow;
    makeRoom();
}

// The caption keeps away from lines and shadow.
void TzmLabel::makeRoom()
{
    const auto line = [this](TEdge side) { return m_edges.testFlag(side) ? lineWidth() : 0; };
    const int shadow = m_shadow ? shadowReach : 0;
    setContentsMargins(line(bLeft), line(bTop), line(bRight) + shadow, line(bBottom) + shadow);
    update();
}

QSize TzmLabel::edge() const
{
    return m_effect == leNone ? QSize(0, 0) : QSize(m_depth, m_depth);
}

QSize TzmLabel::sizeHint() const
{
    return TCustomLabel::sizeHint() + edge();
}

QSize TzmLabel::minimumSizeHint() const
{
    return TCustomLabel::minimumSizeHint() + edge();
}

void TzmLabel::paintEvent(QPaintEvent *event)
{
    TCustomLabel::paintEvent(event);
    QPainter painter(this);
    auto place = rect();
    if (m_shadow) {
        place.adjust(0, 0, -shadowReach, -shadowReach);
        const auto tone = WithContrast(ground(), ground(), apartFromGround);
        painter.fillRect(place.right() + 1, shadowReach, shadowReach, place.height(), tone);
        painter.fillRect(shadowReach, place.bottom() + 1, place.width(), shadowReach, tone);
    }
    const int line = lineWidth();
    const auto draw = [&](TEdge side, const QRect &where) {
        if (m_edges.testFlag(side))
            painter.fillRect(where, readable(clBtnShadow));
    };
    draw(bLeft, {place.left(), place.top(), line, place.height()});
    draw(bTop, {place.left(), place.top(), place.width(), line});
    draw(bRight, {place.right() - line + 1, place.top(), line, place.height()});
    draw(bBottom, {place.left(), place.bottom() - line + 1, place.width(), line});
}

void TzmLabel::paintText(QPainter &painter) const
{
    const auto text = captionColor();
    auto shadow = m_shadowedColor.Resolved(palette());
    // Too near to the text it would thicken the letters into blots; a tone of the ground takes its place.
    if (ContrastOf(shadow, text) < apartFromText)
        shadow = WithContrast(ground(), ground(), apartFromGround);
    const int reach = edge().width();
    const bool raised = m_effect == leRaised;
    auto place = captionRect();
    place = raised ? place.adjusted(reach, reach, 0, 0) : place.adjusted(0, 0, -reach, -reach);
    if (!m_shadowedColor.IsNone())
        for (int step = m_effect == leShadow ? reach : 1; step <= reach; ++step)
            paintCaption(painter, shadow, place.translated(QPoint(step, step) * (raised ? -1 : 1)));
    paintCaption(painter, text, place);
}

} // namespace Zelmar01
