#pragma once

namespace Zelmar01 {

/// Plain edges in pixels of the gauge; right and bottom do not belong to the rectangle.
struct TGaugeRect
{
    int Left = 0, Top = 0, Right = 0, Bottom = 0;

    /// What the bar and the text are measured by: one pixel more than the rectangle has.
    constexpr int BarWidth() const { return Right - Left + 1; }
    constexpr int BarHeight() const { return Bottom - Top + 1; }
    constexpr bool IsEmpty() const { return Right <= Left || Bottom <= Top; }

    bool operator==(const TGaugeRect &) const = default;
};

/// The percentage that `progress` is of the way from `min` to `max`, without its fraction; 0 for an empty
/// span. The bounds may be in any order and as far apart as integers can be.
int GaugePercent(int min, int max, int progress);

/// The filled part of a gauge. Its right and bottom edges are lengths that are not moved by the corner of
/// `rect`: beside a margin of one pixel, to which a length is one too long, the bar ends where `rect` does.
/// Without a margin the part may go beyond `rect` by a pixel, to be cut off by who fills it.
TGaugeRect HorizontalBar(const TGaugeRect &rect, int percent);
/// As high as the percentage says from the bottom up, but never up to the topmost line.
TGaugeRect VerticalBar(const TGaugeRect &rect, int percent);

} // namespace Zelmar01
