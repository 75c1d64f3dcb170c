#include "PostgresServer.h"

#include "TcpSink.h"

#include <QDir>

#include <csignal>
#include <fstream>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace {

// Debian keeps every version's programs in a folder of its own, off the PATH.
QString folderOfPrograms()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    const auto names = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    if (names.isEmpty())
        throw std::runtime_error("the package postgresql is missing");
    return versions.filePath(names.front() + "/bin/");
}

void give(const std::filesystem::path &file)
{
    if (geteuid() != 0)
        return;
    const auto *user = getpwnam("postgres");
    if (!user || chown(file.c_str(), user->pw_uid, user->pw_gid) != 0)
        throw std::runtime_error("cannot give a folder to the server's user");
}

QString run(QStringList command)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    const auto program = command.takeFirst();
    process.start(program, command);
    process.waitForFinished(60'000);
    const auto output = QString::fromUtf8(process.readAll());
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
               ? QString()
               : program + " failed: " + output + process.errorString();
}

} // namespace

PostgresServer::PostgresServer() : m_programs(folderOfPrograms()), m_port(TcpListener().Port())
{
    namespace fs = std::filesystem;
    fs::permissions(m_folder.Path(), fs::perms(0755));
    fs::create_directory(m_folder / "data");
    const auto passwordFile = m_folder / "password";
    std::ofstream(passwordFile) << Password << '\n';
    give(m_folder / "data");
    give(passwordFile);
    const auto error = run(asItsUser(QStringLiteral("initdb"),
                                     {QStringLiteral("--auth=scram-sha-256"), QStringLiteral("--no-sync"),
                                      QStringLiteral("--locale=C.UTF-8"), QStringLiteral("--encoding=UTF8"),
                                      QStringLiteral("--username=") + UserName,
                                      "--pwfile=" + QString::fromStdString(passwordFile)}));
    if (!error.isEmpty())
        throw std::runtime_error(error.toStdString());
    Start();
}

// Everything works on its data folder, and does not outlive a test that is killed.
QStringList PostgresServer::asItsUser(const QString &program, const QStringList &arguments) const
{
    QStringList command{QStringLiteral("setpriv"), QStringLiteral("--pdeathsig"), QStringLiteral("INT")};
    if (geteuid() == 0)
        command << QStringLiteral("--reuid=postgres") << QStringLiteral("--regid=postgres")
                << QStringLiteral("--clear-groups");
    return command << m_programs + program << QStringLiteral("-D")
                   << QString::fromStdString(m_folder / "data") << arguments;
}

void PostgresServer::Start()
{
    const auto port = QString::number(m_port);
    auto command =
        asItsUser(QStringLiteral("postgres"),
                  {QStringLiteral("-p"), port, QStringLiteral("-clisten_addresses=127.0.0.1"),
                   QStringLiteral("-cunix_socket_directories="), QStringLiteral("-cfsync=off"),
                   // Another zone than the test's, and another country than the messages that are looked for.
                   QStringLiteral("-ctimezone=America/New_York"), QStringLiteral("-clc_messages=C")});
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    const auto program = command.takeFirst();
    m_process.start(program, command);
    const QStringList knock{m_programs + "pg_isready",   QStringLiteral("-q"), QStringLiteral("-h"),
                            QStringLiteral("127.0.0.1"), QStringLiteral("-p"), port};
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (run(knock).isEmpty())
            return;
        if (m_process.waitForFinished(20))
            break;
    }
    throw std::runtime_error("postgres does not start: " + m_process.readAll().toStdString());
}

void PostgresServer::Kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    kill(static_cast<pid_t>(m_process.processId()), SIGQUIT);
    if (!m_process.waitForFinished(10'000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}
