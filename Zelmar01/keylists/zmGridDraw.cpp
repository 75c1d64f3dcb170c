// How a grid looks.

#include "GridEditor.h"
#include "GridHeaders.h"

#include "GridModel.h"
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QApplication>
#include <QMetaMethod>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionButton>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr int cellMargin = 4;
constexpr double lineContrast = 1.4, boxContrast = 3;

// The marks of the indicator column, in a square of 8 points.
QPainterPath markOf(TDataSetState state)
{
    QPainterPath mark;
    switch (state) {
    case dsEdit: // the beam of a text cursor
        mark.addRect(3.25, 0, 1.5, 8);
        mark.addRect(1.5, 0, 5, 1.2);
        mark.addRect(1.5, 6.8, 5, 1.2);
        mark.setFillRule(Qt::WindingFill);
        break;
    case dsInsert: { // a star
        QPainterPath ray;
        ray.addRect(3.3, 0, 1.4, 8);
        for (const int angle : {0, 60, 120})
            mark.addPath(QTransform().translate(4, 4).rotate(angle).translate(-4, -4).map(ray));
        mark.setFillRule(Qt::WindingFill);
        break;
    }
    case dsBrowse:
    case dsInactive:
        mark.addPolygon(QPolygonF({{1.5, 0}, {6, 4}, {1.5, 8}}));
        mark.closeSubpath();
        break;
    }
    return mark;
}

void drawBox(QPainter &painter, const QRect &place, const QVariant &state, const QWidget &widget)
{
    QStyleOptionButton box;
    box.initFrom(&widget);
    const QSize size(widget.style()->pixelMetric(QStyle::PM_IndicatorWidth, &box, &widget),
                     widget.style()->pixelMetric(QStyle::PM_IndicatorHeight, &box, &widget));
    box.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, place);
    box.state = QStyle::State_Enabled | (state == Qt::Checked     ? QStyle::State_On
                                         : state == Qt::Unchecked ? QStyle::State_Off
                                                                  : QStyle::State_NoChange);
    widget.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, &widget);
    const auto &palette = widget.palette();
    painter.setPen(WithContrast(palette.color(QPalette::Mid), palette.color(QPalette::Base), boxContrast));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.rect.adjusted(0, 0, -1, -1));
}

} // namespace

bool TzmGrid::hasFocusInside() const
{
    const auto *focus = QApplication::focusWidget();
    return focus && (focus == this || isAncestorOf(focus));
}

TGridDrawState TzmGrid::drawStateOf(const QModelIndex &index) const
{
    TGridDrawState state;
    const bool isCurrent = index == currentIndex();
    const bool isMarked = hasFocusInside() || m_options & (dgAlwaysShowSelection | dgRowSelect);
    const bool severalChosen = m_options & dgMultiSelect && selectionModel()->selection().size() > 0;
    const bool isChosen =
        m_options & dgRowSelect || severalChosen ? selectionModel()->isSelected(index) : isCurrent;
    state.setFlag(gdSelected, isChosen && (isMarked || severalChosen));
    state.setFlag(gdFocused, isCurrent && hasFocusInside());
    return state;
}

void TzmGrid::paintCell(QPainter &painter, const QRect &place, const QModelIndex &index)
{
    auto cell = place;
    painter.setPen(
        WithContrast(palette().color(QPalette::Mid), palette().color(QPalette::Base), lineContrast));
    if (m_options & dgRowLines) {
        painter.drawLine(place.bottomLeft(), place.bottomRight());
        cell.setBottom(cell.bottom() - 1);
    }
    if (m_options & dgColLines) {
        painter.drawLine(place.topRight(), place.bottomRight());
        cell.setRight(cell.right() - 1);
    }
    auto &column = m_columns[index.column()];
    const auto state = drawStateOf(index);
    if (m_drawingFailed)
        return drawCell(painter, cell, index.row(), column, state);
    m_drawingFailed = true; // unless it comes back; a message for every cell would never end
    painter.save();
    ShowingExceptions([&] {
        DrawColumnCell(&painter, cell, index.row(), column, state);
        m_drawingFailed = false;
    });
    painter.restore();
}

