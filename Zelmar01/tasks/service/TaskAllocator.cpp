#include <Zelmar01/tasks/service/TaskAllocator.h>

#include <new>

namespace Zelmar01 {

void *TTaskAllocator::Alloc(std::size_t size)
try {
    auto block = std::make_unique<std::byte[]>(size);
    void *const address = block.get();
    m_blocks.emplace(address, std::move(block));
    return address;
} catch (const std::bad_alloc &) {
    return nullptr;
}

void TTaskAllocator::Free(void *block)
{
    m_blocks.erase(block);
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
