#include "Options.h"

#include "TriggerNotation.h"

#include <Zelmar01/tasks/service/store/CommandLine.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

using TOptions = TJobsToolOptions;

struct TCommandName
{
    QLatin1StringView Name;
    TOptions::TCommand Command;
    bool TakesName;
    const char *Options; // those that it knows beside --folder and --json
};

constexpr TCommandName commands[] = {
    {"list"_L1, TOptions::List, false, "all"},
    {"show"_L1, TOptions::Show, true, ""},
    {"next"_L1, TOptions::Next, true, "from count"},
    {"create"_L1, TOptions::Create, true,
     "program parameters directory comment creator flags priority max-run-time trigger"},
    {"delete"_L1, TOptions::Delete, true, ""},
    {"run"_L1, TOptions::Run, true, "wait"},
    {"terminate"_L1, TOptions::Terminate, true, ""},
    {"tick"_L1, TOptions::Tick, false, "verbose"},
    {"status"_L1, TOptions::Status, false, ""},
    {"install"_L1, TOptions::Install, false, "cron systemd print"},
    {"uninstall"_L1, TOptions::Uninstall, false, "cron systemd print"},
};

constexpr struct
{
    QLatin1StringView Name;
    std::uint32_t Class;
} priorities[] = {{"idle"_L1, PriorityClass::Idle},
                  {"normal"_L1, PriorityClass::Normal},
                  {"high"_L1, PriorityClass::High},
                  {"realtime"_L1, PriorityClass::RealTime}};

void defineOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Gère les tâches planifiées d'un dossier de fichiers .job, et les démarre à leurs heures."_s);
    parser.addPositionalArgument(
        u"commande"_s, u"list, show, next, create, delete, run, terminate, tick, status, install ou "
                       "uninstall (voir plus bas)."_s);
    parser.addPositionalArgument(u"nom"_s, u"Nom de la tâche, avec ou sans .job."_s, u"[nom]"_s);
    parser.addOptions({
        {{u"h"_s, u"help"_s}, u"Affiche cette aide."_s},
        {u"folder"_s,
         u"Dossier des tâches. Par défaut celui de ZELMAR01_JOBS, sinon zelmar01/jobs dans les données de "
         "l'utilisateur."_s,
         u"dossier"_s},
        {u"json"_s, u"Répond en JSON."_s},
        {u"all"_s, u"list : aussi les tâches cachées."_s},
        {u"from"_s, u"next : à partir de cette heure locale (par défaut maintenant)."_s,
         u"2027-01-31T04:30"_s},
        {u"count"_s, u"next : nombre d'exécutions, 1 à 1440 (par défaut 10)."_s, u"n"_s},
        {u"wait"_s, u"run : attend la fin de la tâche."_s},
        {u"verbose"_s, u"tick : dit aussi ce qui s'est bien passé."_s},
        {u"cron"_s, u"install, uninstall : par la table cron de l'utilisateur."_s},
        {u"systemd"_s, u"install, uninstall : par une minuterie systemd de l'utilisateur."_s},
        {u"print"_s, u"install, uninstall : montre ce qui serait fait, sans rien changer."_s},
        {u"program"_s, u"create : le programme."_s, u"programme"_s},
        {u"parameters"_s, u"create : ses paramètres (voir plus bas)."_s, u"texte"_s},
        {u"directory"_s, u"create : son dossier de travail (par défaut celui de l'utilisateur)."_s,
         u"dossier"_s},
        {u"comment"_s, u"create : commentaire."_s, u"texte"_s},
        {u"creator"_s, u"create : auteur."_s, u"texte"_s},
        {u"flags"_s, u"create : indicateurs, séparés par des virgules (voir plus bas)."_s, u"noms"_s},
        {u"priority"_s, u"create : idle, normal, high ou realtime."_s, u"priorité"_s},
        {u"max-run-time"_s, u"create : durée maximale en minutes, ou none (par défaut 4320)."_s,
         u"minutes"_s},
        {u"trigger"_s, u"create : déclencheur (voir plus bas). Peut être répétée."_s, u"déclencheur"_s},
    });
}

[[noreturn]] void refuse(const QString &why)
{
    throw EUsage(why.toStdString());
}

const TCommandName &commandOf(const QString &name)
{
    const auto found =
        std::ranges::find_if(commands, [&](const TCommandName &command) { return name == command.Name; });
    if (found == std::end(commands))
        refuse(name.isEmpty() ? u"Commande manquante."_s : u"Commande inconnue « %1 »."_s.arg(name));
    return *found;
}

