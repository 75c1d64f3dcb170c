#pragma once

#include <Zelmar01/tasks/TaskErrors.h>
#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <QString>

#include <utility>

namespace Zelmar01 {

/// A block that the service hands out, freed at the end.
template<class T>
class TServiceBlock
{
public:
    explicit TServiceBlock(ITaskAllocator &allocator) : m_allocator(allocator) {}
    ~TServiceBlock() { m_allocator.Free(m_block); }
    TServiceBlock(const TServiceBlock &) = delete;
    TServiceBlock &operator=(const TServiceBlock &) = delete;

    /// Where an operation puts it.
    T *&Out() { return m_block; }
    T *Get() const { return m_block; }

private:
    ITaskAllocator &m_allocator;
    T *m_block = nullptr;
};

/// A text of the service, unit by unit; empty for null.
inline QString TextOf(const char16_t *text)
{
    return text ? QStringView(text).toString() : QString();
}

/// What an operation answers that gives a text. Raises EOleSysError.
template<class Object, class Interface>
QString ReadText(ITaskService &service, Object &object, TTaskResult (Interface::*get)(char16_t *&))
{
    TServiceBlock<char16_t> text(service.Allocator());
    OleCheck(service, (object.*get)(text.Out()));
    return TextOf(text.Get());
}

/// The object under another interface. Raises EOleSysError.
template<class Interface>
std::shared_ptr<Interface> RequireInterface(ITaskService &service, ITaskObject &object)
{
    std::shared_ptr<Interface> found;
    OleCheck(service, QueryInterface(object, found));
    return found;
}

} // namespace Zelmar01