void TzmGrid::DrawColumnCell(QPainter *canvas, const QRect &rect, int place, TGridColumn &column,
                             TGridDrawState state)
{
    drawCell(*canvas, rect, place, column, state);
    static const auto event = QMetaMethod::fromSignal(&TzmGrid::OnDrawColumnCell);
    if (!isSignalConnected(event))
        return;
    canvas->setClipRect(rect);
    emit OnDrawColumnCell(canvas, rect, place, &column, state);
}

// What the grid itself draws.
void TzmGrid::drawCell(QPainter &painter, const QRect &rect, int place, const TGridColumn &column,
                       TGridDrawState state)
{
    const auto group = !isEnabled()       ? QPalette::Disabled
                       : isActiveWindow() ? QPalette::Active
                                          : QPalette::Inactive;
    const auto ground = state & gdSelected                         ? QPalette::Highlight
                        : alternatingRowColors() && place % 2 != 0 ? QPalette::AlternateBase
                                                                   : QPalette::Base;
    painter.fillRect(rect, palette().brush(group, ground));
    painter.setPen(palette().color(group, state & gdSelected ? QPalette::HighlightedText : QPalette::Text));
    painter.setFont(font());
    if (m_defaultDrawing)
        DefaultDrawColumnCell(&painter, rect, place, column, state);
}

void TzmGrid::DefaultDrawColumnCell(QPainter *canvas, const QRect &rect, int place, const TGridColumn &column,
                                    TGridDrawState state)
{
    const auto index = m_model->index(place, column.Index());
    if (const auto box = index.data(Qt::CheckStateRole); box.isValid()) {
        const auto pen = canvas->pen();
        drawBox(*canvas, rect, box, *this);
        canvas->setPen(pen);
    } else if (const auto text = index.data().toString(); !text.isEmpty()) {
        const auto area = rect.adjusted(cellMargin, 0, -cellMargin, 0);
        const auto metrics = canvas->fontMetrics();
        const auto alignment = QStyle::visualAlignment(
            layoutDirection(), index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
        const bool fits = metrics.horizontalAdvance(text) <= area.width();
        canvas->drawText(area, static_cast<int>(alignment) | Qt::TextSingleLine,
                         fits ? text : metrics.elidedText(text, Qt::ElideRight, area.width()));
    }
    // Where the whole row is marked the current cell has a frame.
    if (state.testFlag(gdFocused) && selectionBehavior() == SelectRows) {
        auto pen = canvas->pen();
        const auto solid = pen;
        pen.setStyle(Qt::DotLine);
        canvas->setPen(pen);
        canvas->setBrush(Qt::NoBrush);
        canvas->drawRect(rect.adjusted(1, 1, -2, -2));
        canvas->setPen(solid);
    }
}

// A double click on the edge of a title: as wide as the texts in sight.
int TzmGrid::sizeHintForColumn(int column) const
{
    const auto [first, last] = rowsIn(viewport()->rect());
    int width = 0;
    for (int row = first; row <= last; ++row)
        width =
            std::max(width, fontMetrics().horizontalAdvance(m_model->index(row, column).data().toString()));
    return width + 2 * cellMargin + 1;
}

void TzmGrid::paintIndicator(QPainter &painter, const QRect &part)
{
    const auto [first, last] = rowsIn(part);
    const int width = verticalHeader()->viewport()->width();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int row = first; row <= last; ++row) {
        const QRect place(0, row * rowHeight() - verticalOffset(), width, rowHeight());
        m_look->Fill(painter, place, palette(), false);
        const bool isCurrent = row == currentIndex().row();
        const bool isChosen = m_options & dgMultiSelect && selectionModel()->isRowSelected(row, {});
        if (!isCurrent && !isChosen)
            continue;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(place.left() + (place.width() - 1 - 8) / 2.0,
                          place.top() + (rowHeight() - 1 - 8) / 2.0);
        if (isRightToLeft()) {
            painter.translate(8, 0);
            painter.scale(-1, 1);
        }
        QPainterPath dot;
        dot.addEllipse(2, 2, 4, 4);
        painter.fillPath(isCurrent ? markOf(DataSet()->State()) : dot, m_look->TextOn(palette()));
        painter.restore();
    }
}

} // namespace Zelmar01
