#include "GridHeaders.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace Zelmar01 {

namespace {

constexpr int titleMargin = 4, indicatorWidth = 14;
constexpr float pressedShade = 0.92F;

} // namespace

QColor TFixedLook::TextOn(const QPalette &palette) const
{
    const auto text = Text.Resolved(palette);
    return Text.IsFixed() && Ground.IsFixed() ? text : WithContrast(text, GroundOn(palette));
}

void TFixedLook::Fill(QPainter &painter, const QRect &place, const QPalette &palette, bool isPressed) const
{
    const auto ground = GroundOn(palette);
    painter.fillRect(place, isPressed ? QColor::fromRgbF(ground.redF() * pressedShade,
                                                         ground.greenF() * pressedShade,
                                                         ground.blueF() * pressedShade)
                                      : ground);
    painter.setPen(WithContrast(ground, ground, 1.6));
    if (RowLines)
        painter.drawLine(place.bottomLeft(), place.bottomRight());
    if (ColLines)
        painter.drawLine(place.topRight(), place.bottomRight());
}

TTitleHeader::TTitleHeader(const TFixedLook &look, QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent), m_look(look)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(2 * titleMargin);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TTitleHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    QStyleOptionHeader option;
    initStyleOption(&option);
    initStyleOptionForIndex(&option, logicalIndex);
    painter->save();
    m_look.Fill(*painter, rect, palette(), option.state.testFlag(QStyle::State_Sunken));
    painter->setPen(m_look.TextOn(palette()));
    painter->setFont(font());
    const auto place = rect.adjusted(titleMargin, 0, -titleMargin, -1);
    painter->drawText(place, static_cast<int>(option.textAlignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                      QFontMetrics(font(), this).elidedText(option.text, Qt::ElideRight, place.width()));
    painter->restore();
}

QSize TTitleHeader::sectionSizeFromContents(int logicalIndex) const
{
    const auto text = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    return {fontMetrics().horizontalAdvance(text) + 2 * titleMargin + 1,
            fontMetrics().height() + 2 * titleMargin};
}

TIndicatorHeader::TIndicatorHeader(std::function<void(QPainter &, const QRect &)> paint, QWidget *parent)
    : QHeaderView(Qt::Vertical, parent), m_paint(std::move(paint))
{
}

QSize TIndicatorHeader::sizeHint() const
{
    return {indicatorWidth, 0};
}

void TIndicatorHeader::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    m_paint(painter, event->rect());
}

void TIndicatorHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit OnPress(event->pos().y(), event->modifiers());
}

} // namespace Zelmar01
