#pragma once

#include <QAbstractItemView>
#include <QRect>

#include <algorithm>

namespace Zelmar01 {

/// By how much a view has to scroll down for a row to come where a hint wants it. `place` is the row's
/// rectangle in the viewport as it is, `height` that of the viewport; a row that does not fit shows its top.
inline int ScrollOf(const QRect &place, int height, QAbstractItemView::ScrollHint hint)
{
    const int room = height - place.height();
    int top = place.top();
    if (hint == QAbstractItemView::PositionAtTop || (hint == QAbstractItemView::EnsureVisible && top < 0))
        top = 0;
    else if (hint == QAbstractItemView::PositionAtBottom ||
             (hint == QAbstractItemView::EnsureVisible && top > room))
        top = room;
    else if (hint == QAbstractItemView::PositionAtCenter)
        top = room / 2;
    return place.top() - std::max(top, 0);
}

} // namespace Zelmar01
