#include <Zelmar01/tasks/service/store/CommandLine.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <support/TempFolder.h>

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <fstream>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace {

struct TResult
{
    int Exit;
    QString Output, Errors;

    QJsonDocument Json() const { return QJsonDocument::fromJson(Output.toUtf8()); }
};

class JobsTool : public testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directory(m_folder / "home"); }

    TempFolder m_folder;
    QStringList m_environment{u"LC_ALL=C.UTF-8"_s};

    QString path(const char *name) const { return QString::fromStdString((m_folder / name).string()); }

    QString content(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    void write(const char *name, const QString &text) const
    {
        std::filesystem::create_directories((m_folder / name).parent_path());
        std::ofstream(m_folder / name, std::ios::binary) << text.toStdString();
    }

    // A program that is found before the system's own, or in its place.
    void fake(const char *name, const char *script) const
    {
        const auto file = std::string("bin/") + name;
        write(file.c_str(), u"#!/bin/sh\necho \"%1 $*\" >> '%2'\n%3\n"_s.arg(
                                QLatin1StringView(name), path("calls"), QLatin1StringView(script)));
        std::filesystem::permissions(m_folder / file, std::filesystem::perms::owner_all);
    }

    TResult start(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setEnvironment(m_environment + QStringList{u"HOME="_s + path("home"),
                                                           u"XDG_CONFIG_HOME="_s + path("config"),
                                                           u"ZELMAR01_JOBS="_s + path("jobs"), u"TZ=UTC0"_s,
                                                           u"PATH="_s + path("bin") + u":/usr/bin:/bin"_s});
        process.setWorkingDirectory(path(""));
        process.start(program, arguments);
        process.closeWriteChannel();
        if (!process.waitForFinished())
            ADD_FAILURE() << "does not end: " << arguments.join(u' ').toStdString();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    TResult run(const QStringList &arguments) { return start(QStringLiteral(ZELMAR01_JOBS_TOOL), arguments); }

    // Words are parted as a job's parameters are.
    TResult run(const char16_t *line)
    {
        QStringList arguments;
        for (const auto &word : SplitParameters(line))
            arguments << QString::fromStdU16String(word);
        return run(arguments);
    }

    void expectDone(const char16_t *line)
    {
        const auto result = run(line);
        EXPECT_EQ(result.Exit, 0) << QString::fromUtf16(line).toStdString() << result.Errors.toStdString();
    }
};

TEST_F(JobsTool, ReadsTheseTriggers)
{
    const struct
    {
        const char16_t *Trigger;
        const char *Starts; // after 2027-01-28 05:00
    } cases[] = {
        {u"once 2027-01-31T04:30", "2027-01-31T04:30:00"},
        {u"daily 04:30 from=2027-01-01 every=2",
         "2027-01-29T04:30:00 2027-01-31T04:30:00 2027-02-02T04:30:00"},
        {u"weekly 04:30 days=mon,fri every=2 from=2027-02-03",
         "2027-02-05T04:30:00 2027-02-15T04:30:00 2027-02-19T04:30:00"},
        {u"monthly 04:30 days=1,31 months=1,2,3 from=2027-01-01",
         "2027-01-31T04:30:00 2027-02-01T04:30:00 2027-03-01T04:30:00"},
        {u"monthly 04:30 week=last days=tue from=2027-02-01",
         "2027-02-23T04:30:00 2027-03-30T04:30:00 2027-04-27T04:30:00"},
        {u"daily 23:00 repeat=60 for=180 from=2027-02-01 to=2027-02-02",
         "2027-02-01T23:00:00 2027-02-02T00:00:00 2027-02-02T01:00:00"},
        {u"daily 04:30 off", ""},
        {u"startup", ""},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(QString::fromUtf16(row.Trigger).toStdString());
        const auto created = run({u"create"_s, u"t"_s, u"--program"_s, u"true"_s, u"--trigger"_s,
                                  QString::fromUtf16(row.Trigger)});
        EXPECT_EQ(created.Exit, 0) << created.Errors.toStdString();
        const auto starts = run(u"next t --from 2027-01-28T05:00 --count 3 --json");
        QStringList found;
        for (const auto &start : starts.Json().array())
            found << start.toString();
        EXPECT_EQ(found.join(u' ').toStdString(), row.Starts);
        const QJsonArray triggers = run(u"show t --json").Json().object()["triggers"_L1].toArray();
        const auto again = run({u"create"_s, u"u"_s, u"--program"_s, u"true"_s, u"--json"_s, u"--trigger"_s,
                                triggers[0].toObject()["notation"_L1].toString()});
        EXPECT_EQ(again.Json().object()["triggers"_L1].toArray(), triggers)
            << "a job can be made again from its JSON";
        expectDone(u"delete t");
        expectDone(u"delete u");
    }
}

TEST_F(JobsTool, RefusesTheseCommandLines)
{
    for (const auto *line : {u"",
                             u"fly",
                             u"show",
                             u"list x",
                             u"list --wait",
                             u"delete",
                             u"next a --count 0",
                             u"next a --from lundi",
                             u"create a",
                             u"create a/b --program p",
                             u"show a.txt",
                             u"create a --program p --flags loud",
                             u"create a --program p --priority 7",
                             u"create a --program p --max-run-time -1",
                             u"create a --program p --parameters x -- y",
                             u"create a --program p --trigger \"\"",
                             u"create a --program p --trigger \"hourly 04:30\"",
                             u"create a --program p --trigger \"once 2027-02-30T04:30\"",
                             u"create a --program p --trigger \"daily 24:00\"",
                             u"create a --program p --trigger \"daily 04:30 every=0\"",
                             u"create a --program p --trigger \"weekly 04:30\"",
                             u"create a --program p --trigger \"weekly 04:30 days=lun\"",
                             u"create a --program p --trigger \"monthly 04:30 days=32\"",
                             u"create a --program p --trigger \"daily 04:30 repeat=60 for=60\"",
                             u"install --cron --systemd",
                             u"run a -- b",
                             u"list --folder \"\""}) {
        const auto result = run(line);
        EXPECT_EQ(result.Exit, 2) << QString::fromUtf16(line).toStdString();
        EXPECT_TRUE(result.Errors.contains(u"--help"_s)) << result.Errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path("jobs/a.job")));
    EXPECT_EQ(run(u"--help").Exit, 0);
    EXPECT_EQ(run(u"list --folder /proc/jobs").Exit, 1) << "where no folder can be made";
    EXPECT_TRUE(run(u"create a --program p --trigger \"monthly 04:30 days=31 months=2\"")
                    .Errors.contains(u"jamais"_s));
}

