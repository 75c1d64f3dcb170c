#include <Zelmar01/tasks/service/TaskAllocator.h>

#include <cstdint>
#include <new>

namespace Zelmar01 {

namespace {

// Memory is taken in whole units, which keeps every block aligned for anything; the first unit, in front of
// the block, tells how many they are.
struct alignas(std::max_align_t) TUnit
{
    std::size_t Count;
};

} // namespace

void *TTaskAllocator::Alloc(std::size_t size)
try {
    if (size > SIZE_MAX - 2 * sizeof(TUnit))
        return nullptr;
    const auto count = 1 + (size + sizeof(TUnit) - 1) / sizeof(TUnit);
    auto *const unit = new (m_memory.allocate(count * sizeof(TUnit))) TUnit{count};
    ++m_count;
    return unit + 1;
} catch (const std::bad_alloc &) {
    return nullptr;
}

void TTaskAllocator::Free(void *block)
{
    if (!block)
        return;
    auto *const unit = static_cast<TUnit *>(block) - 1;
    m_memory.deallocate(unit, unit->Count * sizeof(TUnit));
    --m_count;
}

char16_t *AllocText(ITaskAllocator &allocator, std::u16string_view text)
{
    auto *const block = static_cast<char16_t *>(allocator.Alloc((text.size() + 1) * sizeof(char16_t)));
    if (block) {
        text.copy(block, text.size());
        block[text.size()] = u'\0';
    }
    return block;
}

std::u16string TakeText(ITaskAllocator &allocator, char16_t *text)
{
    if (!text)
        return {};
    std::u16string copy = text;
    allocator.Free(text);
    return copy;
}

} // namespace Zelmar01