void checkOptions(const QCommandLineParser &parser, const TCommandName &command)
{
    const auto known = QString::fromLatin1(command.Options).split(u' ');
    for (const auto &option : parser.optionNames())
        if (option != "folder"_L1 && option != "json"_L1 && !known.contains(option))
            refuse(u"« --%1 » ne va pas avec la commande « %2 »."_s.arg(option, QString(command.Name)));
}

int numberOf(const QCommandLineParser &parser, const QString &option, int least, int most)
{
    bool isNumber = false;
    const int number = parser.value(option).toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        refuse(
            u"Valeur incorrecte après « --%1 » : un nombre de %2 à %3."_s.arg(option).arg(least).arg(most));
    return number;
}

QDateTime momentOf(const QString &text)
{
    auto moment = QDateTime::fromString(text, Qt::ISODate);
    if (!moment.isValid() || moment.date().year() < 1601 || moment.date().year() > 30827)
        refuse(u"Date et heure incorrectes « %1 », attendues comme 2027-01-31T04:30."_s.arg(text));
    return moment.timeSpec() == Qt::LocalTime ? moment : moment.toLocalTime();
}

std::uint32_t flagsOf(const QString &text)
{
    std::uint32_t flags = 0;
    for (const auto &name : text.split(u',')) {
        const auto found = std::ranges::find_if(
            FlagNames(), [&](const TFlagName &flag) { return name == QLatin1StringView(flag.Name); });
        if (found == FlagNames().end())
            refuse(u"Indicateur inconnu « %1 »."_s.arg(name));
        flags |= found->Bit;
    }
    return flags;
}

std::uint32_t priorityOf(const QString &text)
{
    for (const auto &priority : priorities)
        if (text == priority.Name)
            return priority.Class;
    refuse(u"Priorité inconnue « %1 » : idle, normal, high ou realtime."_s.arg(text));
}

QString join(const QStringList &arguments)
{
    std::vector<std::u16string> texts;
    for (const auto &argument : arguments)
        texts.push_back(argument.toStdU16String());
    return QString::fromStdU16String(JoinParameters(texts));
}

void readNewJob(const QCommandLineParser &parser, const QStringList &programArguments, TOptions &options)
{
    options.Program = parser.value(u"program"_s);
    if (options.Program.isEmpty())
        refuse(u"create demande --program."_s);
    if (parser.isSet(u"parameters"_s) && !programArguments.isEmpty())
        refuse(u"Des paramètres par --parameters, ou des arguments après le nom, pas les deux."_s);
    options.Parameters =
        parser.isSet(u"parameters"_s) ? parser.value(u"parameters"_s) : join(programArguments);
    options.Directory = parser.value(u"directory"_s);
    options.Comment = parser.value(u"comment"_s);
    options.Creator = parser.value(u"creator"_s);
    if (parser.isSet(u"flags"_s))
        options.Flags = flagsOf(parser.value(u"flags"_s));
    if (parser.isSet(u"priority"_s))
        options.Priority = priorityOf(parser.value(u"priority"_s));
    if (parser.value(u"max-run-time"_s) == "none"_L1)
        options.MaxRunTime = UnlimitedRunTime;
    else if (parser.isSet(u"max-run-time"_s))
        options.MaxRunTime =
            static_cast<std::uint32_t>(numberOf(parser, u"max-run-time"_s, 1, 71582)) * 60'000;
    const auto now = QDateTime::currentDateTime();
    for (const auto &trigger : parser.values(u"trigger"_s))
        options.Triggers.push_back(ParseTrigger(trigger, now));
}

} // namespace

const std::vector<TFlagName> &FlagNames()
{
    static const std::vector<TFlagName> names{
        {"interactive", TaskFlag::Interactive},
        {"delete-when-done", TaskFlag::DeleteWhenDone},
        {"disabled", TaskFlag::Disabled},
        {"hidden", TaskFlag::Hidden},
        {"run-only-if-logged-on", TaskFlag::RunOnlyIfLoggedOn},
        {"start-only-if-idle", TaskFlag::StartOnlyIfIdle},
        {"system-required", TaskFlag::SystemRequired},
        {"kill-on-idle-end", TaskFlag::KillOnIdleEnd},
        {"restart-on-idle-resume", TaskFlag::RestartOnIdleResume},
        {"dont-start-if-on-batteries", TaskFlag::DontStartIfOnBatteries},
        {"kill-if-going-on-batteries", TaskFlag::KillIfGoingOnBatteries},
        {"run-if-connected-to-internet", TaskFlag::RunIfConnectedToInternet},
    };
    return names;
}

