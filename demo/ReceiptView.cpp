#include "ReceiptView.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

constexpr int sideColumns = 3;    // of blank paper on either side of the text
constexpr int endLines = 2;       // of blank paper above and below
constexpr qreal markLines = 1.6;  // that a mark takes
constexpr int tearsAcross = 40;   // teeth of the torn edge
constexpr qreal tearDepth = 0.35; // of a line
constexpr int shadow = 3;
constexpr int outside = 12; // pixels around the paper

QString markText(const TReceiptLine &line)
{
    switch (line.Mark) {
    case TReceiptMark::Cut:
        return u"✂  coupe du papier"_s;
    case TReceiptMark::Drawer:
        return u"Tiroir-caisse ouvert"_s;
    case TReceiptMark::PageEnd:
        return u"fin de page"_s;
    case TReceiptMark::Unknown:
        return u"code inconnu : %1"_s.arg(line.Text());
    case TReceiptMark::None:
        break;
    }
    return line.Text();
}

// The font of the widget around, as a whole: a painter takes what a font leaves open from its widget's own.
QFont fontAround(const QWidget &widget)
{
    auto around = widget.parentWidget() ? widget.parentWidget()->font() : widget.font();
    around.setFamilies(around.families());
    return around;
}

QPainterPath tornPaper(const QRectF &paper, qreal depth)
{
    const qreal step = paper.width() / tearsAcross;
    QPainterPath path(paper.topLeft());
    for (int i = 1; i <= tearsAcross; ++i)
        path.lineTo(paper.left() + i * step, paper.top() + (i % 2 ? depth : 0));
    for (int i = tearsAcross; i >= 0; --i)
        path.lineTo(paper.left() + i * step, paper.bottom() - (i % 2 ? depth : 0));
    path.closeSubpath();
    return path;
}

} // namespace

ReceiptView::ReceiptView(QWidget *parent) : QWidget(parent)
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setAccessibleName(u"Ticket imprimé"_s);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::MinimumExpanding);
}

void ReceiptView::SetLines(QList<TReceiptLine> lines)
{
    m_lines = std::move(lines);
    QStringList texts;
    for (const auto &line : m_lines)
        texts << markText(line);
    setAccessibleDescription(texts.join(u'\n'));
    updateGeometry();
    update();
}

qreal ReceiptView::columnWidth() const
{
    return QFontMetricsF(font()).horizontalAdvance(u'0');
}

qreal ReceiptView::lineHeight() const
{
    return std::ceil(QFontMetricsF(font()).lineSpacing() * 1.15);
}

qreal ReceiptView::heightOf(const TReceiptLine &line) const
{
    return lineHeight() * (line.Mark == TReceiptMark::None ? 1 : markLines);
}

QSizeF ReceiptView::paperSize() const
{
    qreal height = 2 * endLines * lineHeight();
    for (const auto &line : m_lines)
        height += heightOf(line);
    return {columnWidth() * (PaperColumns + 2 * sideColumns), height};
}

QSize ReceiptView::sizeHint() const
{
    return paperSize().toSize() + QSize(2 * outside, 2 * outside);
}

void ReceiptView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

void ReceiptView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_lines.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.setFont(fontAround(*this));
        painter.drawText(rect().adjusted(outside, outside, -outside, -outside),
                         Qt::AlignCenter | Qt::TextWordWrap, u"L'imprimante virtuelle n'a rien imprimé."_s);
        return;
    }

    const auto size = paperSize();
    const QRectF paper(QPointF(std::round((width() - size.width()) / 2), outside), size);
    const auto shape = tornPaper(paper, lineHeight() * tearDepth);
    auto shade = palette().color(QPalette::Shadow);
    shade.setAlphaF(0.25F);
    painter.fillPath(shape.translated(shadow, shadow), shade);
    painter.fillPath(shape, palette().base());
    auto edge = palette().color(QPalette::Text);
    edge.setAlphaF(0.3F);
    painter.strokePath(shape, QPen(edge, 0.7));

    QRectF place(paper.left() + columnWidth() * sideColumns, paper.top() + lineHeight() * endLines,
                 columnWidth() * PaperColumns, lineHeight());
    for (const auto &line : m_lines) {
        place.setHeight(heightOf(line));
        line.Mark == TReceiptMark::None ? drawLine(painter, line, place) : drawMark(painter, line, place);
        place.translate(0, place.height());
    }
}

void ReceiptView::drawLine(QPainter &painter, const TReceiptLine &line, const QRectF &place) const
{
    const auto free = place.width() - columnWidth() * line.Columns();
    qreal x = place.left();
    if (line.Alignment & Qt::AlignRight)
        x += free;
    else if (line.Alignment & Qt::AlignHCenter)
        x += free / 2;
    painter.setPen(palette().color(QPalette::Text));
    for (const auto &span : line.Spans) {
        auto spanFont = font();
        spanFont.setBold(span.Bold);
        spanFont.setUnderline(span.Underlined);
        const qreal stretch = span.Wide ? 2 : 1;
        const auto width = columnWidth() * static_cast<qreal>(span.Text.size());
        painter.save();
        painter.setFont(spanFont);
        painter.translate(x, place.top());
        painter.scale(stretch, 1);
        painter.drawText(QRectF(0, 0, width + columnWidth(), place.height()),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, span.Text);
        painter.restore();
        x += width * stretch;
    }
}

void ReceiptView::drawMark(QPainter &painter, const TReceiptLine &line, const QRectF &place) const
{
    const auto text = markText(line);
    const bool isEvent = line.Mark == TReceiptMark::Drawer;
    auto markFont = fontAround(*this);
    markFont.setBold(isEvent);
    painter.setFont(markFont);
    const auto height = lineHeight() * 1.2;
    const auto width = QFontMetricsF(markFont).horizontalAdvance(text) + 2 * height;
    const QRectF label(place.center().x() - width / 2, place.center().y() - height / 2, width, height);
    if (!isEvent) {
        const auto color =
            palette().color(line.Mark == TReceiptMark::Unknown ? QPalette::Link : QPalette::PlaceholderText);
        const auto y = std::round(place.center().y()) + 0.5;
        painter.setPen(QPen(color, 1, Qt::DashLine));
        painter.drawLine(QPointF(place.left() - columnWidth() * sideColumns, y), QPointF(label.left(), y));
        painter.drawLine(QPointF(label.right(), y), QPointF(place.right() + columnWidth() * sideColumns, y));
        painter.setPen(color);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().highlight());
        painter.drawRoundedRect(label, height / 2, height / 2);
        painter.setPen(palette().color(QPalette::HighlightedText));
    }
    painter.drawText(label, Qt::AlignCenter, text);
}

} // namespace Shop
