#include <Zelmar01/tasks/service/TimeZone.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

// Numbers of a compiled zone file are big-endian.
std::int64_t numberAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint64_t value = static_cast<unsigned char>(bytes[at]) & 0x80U ? ~std::uint64_t{0} : 0;
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return static_cast<std::int64_t>(value);
}

constexpr std::size_t headerSize = 44;

// One block of a zone file: where its parts lie, with times of 4 or 8 bytes.
struct TBlock
{
    std::size_t TimeSize, TimeCount, TypeCount, LeapCount;
    std::size_t Times, TypeOfTime, Types, End;
};

std::optional<TBlock> blockAt(std::string_view bytes, std::size_t at, std::size_t timeSize)
{
    if (bytes.size() < at + headerSize || bytes.substr(at, 4) != "TZif")
        return std::nullopt;
    const auto count = [&](std::size_t index) {
        return static_cast<std::size_t>(static_cast<std::uint32_t>(numberAt(bytes, at + 20 + index * 4, 4)));
    };
    TBlock block{timeSize, count(3), count(4), count(2), at + headerSize, 0, 0, 0};
    block.TypeOfTime = block.Times + block.TimeCount * timeSize;
    block.Types = block.TypeOfTime + block.TimeCount;
    block.End =
        block.Types + block.TypeCount * 6 + count(5) + block.LeapCount * (timeSize + 4) + count(1) + count(0);
    if (block.TypeCount == 0 || block.End > bytes.size())
        return std::nullopt;
    return block;
}

} // namespace

std::optional<TTimeZone> TTimeZone::FromZoneFile(std::string_view bytes)
{
    auto block = blockAt(bytes, 0, 4);
    if (!block)
        return std::nullopt;
    std::optional<TZoneRule> rule;
    if (bytes[4] >= '2') {
        // The second block says the same with times of 8 bytes, and a rule follows it.
        block = blockAt(bytes, block->End, 8);
        if (!block)
            return std::nullopt;
        const auto footer = bytes.substr(block->End);
        const auto end = footer.find('\n', 1);
        if (!footer.starts_with('\n') || end == footer.npos)
            return std::nullopt;
        if (end > 1) {
            rule = ParseZoneRule(footer.substr(1, end - 1));
            if (!rule)
                return std::nullopt;
        }
    }
    // Leap seconds would shift every instant.
    if (block->LeapCount != 0)
        return std::nullopt;

    const auto offsetOf = [&](std::size_t type) {
        return static_cast<std::int32_t>(numberAt(bytes, block->Types + type * 6, 4));
    };
    std::vector<TOffsetChange> changes;
    for (std::size_t i = 0; i < block->TimeCount; ++i) {
        const auto type = static_cast<unsigned char>(bytes[block->TypeOfTime + i]);
        const auto utc = numberAt(bytes, block->Times + i * block->TimeSize, block->TimeSize);
        if (type >= block->TypeCount || (i > 0 && utc <= changes.back().Utc))
            return std::nullopt;
        changes.push_back({utc, offsetOf(type)});
    }
    const auto lastInstant = DayFromCivil({LastYear, 1, 1}) * SecondsADay;
    if (!changes.empty() && changes.back().Utc > lastInstant)
        return std::nullopt;
    return TTimeZone(offsetOf(0), std::move(changes), rule);
}

} // namespace Zelmar01