TEST_F(JobsTool, GoesThroughTheLifeOfAJob)
{
    const auto created =
        run(uR"(create Été --program sh --comment "La nuit" --flags hidden,interactive --priority idle)"
            uR"( --max-run-time 5 --directory /usr --trigger "daily 04:30" --json )"
            uR"(-- -c "pwd; printf '<%s>' \"$@\"; exit 7" sh "a b" "")");
    ASSERT_EQ(created.Exit, 0) << created.Errors.toStdString();
    EXPECT_TRUE(created.Errors.contains(u"interactive"_s)) << "not honoured, so said";
    const auto job = created.Json().object();
    EXPECT_EQ(job["maxRunTime"_L1].toInt(), 300000);
    EXPECT_EQ(job["flags"_L1].toArray(), (QJsonArray{u"interactive"_s, u"hidden"_s}));
    EXPECT_EQ(job["lastRun"_L1], QJsonValue());
    EXPECT_EQ(run(u"create ÉTÉ --program sh").Exit, 1);
    EXPECT_EQ(run(u"list --json").Json().array().size(), 0);

    const auto ran = run(u"run été.job --wait");
    EXPECT_EQ(ran.Exit, 3);
    EXPECT_TRUE(ran.Errors.contains(u"code 7"_s));
    const auto after = run(u"show Été --json").Json().object();
    EXPECT_EQ(after["exitCode"_L1].toInt(), 7);
    EXPECT_EQ(after["status"_L1].toString(), u"SCHED_S_TASK_READY"_s);
    EXPECT_EQ(content("jobs/.zelmar01/runs/Été.job.out"), u"/usr\n<a b><>"_s);
    EXPECT_EQ(run(u"terminate Été").Exit, 1);

    expectDone(
        uR"(create k --program sh --trigger "once 2020-01-01T00:00" -- -c "sleep 0.3; kill -9 $PPID")");
    EXPECT_EQ(run(u"run k --wait").Exit, 3) << "its runner is killed";
    expectDone(u"delete k");

    write("jobs/damaged.job", u"damaged"_s);
    const auto all = run(u"list --all --json").Json().array();
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0].toObject()["error"_L1].toString(), u"SCHED_E_UNKNOWN_OBJECT_VERSION"_s);
    EXPECT_EQ(all[1].toObject()["name"_L1].toString(), u"Été"_s);
    EXPECT_EQ(run(u"show damaged").Exit, 1);
    std::ofstream(m_folder / "jobs/caf\xE9.job") << "not UTF-8";
    EXPECT_TRUE(run(u"list").Output.contains(u"caf\xFFFD\n  état : "_s)) << run(u"list").Output.toStdString();
    EXPECT_EQ(content("jobs/damaged.job"), u"damaged"_s);
    expectDone(u"delete Été");
    EXPECT_EQ(run(u"show Été").Exit, 1);
}

