#include "JobsTool.h"

#include "JobView.h"
#include "TickCommands.h"
#include "TickEngine.h"

#include <Zelmar01/tasks/service/store/JobStore.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

// What the store takes and does not do; a job that asks for it is told so.
constexpr struct
{
    std::uint32_t Flag;
    const char *Text;
} notHonoured[] = {
    {TaskFlag::Interactive, "interactive : le programme n'a pas d'écran"},
    {TaskFlag::StartOnlyIfIdle,
     "start-only-if-idle : la tâche démarre à son heure, ordinateur inactif ou non"},
    {TaskFlag::KillOnIdleEnd, "kill-on-idle-end : la tâche continue"},
    {TaskFlag::RestartOnIdleResume, "restart-on-idle-resume : sans effet"},
    {TaskFlag::SystemRequired, "system-required : l'ordinateur n'est pas réveillé"},
    {TaskFlag::RunIfConnectedToInternet, "run-if-connected-to-internet : sans effet"},
    {TaskFlag::RunOnlyIfLoggedOn, "run-only-if-logged-on : la tâche démarre aussi sans session ouverte"},
};

class TJobsTool
{
public:
    TJobsTool(const TJobsToolOptions &options, QTextStream &out, QTextStream &err)
        : m_options(options), m_out(out), m_err(err), m_store(storeOptions(options))
    {
        Require(m_store, m_store.CreateScheduler(m_scheduler),
                QString::fromStdString(m_store.Folder().string()));
    }

    TExit Run()
    {
        switch (m_options.Command) {
        case TJobsToolOptions::List:
            return list();
        case TJobsToolOptions::Show:
            return show();
        case TJobsToolOptions::Next:
            return next();
        case TJobsToolOptions::Create:
            return create();
        case TJobsToolOptions::Delete:
            Require(m_store, m_scheduler->Delete(name().c_str()), m_options.Name);
            return TExit::Done;
        case TJobsToolOptions::Run:
            return run();
        case TJobsToolOptions::Terminate:
            Require(m_store, opened()->Terminate(), m_options.Name);
            return TExit::Done;
        default:
            return TExit::WrongUsage;
        }
    }

private:
    static TJobStoreOptions storeOptions(const TJobsToolOptions &options)
    {
        TJobStoreOptions store;
        store.Folder = options.Folder.toStdString();
        return store;
    }

    std::u16string name() const { return m_options.Name.toStdU16String(); }

    template<class TJson>
    TExit answer(const TJson &json)
    {
        m_out << QJsonDocument(json).toJson(QJsonDocument::Indented);
        return TExit::Done;
    }

    std::shared_ptr<ITask> opened()
    {
        std::shared_ptr<ITaskObject> object;
        Require(m_store, m_scheduler->Activate(name().c_str(), ITask::Iid, object), m_options.Name);
        return std::dynamic_pointer_cast<ITask>(object);
    }

    TExit list()
    {
        QJsonArray jobs;
        for (const auto &file : JobNames(m_store, *m_scheduler)) {
            const TJobView job(m_store, *m_scheduler, file);
            if (job.Problem == TaskResult::FileNotFound || ((job.Flags & TaskFlag::Hidden) && !m_options.All))
                continue;
            jobs << job.Summary();
            if (m_options.Json)
                continue;
            const auto orNever = [](const QString &time) { return time.isEmpty() ? u"jamais"_s : time; };
            m_out << job.Name << u"\n  état : "_s << job.StatusText() << '\n';
            if (Succeeded(job.Problem))
                m_out << u"  prochaine exécution : "_s << orNever(IsoTime(job.NextRun))
                      << u"\n  dernière exécution : "_s << orNever(IsoTime(job.LastRun))
                      << (job.LastResultText().isEmpty() ? QString() : u", "_s + job.LastResultText())
                      << '\n';
        }
        if (m_options.Json)
            return answer(jobs);
        if (jobs.isEmpty())
            m_out << u"Aucune tâche dans "_s << QString::fromStdString(m_store.Folder().string()) << '\n';
        return TExit::Done;
    }

