#include <Zelmar01/tasks/service/store/JobStore.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/JobPage.h>
#include <Zelmar01/tasks/service/store/StoreContext.h>
#include <Zelmar01/tasks/service/store/StoredScheduler.h>

#include <cerrno>
#include <chrono>

namespace Zelmar01 {

namespace {

TSeconds systemNow()
{
    using namespace std::chrono;
    return floor<seconds>(system_clock::now()).time_since_epoch().count();
}

} // namespace

TJobStore::TJobStore(TJobStoreOptions options)
{
    std::error_code error;
    auto folder =
        options.Folder.empty() ? DefaultJobFolder() : std::filesystem::absolute(options.Folder, error);
    m_context = std::make_shared<TStoreContext>(
        TJobFolder(folder.lexically_normal()), std::move(options.Runner),
        options.Now ? std::move(options.Now) : systemNow,
        options.Zone ? std::move(options.Zone) : std::function<TTimeZone()>(TTimeZone::System));
}

const std::filesystem::path &TJobStore::Folder() const
{
    return m_context->Folder.Path();
}

TServiceStart TJobStore::StartScheduler()
{
    return {};
}

TTaskResult TJobStore::CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler)
{
    const auto result = m_context->Folder.Create();
    if (Succeeded(result))
        scheduler = std::make_shared<TStoredScheduler>(m_context);
    return result;
}

ITaskAllocator &TJobStore::Allocator()
{
    return m_context->Allocator;
}

std::intptr_t TJobStore::ShowSheet(const TPropertySheet &sheet)
{
    return JobSheet() ? JobSheet()(sheet) : -1;
}

std::string TJobStore::DescribeResult(TTaskResult result)
{
    auto text = ResultText(result);
    return text.empty() ? Filled(Translate("Zelmar01", "Erreur %1"), {ResultName(result)}) : text;
}

TSystemCause TJobStore::ExplainResult(TTaskResult result)
{
    if (result != TaskResult::ServiceNotInstalled)
        return {};
    const auto runner = FindJobRunner(m_context->Runner);
    if (runner.empty())
        return {0,
                Translate("Zelmar01",
                          "Le programme zelmar01-job-runner, qui exécute les tâches, est introuvable"),
                Translate("Zelmar01",
                          "mettre zelmar01-job-runner à côté de ce programme ou dans un dossier du "
                          "PATH, ou indiquer son chemin par ZELMAR01_JOB_RUNNER")};
    std::error_code error;
    if (exists(runner, error)) // the result is an old one, from the job's file
        return {};
    auto cause = CauseFromErrno(ENOENT, runner.string());
    cause.Remedy = m_context->Runner.empty()
                       ? Translate("Zelmar01", "corriger ou retirer la variable ZELMAR01_JOB_RUNNER")
                       : Translate("Zelmar01", "y mettre le programme zelmar01-job-runner");
    return cause;
}

} // namespace Zelmar01
