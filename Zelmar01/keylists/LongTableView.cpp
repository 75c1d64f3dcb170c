#include <Zelmar01/keylists/LongTableView.h>

#include <Zelmar01/data/binding/RowScroll.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolTip>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr int rowGap = 6;

} // namespace

TLongTableView::TLongTableView(QWidget *parent) : QTableView(parent)
{
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setCornerButtonEnabled(false);
}

void TLongTableView::setModel(QAbstractItemModel *model)
{
    if (this->model())
        disconnect(this->model(), &QAbstractItemModel::rowsRemoved, this, nullptr);
    QTableView::setModel(model);
    if (model)
        connect(model, &QAbstractItemModel::rowsRemoved, this, [this] {
            updateVerticalBar();
            viewport()->update();
            verticalHeader()->viewport()->update();
        });
}

int TLongTableView::rowHeight() const
{
    if (m_rowHeight == 0)
        m_rowHeight = fontMetrics().height() + rowGap;
    return m_rowHeight;
}

int TLongTableView::rowsInPage() const
{
    return std::max(viewport()->height() / rowHeight(), 1);
}

int TLongTableView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

TLongTableView::TRows TLongTableView::rowsIn(const QRect &part) const
{
    return {std::max((part.top() + verticalOffset()) / rowHeight(), 0),
            std::min((part.bottom() + verticalOffset()) / rowHeight(), count() - 1)};
}

QRect TLongTableView::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != model() || isColumnHidden(index.column()))
        return {};
    return {columnViewportPosition(index.column()), index.row() * rowHeight() - verticalOffset(),
            columnWidth(index.column()), rowHeight()};
}

QModelIndex TLongTableView::indexAt(const QPoint &point) const
{
    const int y = point.y() + verticalOffset();
    const int row = y / rowHeight(), column = columnAt(point.x());
    return y >= 0 && row < count() && column >= 0 ? model()->index(row, column) : QModelIndex();
}

void TLongTableView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    executeDelayedItemsLayout();
    updateVerticalBar();
    const auto place = visualRect(index);
    if (place.isNull())
        return;
    verticalScrollBar()->setValue(verticalOffset() + ScrollOf(place, viewport()->height(), hint));

    auto *bar = horizontalScrollBar();
    const int before = isRightToLeft() ? place.right() - viewport()->width() + 1 : place.left();
    const int behind = isRightToLeft() ? place.left() : place.right() - viewport()->width() + 1;
    const int shift = (isRightToLeft() ? before > 0 : before < 0)   ? before
                      : (isRightToLeft() ? behind < 0 : behind > 0) ? behind
                                                                    : 0;
    // A column wider than the view shows its beginning.
    const int move = place.width() > viewport()->width() ? before : shift;
    bar->setValue(bar->value() + (isRightToLeft() ? -move : move));
}

void TLongTableView::updateVerticalBar()
{
    auto *bar = verticalScrollBar();
    bar->setSingleStep(rowHeight());
    bar->setPageStep(viewport()->height());
    bar->setRange(0, std::max(count() * rowHeight() - viewport()->height(), 0));
}

void TLongTableView::updateGeometries()
{
    const int value = verticalOffset(), most = verticalScrollBar()->maximum();
    {
        // QTableView would take the rows for none, scroll to the top and hide the bar.
        const QSignalBlocker quiet(verticalScrollBar());
        QTableView::updateGeometries();
        verticalScrollBar()->setRange(0, most);
        verticalScrollBar()->setValue(value);
    }
    updateVerticalBar();
}

void TLongTableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    m_rowHeight = 0;
    if (model())
        updateGeometries();
}

void TLongTableView::scrollContentsBy(int dx, int dy)
{
    if (dx != 0)
        horizontalHeader()->setOffset(horizontalScrollBar()->value());
    scrollDirtyRegion(dx, dy);
    viewport()->scroll(dx, dy);
    verticalHeader()->viewport()->scroll(0, dy);
}

void TLongTableView::rowsInserted(const QModelIndex &parent, int first, int last)
{
    QTableView::rowsInserted(parent, first, last);
    updateVerticalBar();
    viewport()->update();
    verticalHeader()->viewport()->update();
}

void TLongTableView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                 const QList<int> &)
{
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row) {
        const QRect place(0, row * rowHeight() - verticalOffset(), viewport()->width(), rowHeight());
        if (place.intersects(viewport()->rect()))
            viewport()->update(place);
    }
}

void TLongTableView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags)
{
    const auto area = rect.normalized();
    const auto [first, last] = rowsIn(area);
    const int left = columnAt(area.left()), right = columnAt(area.right());
    const auto cells = first <= last && left >= 0 && right >= 0
                           ? QItemSelection(model()->index(first, std::min(left, right)),
                                            model()->index(last, std::max(left, right)))
                           : QItemSelection();
    selectionModel()->select(cells, flags);
}

QRegion TLongTableView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    for (const auto &range : selection) {
        const QRect rows(0, range.top() * rowHeight() - verticalOffset(), viewport()->width(),
                         range.height() * rowHeight());
        region += rows & viewport()->rect();
    }
    return region;
}

void TLongTableView::paintEvent(QPaintEvent *event)
{
    if (count() == 0)
        return;
    QPainter painter(viewport());
    const auto [first, last] = rowsIn(event->rect());
    for (int column = 0; column < model()->columnCount(); ++column) {
        const QRect place(columnViewportPosition(column), 0, columnWidth(column), rowHeight());
        if (isColumnHidden(column) || place.right() < event->rect().left() ||
            place.left() > event->rect().right())
            continue;
        for (int row = first; row <= last; ++row)
            paintCell(painter, place.translated(0, row * rowHeight() - verticalOffset()),
                      model()->index(row, column));
    }
}

bool TLongTableView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const auto index = indexAt(help->pos());
        const auto text = index.data().toString();
        if (index.isValid() && fontMetrics().horizontalAdvance(text) > columnWidth(index.column()) - rowGap) {
            QToolTip::showText(help->globalPos(), text.toHtmlEscaped(), viewport(), visualRect(index));
            return true;
        }
    }
    return QTableView::viewportEvent(event);
}

} // namespace Zelmar01
