#include "TickCommands.h"

#include "JobView.h"
#include "TickEngine.h"

#include <Zelmar01/tasks/service/store/JobStore.h>
#include <Zelmar01/tasks/service/store/Tick.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr std::size_t shownEvents = 20;

std::filesystem::path folderOf(const TJobsToolOptions &options)
{
    return options.Folder.isEmpty() ? DefaultJobFolder()
                                    : std::filesystem::path(options.Folder.toStdString());
}

QString resultText(std::int64_t result)
{
    const auto code = static_cast<TTaskResult>(result);
    const auto text = QString::fromStdString(ResultText(code));
    const auto name = QString::fromStdString(ResultName(code));
    return text.isEmpty() ? name : u"%1 (%2)"_s.arg(text, name);
}

QString words(const TJobEvent &event)
{
    switch (event.Kind) {
    case TJobEvent::Started:
        return u"démarrée"_s;
    case TJobEvent::Ended:
        return u"terminée, code %1"_s.arg(event.Value);
    case TJobEvent::Terminated:
        return u"arrêtée sur demande, code %1"_s.arg(event.Value);
    case TJobEvent::LimitReached:
        return u"arrêtée : durée maximale atteinte"_s;
    case TJobEvent::PowerFailed:
        return u"arrêtée : l'ordinateur est passé sur batterie"_s;
    case TJobEvent::StartFailed:
        return u"n'a pas pu démarrer : %1"_s.arg(resultText(event.Value));
    case TJobEvent::Deleted:
        return u"supprimée, plus rien n'étant prévu"_s;
    case TJobEvent::Missed:
        return event.Value == 1 ? u"1 exécution manquée"_s : u"%1 exécutions manquées"_s.arg(event.Value);
    case TJobEvent::StillRunning:
        return u"pas redémarrée : encore en cours"_s;
    case TJobEvent::HeldOnBattery:
        return u"pas démarrée : l'ordinateur est sur batterie"_s;
    case TJobEvent::StartLost:
        return u"démarrage perdu : l'appel a été interrompu"_s;
    case TJobEvent::RunLost:
        return u"fin inconnue : l'ordinateur ou la surveillance s'est arrêté"_s;
    case TJobEvent::Unreadable:
        return u"fichier inutilisable : %1"_s.arg(resultText(event.Value));
    }
    return {};
}

QString lineOf(const TJobEvent &event)
{
    auto line = u"%1  %2 : %3"_s.arg(IsoInstant(event.At), TitleOf(event.File), words(event));
    if (event.Start && *event.Start != event.At)
        line += u" (prévue à %1)"_s.arg(IsoInstant(*event.Start));
    return line;
}

bool lacksRunner(const TJobEvent &event)
{
    return event.Kind == TJobEvent::StartFailed && event.Value == TaskResult::ServiceNotInstalled;
}

QJsonObject jsonOf(const TJobEvent &event)
{
    return {{u"at"_s, IsoInstant(event.At)},
            {u"event"_s, QString::fromLatin1(EventName(event.Kind))},
            {u"name"_s, TitleOf(event.File)},
            {u"value"_s, qint64(event.Value)},
            {u"start"_s, event.Start ? QJsonValue(IsoInstant(*event.Start)) : QJsonValue()},
            {u"problem"_s, event.IsProblem()}};
}

QJsonArray jsonOf(const std::vector<TJobEvent> &events)
{
    QJsonArray array;
    for (const auto &event : events)
        array << jsonOf(event);
    return array;
}

} // namespace

TExit RunTickCommand(const TJobsToolOptions &options, QTextStream &out, QTextStream &err)
{
    TTickOptions tick;
    tick.Folder = folderOf(options);
    tick.Now = QDateTime::currentSecsSinceEpoch();
    tick.Zone = TTimeZone::System();
    tick.BootId = SystemBootId();
    const auto report = RunTick(tick);
    // Another tick is at work, which does what this one would.
    const bool isDone = Succeeded(report.Result) || report.Result == TaskResult::AlreadyRunning;
    if (!isDone)
        err << QString::fromStdString(tick.Folder.string()) << u" : "_s << resultText(report.Result) << '\n';
    if (report.Result == TaskResult::AccessDenied)
        err << u"  remède : le dossier des tâches doit appartenir à l'utilisateur, et lui seul doit pouvoir "
               u"y "
               "écrire (chmod go-w)\n"_s;
    for (const auto &event : report.Events)
        if (event.IsProblem() || (options.Verbose && !options.Json))
            (event.IsProblem() ? err : out) << lineOf(event) << '\n';
    if (std::ranges::any_of(report.Events, lacksRunner))
        WriteCause(err, TJobStore().ExplainResult(TaskResult::ServiceNotInstalled));
    if (options.Json)
        out << QJsonDocument(jsonOf(report.Events)).toJson();
    return isDone ? TExit::Done : TExit::Failed;
}

TExit RunStatusCommand(const TJobsToolOptions &options, QTextStream &out, QTextStream &err)
{
    const TJobFolder folder(folderOf(options));
    const auto state = ReadTickState(folder);
    const auto events = ReadLog(folder, shownEvents);
    const bool arrive = TicksArrive(state, QDateTime::currentSecsSinceEpoch());
    const auto exit = arrive ? TExit::Done : TExit::NotWell;
    const bool byCron = TicksComeFrom(TEngine::Cron), bySystemd = TicksComeFrom(TEngine::Systemd);
    if (options.Json) {
        QJsonArray unusable;
        for (const auto &[file, result] : state.Unusable)
            unusable << QJsonObject{{u"name"_s, TitleOf(file)},
                                    {u"error"_s, QString::fromStdString(ResultName(result))}};
        out << QJsonDocument(QJsonObject{{u"folder"_s, QString::fromStdString(folder.Path().string())},
                                         {u"ticksArrive"_s, arrive},
                                         {u"lastTick"_s,
                                          state.Last ? QJsonValue(IsoInstant(*state.Last)) : QJsonValue()},
                                         {u"started"_s, int(state.Started)},
                                         {u"cron"_s, byCron},
                                         {u"systemd"_s, bySystemd},
                                         {u"unusable"_s, unusable},
                                         {u"events"_s, jsonOf(events)}})
                   .toJson();
        return exit;
    }
    out << u"Dossier : "_s << QString::fromStdString(folder.Path().string()) << u"\nAppels : "_s
        << (bySystemd ? u"par une minuterie systemd"_s
            : byCron  ? u"par cron"_s
                      : u"non installés"_s)
        << u"\nDernier appel : "_s << (state.Last ? IsoInstant(*state.Last) : u"aucun"_s);
    if (state.Last)
        out << u", démarrages : "_s << state.Started;
    out << '\n';
    for (const auto &[file, result] : state.Unusable)
        out << u"Inutilisable : "_s << TitleOf(file) << u", "_s << resultText(result) << '\n';
    if (!events.empty())
        out << u"Derniers événements :\n"_s;
    for (const auto &event : events)
        out << "  " << lineOf(event) << '\n';
    if (!arrive)
        err << u"Aucun appel n'arrive : aucune tâche ne démarre à son heure.\n  remède : "_s
            << (byCron || bySystemd ? u"vérifier que cron ou systemd est en marche pour cet utilisateur"_s
                                    : u"zelmar01-jobs install"_s)
            << '\n';
    return exit;
}

} // namespace Zelmar01
