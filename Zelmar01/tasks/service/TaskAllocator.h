#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// An allocator that keeps account of its blocks and frees at its end what nobody freed.
class TTaskAllocator : public ITaskAllocator
{
public:
    TTaskAllocator() = default;
    ~TTaskAllocator() override;
    TTaskAllocator(const TTaskAllocator &) = delete;
    TTaskAllocator &operator=(const TTaskAllocator &) = delete;

    void *Alloc(std::size_t size) override;
    void Free(void *block) override;

    std::size_t BlockCount() const { return m_count; }

private:
    // What stands in front of each block. They are in a ring, so that one that is left costs nothing but its
    // memory, however many there are.
    struct alignas(std::max_align_t) TLink
    {
        TLink *Before, *Behind;
    };

    TLink m_ring{&m_ring, &m_ring};
    std::size_t m_count = 0;
};

/// A copy of `text` with a NUL behind it, in a block; null when there is no memory.
char16_t *AllocText(ITaskAllocator &allocator, std::u16string_view text);

/// The content of a text block, which is freed; empty for null.
std::u16string TakeText(ITaskAllocator &allocator, char16_t *text);

} // namespace Zelmar01
