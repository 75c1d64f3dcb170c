#include <Zelmar01/controls/zmLabel.h>

#include <QPainter>

namespace Zelmar01 {

namespace {

// Contrasts of the edge.
constexpr double apartFromText = 4, apartFromGround = 1.6;

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
    setFont_Color(clNavy);
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
