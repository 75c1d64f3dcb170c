#include "TickEngine.h"

#include "JobView.h"

#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

const auto cronMark = u" # zelmar01-jobs"_s;
const auto unitName = u"zelmar01-jobs"_s;
constexpr int patience = 30'000; // milliseconds

// What came of another program.
struct TAnswer
{
    bool Found = false; // the program is there
    int Exit = -1;
    QByteArray Output;
    QString Errors;

    bool IsWell() const { return Found && Exit == 0; }
};

TAnswer call(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    const auto path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return {};
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process.setProcessEnvironment(environment);
    process.start(path, arguments);
    process.write(input);
    process.closeWriteChannel();
    TAnswer answer{true, -1, {}, {}};
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
        answer.Exit = process.exitCode();
    answer.Output = process.readAllStandardOutput();
    answer.Errors = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return answer;
}

void require(const TAnswer &answer, const QString &program)
{
    if (!answer.Found)
        throw EJob(u"« %1 » est introuvable sur ce système"_s.arg(program).toStdString());
    if (answer.Exit != 0)
        throw EJob(u"« %1 » a échoué : %2"_s
                       .arg(program, answer.Errors.isEmpty() ? u"code %1"_s.arg(answer.Exit) : answer.Errors)
                       .toStdString());
}

QStringList tickCommand(const TJobsToolOptions &options)
{
    const auto folder =
        options.Folder.isEmpty() ? QString::fromStdString(DefaultJobFolder().string()) : options.Folder;
    if (folder.contains(u'\n') || folder.contains(u'\r'))
        throw EJob("Un dossier dont le nom contient une fin de ligne ne peut pas être installé");
    return {QCoreApplication::applicationFilePath(), u"tick"_s, u"--folder"_s, folder};
}

// For a shell, and for cron before it, to which a percent sign is a line end.
QString cronLine(const QStringList &command)
{
    QStringList quoted;
    for (auto word : command)
        quoted << u'\'' + word.replace(u"'"_s, u"'\\''"_s) + u'\'';
    return u"* * * * * "_s + quoted.join(u' ').replace(u'%', u"\\%"_s) + cronMark;
}

// For systemd, which knows quotes, backslashes and percent signs, and dollar signs but in the program.
QString unitCommand(const QStringList &command)
{
    QStringList quoted;
    for (auto word : command) {
        word.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'%', u"%%"_s);
        if (!quoted.isEmpty())
            word.replace(u'$', u"$$"_s);
        quoted << u'"' + word + u'"';
    }
    return quoted.join(u' ');
}

QString serviceText(const QStringList &command)
{
    return u"[Unit]\n"
           "Description=Scheduled jobs that have come due\n"
           "\n"
           "[Service]\n"
           "Type=oneshot\n"
           "ExecStart=%1\n"
           "# The jobs go on when the tick is over.\n"
           "KillMode=process\n"_s.arg(unitCommand(command));
}

QString timerText()
{
    return u"[Unit]\n"
           "Description=Scheduled jobs, every minute\n"
           "\n"
           "[Timer]\n"
           "OnCalendar=*-*-* *:*:00\n"
           "AccuracySec=1s\n"
           "\n"
           "[Install]\n"
           "WantedBy=timers.target\n"_s;
}

QString unitFile(const QString &ending)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/systemd/user/"_s +
           unitName + ending;
}

// The table without our line, its bytes as they are. A table that cannot be read is not one that is empty.
QList<QByteArray> cronTable(bool &isOurs)
{
    const auto table = call(u"crontab"_s, {u"-l"_s});
    const bool isEmpty = table.Found && table.Exit == 1 && table.Errors.contains("no crontab"_L1);
    if (!isEmpty)
        require(table, u"crontab"_s);
    auto lines = table.Output.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    isOurs = lines.removeIf([](const QByteArray &line) { return line.endsWith(cronMark.toUtf8()); }) > 0;
    return lines;
}

void writeCronTable(const QList<QByteArray> &lines)
{
    const auto text = lines.isEmpty() ? QByteArray() : lines.join('\n') + '\n';
    require(call(u"crontab"_s, {u"-"_s}, text), u"crontab"_s);
}

