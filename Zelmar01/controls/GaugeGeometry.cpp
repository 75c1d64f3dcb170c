#include <Zelmar01/controls/GaugeGeometry.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Zelmar01 {

namespace {

int toInt(std::int64_t value)
{
    using TLimits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, TLimits::min(), TLimits::max()));
}

int partOf(int length, int percent)
{
    return toInt(std::int64_t(length) * percent / 100);
}

} // namespace

int GaugePercent(int min, int max, int progress)
{
    const auto span = std::int64_t(max) - min;
    return span == 0 ? 0 : toInt((std::int64_t(progress) - min) * 100 / span);
}

TGaugeRect HorizontalBar(const TGaugeRect &rect, int percent)
{
    const int filled = std::min(partOf(rect.BarWidth(), percent), rect.BarWidth());
    return filled > 0 ? TGaugeRect{rect.Left, rect.Top, filled, rect.BarHeight()} : TGaugeRect{};
}

TGaugeRect VerticalBar(const TGaugeRect &rect, int percent)
{
    const int height = rect.BarHeight();
    const int filled = std::clamp(partOf(height, percent), 0, std::max(0, height - 1));
    return {rect.Left, height - filled, rect.BarWidth(), height};
}

} // namespace Zelmar01
