#include <Zelmar01/tasks/TaskSheets.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

TTaskSheet &currentSheet()
{
    static TTaskSheet sheet;
    return sheet;
}

} // namespace

TTaskSheet SetTaskSheet(TTaskSheet sheet)
{
    return std::exchange(currentSheet(), std::move(sheet));
}

std::intptr_t ShowTaskSheet(std::shared_ptr<ITaskService> service, const TPropertySheet &sheet)
{
    if (currentSheet())
        return currentSheet()(*service, sheet);
    const auto result = service->ShowSheet(sheet);
    if (result < 0)
        throw EInvalidOperation(Translate(
            "Zelmar01", "Le dialogue des propriétés d'une tâche n'est pas lié à cette application"));
    return result;
}

std::vector<std::shared_ptr<ITaskPage>> TaskPages(IProvideTaskPage &provider, TPageTypes pages)
{
    struct TKind
    {
        TPageType Type;
        TASKPAGE Page;
    };
    static constexpr TKind kinds[] = {
        {ptTask, TASKPAGE_TASK}, {ptSchedule, TASKPAGE_SCHEDULE}, {ptSettings, TASKPAGE_SETTINGS}};
    std::vector<std::shared_ptr<ITaskPage>> found;
    for (const auto &kind : kinds) {
        std::shared_ptr<ITaskPage> page;
        if (pages.testFlag(kind.Type))
            provider.GetPage(kind.Page, true, page);
        if (page)
            found.push_back(std::move(page));
    }
    return found;
}

} // namespace Zelmar01
