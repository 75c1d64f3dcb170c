#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// An allocator that keeps account of its blocks and frees at its end what nobody freed.
class TTaskAllocator : public ITaskAllocator
{
public:
    void *Alloc(std::size_t size) override;
    void Free(void *block) override;

    std::size_t BlockCount() const { return m_count; }

private:
    // A listing takes two blocks for each job and leaves one: a pool makes little of many small ones.
    std::pmr::unsynchronized_pool_resource m_memory;
    std::size_t m_count = 0;
};

/// A copy of `text` with a NUL behind it, in a block; null when there is no memory.
char16_t *AllocText(ITaskAllocator &allocator, std::u16string_view text);

/// The content of a text block, which is freed; empty for null.
std::u16string TakeText(ITaskAllocator &allocator, char16_t *text);

} // namespace Zelmar01
