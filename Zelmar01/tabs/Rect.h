#pragma once

namespace Zelmar01 {

struct TPoint
{
    int X = 0, Y = 0;

    bool operator==(const TPoint &) const = default;
};

/// A rectangle whose right and bottom edges do not belong to it. See QtRect.h for the steps to and from
/// QRect.
struct TRect
{
    int Left = 0, Top = 0, Right = 0, Bottom = 0;

    constexpr int Width() const { return Right - Left; }
    constexpr int Height() const { return Bottom - Top; }
    constexpr bool IsEmpty() const { return Right <= Left || Bottom <= Top; }

    constexpr TRect Moved(int x, int y) const { return {Left + x, Top + y, Right + x, Bottom + y}; }
    /// Grown by `x` on the left and the right and by `y` at the top and the bottom; shrunk where negative.
    constexpr TRect Grown(int x, int y) const { return {Left - x, Top - y, Right + x, Bottom + y}; }
    /// As in a mirror that shows the column 0 as the last one of `width`.
    constexpr TRect Mirrored(int width) const { return {width - Right, Top, width - Left, Bottom}; }

    constexpr bool Contains(TPoint point) const
    {
        return point.X >= Left && point.X < Right && point.Y >= Top && point.Y < Bottom;
    }
    constexpr bool Intersects(const TRect &other) const
    {
        return !IsEmpty() && !other.IsEmpty() && Left < other.Right && other.Left < Right &&
               Top < other.Bottom && other.Top < Bottom;
    }

    bool operator==(const TRect &) const = default;
};

} // namespace Zelmar01
