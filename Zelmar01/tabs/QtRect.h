#pragma once

#include <Zelmar01/tabs/Rect.h>

#include <QPoint>
#include <QRect>

namespace Zelmar01 {

// The only place where rectangles with exclusive edges meet Qt's.

constexpr QRect ToQRect(const TRect &rect)
{
    return QRect(rect.Left, rect.Top, rect.Width(), rect.Height());
}

constexpr TRect FromQRect(const QRect &rect)
{
    return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

constexpr QPoint ToQPoint(TPoint point)
{
    return {point.X, point.Y};
}

constexpr TPoint FromQPoint(QPoint point)
{
    return {point.x(), point.y()};
}

} // namespace Zelmar01