    TExit show()
    {
        const TJobView job(m_store, *m_scheduler, m_options.Name);
        Require(m_store, job.Problem, m_options.Name);
        const TJobFolder folder(m_store.Folder());
        const auto output = QString::fromStdString(
            TRunFiles(folder, job.File.section(u'/', -1).toStdU16String()).OutputFile().string());
        auto json = job.Everything();
        json.insert(u"output"_s, output);
        if (m_options.Json)
            return answer(json);
        QStringList flags;
        for (const auto &flag : FlagNames())
            if (job.Flags & flag.Bit)
                flags << QString::fromLatin1(flag.Name);
        const auto line = [&](const QString &label, const QString &value) {
            m_out << "  " << label << u" : "_s << (value.isEmpty() ? u"—"_s : value) << '\n';
        };
        m_out << job.Name << '\n';
        line(u"fichier"_s, job.File);
        line(u"programme"_s, job.Program);
        line(u"paramètres"_s, job.Parameters);
        line(u"dossier de travail"_s, job.Directory);
        line(u"commentaire"_s, job.Comment);
        line(u"auteur"_s, job.Creator);
        line(u"compte"_s, job.Account);
        line(u"durée maximale"_s,
             job.IsLimited() ? u"%1 min"_s.arg(double(job.MaxRunTime) / 60'000) : u"aucune"_s);
        line(u"indicateurs"_s, flags.join(u", "_s));
        line(u"état"_s, job.StatusText());
        line(u"prochaine exécution"_s, job.NextResult == TaskResult::Ok
                                           ? IsoTime(job.NextRun)
                                           : QString::fromStdString(m_store.DescribeResult(job.NextResult)));
        line(u"dernière exécution"_s, job.LastRun == SYSTEMTIME{} ? u"jamais"_s : IsoTime(job.LastRun));
        line(u"dernier résultat"_s, job.LastResultText());
        line(u"sortie du programme"_s, output);
        for (std::size_t i = 0; i < job.Triggers.size(); ++i)
            m_out << "  " << i + 1 << ". " << job.Triggers[i].Text << '\n';
        warn(job.Flags);
        return TExit::Done;
    }

    TExit next()
    {
        const auto task = opened();
        const auto from = m_options.From.isValid() ? m_options.From : QDateTime::currentDateTime();
        SYSTEMTIME begin;
        begin.wYear = static_cast<std::uint16_t>(from.date().year());
        begin.wMonth = static_cast<std::uint16_t>(from.date().month());
        begin.wDay = static_cast<std::uint16_t>(from.date().day());
        begin.wHour = static_cast<std::uint16_t>(from.time().hour());
        begin.wMinute = static_cast<std::uint16_t>(from.time().minute());
        begin.wSecond = static_cast<std::uint16_t>(from.time().second());
        auto count = static_cast<std::uint16_t>(m_options.Count);
        SYSTEMTIME *times = nullptr;
        const auto result = task->GetRunTimes(begin, nullptr, count, times);
        Require(m_store, result, m_options.Name);
        QStringList starts;
        for (std::uint16_t i = 0; times && i < count; ++i)
            starts << IsoTime(times[i]);
        m_store.Allocator().Free(times);
        if (m_options.Json)
            return answer(QJsonArray::fromStringList(starts));
        for (const auto &start : starts)
            m_out << start << '\n';
        if (starts.isEmpty())
            m_out << QString::fromStdString(m_store.DescribeResult(
                         result == TaskResult::False ? TaskResult::TaskNoMoreRuns : result))
                  << '\n';
        return TExit::Done;
    }

    TExit create()
    {
        std::shared_ptr<ITaskObject> object;
        Require(m_store, m_scheduler->NewWorkItem(name().c_str(), ClsidTask, ITask::Iid, object),
                m_options.Name);
        const auto task = std::dynamic_pointer_cast<ITask>(object);
        const auto set = [&](TTaskResult result) { Require(m_store, result, m_options.Name); };
        set(task->SetApplicationName(m_options.Program.toStdU16String().c_str()));
        set(task->SetParameters(m_options.Parameters.toStdU16String().c_str()));
        set(task->SetWorkingDirectory(m_options.Directory.toStdU16String().c_str()));
        set(task->SetComment(m_options.Comment.toStdU16String().c_str()));
        set(task->SetCreator(m_options.Creator.toStdU16String().c_str()));
        set(task->SetFlags(m_options.Flags));
        set(task->SetPriority(m_options.Priority));
        if (m_options.MaxRunTime)
            set(task->SetMaxRunTime(*m_options.MaxRunTime));
        for (const auto &wanted : m_options.Triggers) {
            std::uint16_t index = 0;
            std::shared_ptr<ITaskTrigger> trigger;
            set(task->CreateTrigger(index, trigger));
            set(trigger->SetTrigger(&wanted));
            if (wanted.TriggerType == TASK_EVENT_TRIGGER_ON_IDLE ||
                wanted.TriggerType == TASK_EVENT_TRIGGER_AT_LOGON)
                m_err << u"Attention : un déclencheur idle ou logon ne démarre rien ici\n"_s;
        }
        std::shared_ptr<IPersistFile> file;
        set(QueryInterface(*task, file));
        set(file->Save(nullptr, true));
        warn(m_options.Flags);
        SYSTEMTIME next;
        if (task->GetNextRunTime(next) == TaskResult::TaskNoMoreRuns)
            m_err << u"Attention : les déclencheurs de cette tâche ne la démarreront jamais\n"_s;
        return m_options.Json ? answer(TJobView(m_store, *m_scheduler, m_options.Name).Everything())
                              : TExit::Done;
    }

    TExit run()
    {
        Require(m_store, opened()->Run(), m_options.Name);
        if (!m_options.Wait)
            return TExit::Done;
        for (;;) {
            const TJobView job(m_store, *m_scheduler, m_options.Name);
            if (job.Problem == TaskResult::FileNotFound) // a job that is done may be gone
                return TExit::Done;
            Require(m_store, job.Problem, m_options.Name);
            if (job.Status != TaskResult::TaskRunning) {
                const bool wasEnded = job.Status == TaskResult::TaskTerminated;
                const bool isWell = Succeeded(job.ExitResult) && job.ExitCode == 0 && !wasEnded;
                (isWell ? m_out : m_err) << job.Name << u" : "_s << job.LastResultText()
                                         << (wasEnded ? u", arrêtée"_s : QString()) << '\n';
                return isWell ? TExit::Done : TExit::NotWell;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

    void warn(std::uint32_t flags)
    {
        for (const auto &[flag, text] : notHonoured)
            if (flags & flag)
                m_err << u"Attention, sans effet ici : "_s << QString::fromUtf8(text) << '\n';
    }

    const TJobsToolOptions &m_options;
    QTextStream &m_out, &m_err;
    TJobStore m_store;
    std::shared_ptr<ITaskScheduler> m_scheduler;
};

} // namespace

TExit RunJobsTool(const TJobsToolOptions &options, QTextStream &out, QTextStream &err)
{
    switch (options.Command) {
    case TJobsToolOptions::Help:
        out << HelpText();
        return TExit::Done;
    case TJobsToolOptions::Tick:
        return RunTickCommand(options, out, err);
    case TJobsToolOptions::Status:
        return RunStatusCommand(options, out, err);
    case TJobsToolOptions::Install:
        return InstallTicks(options, out, err);
    case TJobsToolOptions::Uninstall:
        return UninstallTicks(options, out, err);
    default:
        return TJobsTool(options, out, err).Run();
    }
}

} // namespace Zelmar01
