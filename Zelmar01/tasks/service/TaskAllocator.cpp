#include <Zelmar01/tasks/service/TaskAllocator.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace Zelmar01 {

TTaskAllocator::~TTaskAllocator()
{
    while (m_ring.Behind != &m_ring)
        Free(m_ring.Behind + 1);
}

void *TTaskAllocator::Alloc(std::size_t size)
{
    void *const memory = size <= SIZE_MAX - sizeof(TLink) ? std::malloc(sizeof(TLink) + size) : nullptr;
    if (!memory)
        return nullptr;
    auto *const link = new (memory) TLink{m_ring.Before, &m_ring};
    link->Before->Behind = link->Behind->Before = link;
    ++m_count;
    return link + 1;
}

void TTaskAllocator::Free(void *block)
{
    if (!block)
        return;
    auto *const link = static_cast<TLink *>(block) - 1;
    link->Before->Behind = link->Behind;
    link->Behind->Before = link->Before;
    --m_count;
    std::free(link);
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