// Other programs write 0 where this one writes "none".
TEST_F(JobsTool, ShowsALimitInWords)
{
    const struct
    {
        std::uint32_t Limit;
        QString Words;
        QJsonValue Json;
    } cases[] = {{0, u"aucune"_s, {}}, {UnlimitedRunTime, u"aucune"_s, {}}, {300'000, u"5 min"_s, 300'000}};
    expectDone(u"create a --program true");
    const TJobFolder folder(m_folder / "jobs");
    for (const auto &row : cases) {
        TJob job;
        ASSERT_EQ(folder.Load(u"a.job", job), TaskResult::Ok);
        job.MaxRunTime = row.Limit;
        ASSERT_EQ(folder.Store(u"a.job", job), TaskResult::Ok);
        const auto shown = run(u"show a").Output;
        EXPECT_TRUE(shown.contains(u"durée maximale : %1\n"_s.arg(row.Words))) << shown.toStdString();
        EXPECT_EQ(run(u"show a --json").Json().object()["maxRunTime"_L1], row.Json);
    }
}

TEST_F(JobsTool, SaysWhichRunnerItMisses)
{
    m_environment << u"ZELMAR01_JOB_RUNNER="_s + path("none");
    const auto now = QDateTime::currentDateTimeUtc();
    ASSERT_EQ(run({u"create"_s, u"a"_s, u"--program"_s, u"true"_s, u"--trigger"_s,
                   u"once "_s + now.toString(u"yyyy-MM-ddTHH:mm"_s)})
                  .Exit,
              0);
    write("jobs/.zelmar01/ticks", u"last %1\n"_s.arg(now.toSecsSinceEpoch() - 120));
    for (const auto *line : {u"run a", u"tick"}) {
        const auto errors = run(line).Errors;
        EXPECT_TRUE(errors.contains(path("none"))) << errors.toStdString();
        EXPECT_TRUE(errors.contains(u"  remède : "_s)) << errors.toStdString();
    }
}