void writeUnit(const QString &ending, const QString &text)
{
    QSaveFile file(unitFile(ending));
    if (!QDir().mkpath(QFileInfo(file.fileName()).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(text.toUtf8()) < 0 || !file.commit())
        throw EJob((file.fileName() + u" : "_s + file.errorString()).toStdString());
}

TAnswer systemctl(const QStringList &arguments)
{
    return call(u"systemctl"_s, QStringList{u"--user"_s} + arguments);
}

bool removeUnits()
{
    const bool areThere = QFile::exists(unitFile(u".timer"_s));
    if (areThere)
        systemctl({u"disable"_s, u"--now"_s, unitName + u".timer"_s});
    for (const auto &ending : {u".timer"_s, u".service"_s})
        if (QFile file(unitFile(ending)); file.exists() && !file.remove())
            throw EJob((file.fileName() + u" : "_s + file.errorString()).toStdString());
    if (areThere)
        systemctl({u"daemon-reload"_s});
    return areThere;
}

bool removeCronLine()
{
    bool isOurs = false;
    const auto lines = cronTable(isOurs);
    if (isOurs)
        writeCronTable(lines);
    return isOurs;
}

void installUnits(const QStringList &command)
{
    writeUnit(u".service"_s, serviceText(command));
    writeUnit(u".timer"_s, timerText());
    try {
        require(systemctl({u"daemon-reload"_s}), u"systemctl --user daemon-reload"_s);
        require(systemctl({u"enable"_s, u"--now"_s, unitName + u".timer"_s}), u"systemctl --user enable"_s);
    } catch (const EJob &) {
        removeUnits();
        throw;
    }
}

TEngine chooseEngine(const TJobsToolOptions &options)
{
    if (options.Engine)
        return *options.Engine;
    if (systemctl({u"show-environment"_s}).IsWell())
        return TEngine::Systemd;
    if (call(u"crontab"_s, {u"-l"_s}).Found)
        return TEngine::Cron;
    throw EJob("Ni systemd ni cron n'est disponible pour cet utilisateur ; installer le paquet cron, ou "
               "appeler « zelmar01-jobs tick » chaque minute par un autre moyen");
}

void tellNeeds(TEngine engine, QTextStream &out)
{
    const auto user = QString::fromStdU16String(UserAccount());
    if (engine == TEngine::Cron) {
        out << u"Le service cron doit être en marche. Les tâches reçoivent l'environnement de cron.\n"_s;
    } else if (call(u"loginctl"_s, {u"show-user"_s, user, u"--property=Linger"_s, u"--value"_s})
                   .Output.trimmed() != "yes") {
        out << u"Sans session ouverte, rien ne démarre tant que ceci n'a pas été fait :\n"
               "  loginctl enable-linger "_s
            << user << '\n';
    }
    out << u"« zelmar01-jobs status » dit dans une minute ou deux si les appels arrivent.\n"_s;
}

} // namespace

bool TicksComeFrom(TEngine engine)
{
    if (engine == TEngine::Systemd)
        return QFile::exists(unitFile(u".timer"_s));
    bool isOurs = false;
    try {
        cronTable(isOurs);
    } catch (const EJob &) {
        return false;
    }
    return isOurs;
}

TExit InstallTicks(const TJobsToolOptions &options, QTextStream &out, QTextStream &)
{
    const auto engine = chooseEngine(options);
    const auto command = tickCommand(options);
    if (options.Print) {
        if (engine == TEngine::Cron)
            out << u"# crontab\n"_s << cronLine(command) << '\n';
        else
            out << u"# "_s << unitFile(u".service"_s) << '\n'
                << serviceText(command) << u"\n# "_s << unitFile(u".timer"_s) << '\n'
                << timerText();
    } else if (engine == TEngine::Cron) {
        bool isOurs = false;
        auto lines = cronTable(isOurs);
        lines << cronLine(command).toUtf8();
        writeCronTable(lines);
        removeUnits();
        out << u"Installé dans la table cron.\n"_s;
    } else {
        installUnits(command);
        if (TicksComeFrom(TEngine::Cron))
            removeCronLine();
        out << u"Installé comme minuterie systemd : "_s << unitFile(u".timer"_s) << '\n';
    }
    tellNeeds(engine, out);
    return TExit::Done;
}

TExit UninstallTicks(const TJobsToolOptions &options, QTextStream &out, QTextStream &)
{
    const auto isAsked = [&](TEngine engine) { return !options.Engine || *options.Engine == engine; };
    const bool systemd = isAsked(TEngine::Systemd) && TicksComeFrom(TEngine::Systemd);
    const bool cron = isAsked(TEngine::Cron) && TicksComeFrom(TEngine::Cron);
    const auto done = options.Print ? u"à retirer"_s : u"retirée"_s;
    if (systemd && !options.Print)
        removeUnits();
    if (cron && !options.Print)
        removeCronLine();
    if (systemd)
        out << u"Minuterie systemd %1\n"_s.arg(done);
    if (cron)
        out << u"Ligne de la table cron %1\n"_s.arg(done);
    if (!systemd && !cron)
        out << u"Rien n'est installé.\n"_s;
    return TExit::Done;
}

} // namespace Zelmar01
