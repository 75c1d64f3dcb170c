#include <Zelmar01/tasks/DefaultTaskService.h>

#ifdef _WIN32
#include <Zelmar01/tasks/service/WindowsTaskService.h>
#else
#include <Zelmar01/tasks/service/store/JobStore.h>
#endif

namespace Zelmar01 {

std::shared_ptr<ITaskService> DefaultTaskService()
{
#ifdef _WIN32
    return std::make_shared<WindowsTaskService>();
#else
    return std::make_shared<TJobStore>();
#endif
}

} // namespace Zelmar01
