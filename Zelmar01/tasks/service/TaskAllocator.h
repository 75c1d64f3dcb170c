#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Zelmar01 {

/// An allocator that keeps account of its blocks and frees at its end what nobody freed.
class TTaskAllocator : public ITaskAllocator
{
public:
    void *Alloc(std::size_t size) override;
    /// A block that is not of this allocator is left alone.
    void Free(void *block) override;

    std::size_t BlockCount() const { return m_blocks.size(); }

private:
    std::unordered_map<void *, std::unique_ptr<std::byte[]>> m_blocks;
};

/// A copy of `text` with a NUL behind it, in a block; null when there is no memory.
char16_t *AllocText(ITaskAllocator &allocator, std::u16string_view text);

/// The content of a text block, which is freed; empty for null.
std::u16string TakeText(ITaskAllocator &allocator, char16_t *text);

} // namespace Zelmar01