TEST_F(JobsTool, InstallsACronLineThatTicks)
{
    fake("crontab", "case $1 in\n"
                    "-l) cat table 2>/dev/null || { echo 'no crontab for you' >&2; exit 1; };;\n"
                    "-) cat > table;;\nesac");
    fake("systemctl", "exit 1");
    const auto folder = path("jobs 100% d'été");
    write("table", u"0 5 * * * other # not zelmar01-jobs line\n"_s);
    EXPECT_TRUE(run({u"install"_s, u"--print"_s, u"--folder"_s, folder}).Output.contains(u"* * * * *"_s));
    EXPECT_FALSE(content("table").contains(u"tick"_s));
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(run({u"install"_s, u"--folder"_s, folder}).Exit, 0);
    const auto lines = content("table").split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << content("table").toStdString();
    EXPECT_EQ(lines[0], u"0 5 * * * other # not zelmar01-jobs line"_s);

    // A job that is due this minute, and the line as cron gives it to a shell in its poor environment.
    const auto now = QDateTime::currentDateTimeUtc();
    ASSERT_EQ(run({u"create"_s, u"a"_s, u"--folder"_s, folder, u"--program"_s, u"sh"_s, u"--trigger"_s,
                   u"once "_s + now.toString(u"yyyy-MM-ddTHH:mm"_s), u"--"_s, u"-c"_s, u"echo x >> ran"_s})
                  .Exit,
              0);
    EXPECT_EQ(run({u"status"_s, u"--folder"_s, folder}).Exit, 3);
    write("jobs 100% d'été/.zelmar01/ticks", u"last %1\n"_s.arg(now.toSecsSinceEpoch() - 120));
    m_environment = {};
    const auto command = QString(lines[1]).mid(10).replace(u"\\%"_s, u"%"_s);
    const auto ticked = start(u"/bin/sh"_s, {u"-c"_s, command});
    EXPECT_EQ(ticked.Exit, 0);
    EXPECT_EQ((ticked.Output + ticked.Errors).toStdString(), "") << "cron would mail it";
    EXPECT_EQ(start(u"/bin/sh"_s, {u"-c"_s, command}).Exit, 0);
    for (int i = 0; i < 500 && content("home/ran").isEmpty(); ++i)
        start(u"/bin/sleep"_s, {u"0.01"_s});
    const auto status = run({u"status"_s, u"--json"_s, u"--folder"_s, folder});
    EXPECT_EQ(status.Exit, 0) << status.Errors.toStdString();
    const auto state = status.Json().object();
    EXPECT_TRUE(state["cron"_L1].toBool());
    EXPECT_EQ(state["events"_L1].toArray()[0].toObject()["event"_L1].toString(), u"started"_s);

    expectDone(u"uninstall");
    EXPECT_EQ(content("table"), u"0 5 * * * other # not zelmar01-jobs line\n"_s);
    fake("crontab", "echo 'you are not allowed' >&2; exit 1");
    EXPECT_EQ(run(u"install --cron").Exit, 1);
    EXPECT_EQ(content("table"), u"0 5 * * * other # not zelmar01-jobs line\n"_s);
}

TEST_F(JobsTool, LeavesTheBytesOfTheCronTableAlone)
{
    fake("crontab", "case $1 in -l) cat table;; -) cat > table;; esac");
    fake("systemctl", "exit 1");
    const std::string other = "0 5 * * * echo caf\xE9 # \xC3\xA9\n";
    std::ofstream(m_folder / "table", std::ios::binary) << other;
    expectDone(u"install --cron");
    expectDone(u"uninstall");
    std::ifstream table(m_folder / "table", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(table), {}), other);
}

TEST_F(JobsTool, InstallsATimerThatLetsJobsGoOn)
{
    fake("systemctl", "");
    fake("loginctl", "echo no");
    fake("crontab", "echo 'no crontab for you' >&2; exit 1");
    const auto installed = run({u"install"_s, u"--folder"_s, path("a \"b\" 5% $HOME")});
    EXPECT_EQ(installed.Exit, 0) << installed.Errors.toStdString();
    EXPECT_TRUE(installed.Output.contains(u"loginctl enable-linger"_s));
    const auto service = content("config/systemd/user/zelmar01-jobs.service");
    EXPECT_TRUE(service.contains(u"KillMode=process\n"_s));
    EXPECT_TRUE(service.contains(u"a \\\"b\\\" 5%% $$HOME\"\n"_s)) << service.toStdString();
    EXPECT_TRUE(content("config/systemd/user/zelmar01-jobs.timer").contains(u"OnCalendar=*-*-* *:*:00\n"_s));
    EXPECT_TRUE(content("calls").contains(u"systemctl --user enable --now zelmar01-jobs.timer\n"_s));
    EXPECT_TRUE(run(u"status --json").Json().object()["systemd"_L1].toBool());
    fake("loginctl", "echo yes");
    EXPECT_FALSE(run(u"install --systemd").Output.contains(u"enable-linger"_s));
    expectDone(u"uninstall");
    EXPECT_TRUE(content("calls").contains(u"systemctl --user disable --now zelmar01-jobs.timer\n"_s));
    EXPECT_FALSE(QFile::exists(path("config/systemd/user/zelmar01-jobs.timer")));

    fake("systemctl", "echo 'no bus' >&2; exit 1");
    const auto failed = run(u"install --systemd");
    EXPECT_EQ(failed.Exit, 1);
    EXPECT_TRUE(failed.Errors.contains(u"no bus"_s));
    EXPECT_FALSE(QFile::exists(path("config/systemd/user/zelmar01-jobs.timer")));
}

} // namespace
