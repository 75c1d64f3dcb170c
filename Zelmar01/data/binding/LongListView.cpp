#include <Zelmar01/data/binding/LongListView.h>

#include <Zelmar01/data/binding/RowScroll.h>

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace Zelmar01 {

TLongListView::TLongListView(QWidget *parent) : QListView(parent)
{
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
}

QModelIndex TLongListView::indexOf(int row) const
{
    return model()->index(row, modelColumn(), rootIndex());
}

int TLongListView::rowHeight() const
{
    if (m_rowHeight == 0 && count() > 0)
        m_rowHeight = std::max(sizeHintForIndex(indexOf(0)).height(), 1);
    return std::max(m_rowHeight, 1);
}

int TLongListView::rowsInPage() const
{
    return std::max(viewport()->height() / rowHeight(), 1);
}

QRect TLongListView::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != model() || index.column() != modelColumn())
        return {};
    return {0, index.row() * rowHeight() - verticalOffset(), viewport()->width(), rowHeight()};
}

QModelIndex TLongListView::indexAt(const QPoint &point) const
{
    const int y = point.y() + verticalOffset();
    const int row = y / rowHeight();
    return y >= 0 && row < count() && viewport()->rect().contains(point.x(), 0) ? indexOf(row)
                                                                                : QModelIndex();
}

int TLongListView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

void TLongListView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const auto place = visualRect(index);
    if (place.isNull())
        return;
    verticalScrollBar()->setValue(verticalOffset() + ScrollOf(place, viewport()->height(), hint));
}

// QListView's own would go through all rows.
void TLongListView::doItemsLayout()
{
    m_rowHeight = 0;
    QAbstractItemView::doItemsLayout();
}

void TLongListView::updateGeometries()
{
    auto *bar = verticalScrollBar();
    bar->setRange(0, std::max(count() * rowHeight() - viewport()->height(), 0));
    bar->setSingleStep(rowHeight());
    bar->setPageStep(viewport()->height());
    QAbstractItemView::updateGeometries();
}

void TLongListView::resizeEvent(QResizeEvent *event)
{
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void TLongListView::scrollContentsBy(int dx, int dy)
{
    scrollDirtyRegion(dx, dy);
    viewport()->scroll(dx, dy);
}

void TLongListView::rowsInserted(const QModelIndex &parent, int first, int last)
{
    QAbstractItemView::rowsInserted(parent, first, last);
    scheduleDelayedItemsLayout();
}

void TLongListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                const QList<int> &roles)
{
    if (topLeft.row() == bottomRight.row())
        return QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
    // It would ask for the place of each of them.
    const int first = std::max(topLeft.row(), verticalOffset() / rowHeight());
    const int last = std::min(bottomRight.row(), (verticalOffset() + viewport()->height()) / rowHeight());
    if (first <= last)
        QAbstractItemView::dataChanged(indexOf(first), indexOf(last), roles);
}

QSize TLongListView::viewportSizeHint() const
{
    return {QAbstractItemView::viewportSizeHint().width(), count() * rowHeight()};
}

QModelIndex TLongListView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int last = count() - 1;
    if (last < 0)
        return {};
    const int row = currentIndex().row();
    switch (action) {
    case MoveHome:
        return indexOf(0);
    case MoveEnd:
        return indexOf(last);
    case MovePageUp:
        return indexOf(std::max(row - rowsInPage(), 0));
    case MovePageDown:
        return indexOf(std::min(row + rowsInPage(), last));
    case MoveUp:
    case MovePrevious:
        return indexOf(std::max(row - 1, 0));
    case MoveDown:
    case MoveNext:
        return indexOf(std::min(row + 1, last));
    case MoveLeft:
    case MoveRight:
        break;
    }
    return indexOf(std::max(row, 0));
}

void TLongListView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags)
{
    const int last = count() - 1;
    const int top = std::max((rect.top() + verticalOffset()) / rowHeight(), 0);
    const int bottom = std::min((rect.bottom() + verticalOffset()) / rowHeight(), last);
    const auto rows = top <= bottom ? QItemSelection(indexOf(top), indexOf(bottom)) : QItemSelection();
    selectionModel()->select(rows, flags);
}

QRegion TLongListView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    for (const auto &range : selection) {
        const auto first = visualRect(range.topLeft()), last = visualRect(range.bottomRight());
        region += (first | last) & viewport()->rect();
    }
    return region;
}

void TLongListView::paintEvent(QPaintEvent *event)
{
    if (count() == 0)
        return;
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const auto state = option.state;
    const auto hovered =
        viewport()->underMouse() ? indexAt(viewport()->mapFromGlobal(QCursor::pos())) : QModelIndex();
    const bool hasFocus = this->hasFocus() || viewport()->hasFocus();
    const int first = std::max((event->rect().top() + verticalOffset()) / rowHeight(), 0);
    const int last = std::min((event->rect().bottom() + verticalOffset()) / rowHeight(), count() - 1);
    for (int row = first; row <= last; ++row) {
        const auto index = indexOf(row);
        const bool isEnabled =
            state.testFlag(QStyle::State_Enabled) && index.flags().testFlag(Qt::ItemIsEnabled);
        option.rect = visualRect(index);
        option.state = state;
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_Enabled, isEnabled);
        option.state.setFlag(QStyle::State_HasFocus, hasFocus && index == currentIndex());
        option.state.setFlag(QStyle::State_MouseOver, isEnabled && index == hovered);
        option.palette.setCurrentColorGroup(!isEnabled                             ? QPalette::Disabled
                                            : state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                   : QPalette::Inactive);
        option.features.setFlag(QStyleOptionViewItem::Alternate, alternatingRowColors() && row % 2 == 1);
        style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
        itemDelegateForIndex(index)->paint(&painter, option, index);
    }
}

bool TLongListView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const auto index = indexAt(help->pos());
        if (index.isValid() && !index.data(Qt::ToolTipRole).isValid() &&
            sizeHintForIndex(index).width() > viewport()->width()) {
            QToolTip::showText(help->globalPos(), index.data().toString().toHtmlEscaped(), viewport(),
                               visualRect(index));
            return true;
        }
    }
    return QListView::viewportEvent(event);
}

} // namespace Zelmar01