TJobsToolOptions ParseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    defineOptions(parser);
    // What follows "--" belongs to the program of the new job.
    const auto end = arguments.indexOf(u"--"_s);
    const auto programArguments = end < 0 ? QStringList() : arguments.mid(end + 1);
    if (!parser.parse(end < 0 ? arguments : arguments.first(end)))
        refuse(parser.errorText());
    TOptions options;
    if (parser.isSet(u"help"_s))
        return options;

    auto words = parser.positionalArguments();
    const auto &command = commandOf(words.isEmpty() ? QString() : words.takeFirst());
    checkOptions(parser, command);
    options.Command = command.Command;
    if (command.TakesName && words.isEmpty())
        refuse(u"La commande « %1 » demande le nom d'une tâche."_s.arg(QString(command.Name)));
    if (command.TakesName)
        options.Name = words.takeFirst();
    if (std::u16string file;
        command.TakesName && Failed(JobFileName(options.Name.toStdU16String().c_str(), file)))
        refuse(
            u"Nom de tâche incorrect « %1 » : sans dossier, sans autre fin que .job, et 250 octets au plus."_s
                .arg(options.Name));
    if (!words.isEmpty() || (end >= 0 && options.Command != TOptions::Create))
        refuse(u"« %1 » est de trop."_s.arg(words.isEmpty() ? u"--"_s : words.first()));

    if (parser.isSet(u"folder"_s)) {
        if (parser.value(u"folder"_s).isEmpty())
            refuse(u"Valeur vide après « --folder »."_s);
        options.Folder = QDir::cleanPath(QDir::current().absoluteFilePath(parser.value(u"folder"_s)));
    }
    options.Json = parser.isSet(u"json"_s);
    options.All = parser.isSet(u"all"_s);
    options.Wait = parser.isSet(u"wait"_s);
    options.Verbose = parser.isSet(u"verbose"_s);
    options.Print = parser.isSet(u"print"_s);
    if (parser.isSet(u"from"_s))
        options.From = momentOf(parser.value(u"from"_s));
    if (parser.isSet(u"count"_s))
        options.Count = numberOf(parser, u"count"_s, 1, TaskMaxRunTimes);
    if (parser.isSet(u"cron"_s) && parser.isSet(u"systemd"_s) && options.Command == TOptions::Install)
        refuse(u"--cron ou --systemd, pas les deux : chaque tâche serait appelée deux fois."_s);
    if (parser.isSet(u"cron"_s) != parser.isSet(u"systemd"_s))
        options.Engine = parser.isSet(u"cron"_s) ? TEngine::Cron : TEngine::Systemd;
    if (options.Command == TOptions::Create)
        readNewJob(parser, programArguments, options);
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    defineOptions(parser);
    QString flags;
    for (const auto &flag : FlagNames())
        flags += u"  %1\n"_s.arg(QLatin1StringView(flag.Name));
    return parser.helpText() + uR"(
Commandes :
  list             liste les tâches
  show nom         montre tout d'une tâche
  next nom         montre ses prochaines exécutions
  create nom       crée une tâche ; les arguments du programme peuvent suivre « -- »
  delete nom       supprime une tâche
  run nom          démarre une tâche maintenant
  terminate nom    arrête une tâche en cours
  tick             démarre ce qui est dû ; à appeler chaque minute
  status           dit si les appels arrivent et ce que les derniers ont fait
  install          fait appeler « tick » chaque minute, par systemd ou cron
  uninstall        défait ce que fait install

Les paramètres sont coupés aux espaces, sauf entre guillemets ("), sans aucun shell.

)"_s + TriggerNotationHelp() +
           u"\nIndicateurs (--flags) :\n"_s + flags + uR"(
Code de retour :
  0  fait
  1  échec ; la cause est sur l'erreur standard
  2  ligne de commande incorrecte
  3  status : aucun appel n'arrive ; run --wait : la tâche n'a pas réussi

Exemples :
  zelmar01-jobs create Export --program /opt/boutique/export \
      --trigger "weekly 04:30 days=mon,tue,wed,thu,fri" -- --vers "Siège social"
  zelmar01-jobs next Export --count 5
  zelmar01-jobs install
  zelmar01-jobs status
)"_s;
}

} // namespace Zelmar01
