#include <Zelmar01/tasks/service/WindowsTaskService.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/tasks/service/WindowsCom.h>
#include <Zelmar01/tasks/service/WindowsMessages.h>
#include <Zelmar01/tasks/service/WindowsPage.h>
#include <Zelmar01/tasks/service/WindowsScheduler.h>
#include <Zelmar01/tasks/service/WindowsServiceSystem.h>

namespace Zelmar01 {

namespace {

class TComAllocator : public ITaskAllocator
{
public:
    void *Alloc(std::size_t size) override { return CoTaskMemAlloc(size); }
    void Free(void *block) override { CoTaskMemFree(block); }
};

} // namespace

WindowsTaskService::WindowsTaskService()
    : m_apartment(std::make_shared<TComApartment>()), m_allocator(std::make_unique<TComAllocator>())
{
}

WindowsTaskService::~WindowsTaskService() = default;

TServiceStart WindowsTaskService::StartScheduler()
{
    WindowsServiceSystem system;
    return StartTaskService(system);
}

TTaskResult WindowsTaskService::CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler)
{
    void *found = nullptr;
    const TTaskResult result = CoCreateInstance(SystemGuid(ClsidTaskScheduler), nullptr, CLSCTX_INPROC_SERVER,
                                                SystemGuid(ITaskScheduler::Iid), &found);
    if (Succeeded(result))
        scheduler = std::make_shared<WindowsScheduler>(
            HoldComObject(m_apartment, static_cast<::ITaskScheduler *>(found)));
    return result;
}

ITaskAllocator &WindowsTaskService::Allocator()
{
    return *m_allocator;
}

std::intptr_t WindowsTaskService::ShowSheet(const TPropertySheet &sheet)
{
    return ShowWindowsSheet(sheet);
}

std::string WindowsTaskService::DescribeResult(TTaskResult result)
{
    constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    constexpr DWORD french = MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH);
    const auto code = static_cast<std::uint32_t>(result);
    for (auto text : {SystemMessage(code, flags, french), ResultText(result), SystemMessage(code, flags)}) {
        text.erase(text.find_last_not_of(" \r\n") + 1);
        if (!text.empty())
            return text;
    }
    return Filled(Translate("Zelmar01", "Erreur %1"), {ResultName(result)});
}

} // namespace Zelmar01
