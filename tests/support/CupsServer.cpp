#include "CupsServer.h"

#include "TcpSink.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <netinet/in.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

pid_t start(std::vector<std::string> command, const std::filesystem::path &output, bool ownSession)
{
    const auto name = command.front();
    // An ordinary user's PATH lacks the administrator's commands.
    command.insert(command.begin(), {"/usr/bin/env", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"});
    std::vector<char *> arguments;
    arguments.reserve(command.size() + 1);
    for (auto &word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&files, 1, 2);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, ownSession ? POSIX_SPAWN_SETSID : 0);
    pid_t process = -1;
    const int error = posix_spawn(&process, arguments[0], &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0)
        throw std::runtime_error("cannot start " + name);
    return process;
}

std::string contents(const std::filesystem::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

} // namespace

CupsServer::CupsServer(const std::string &settings) : m_port(TcpListener().Port())
{
    namespace fs = std::filesystem;
    // The server's helpers run as another user.
    fs::permissions(m_folder.Path(), fs::perms(0755));
    for (const auto *name : {"spool/tmp", "cache", "state", "log", "bin/backend"})
        fs::create_directories(m_folder / name);
    fs::create_directory_symlink("/usr/lib/cups/daemon", m_folder / "bin/daemon");
    std::ofstream(m_folder / "bin/backend/sink") << R"(#!/bin/bash
# sink:/HOST/PORT takes a job's document as it is to a listening socket. Without arguments it would list
# devices.
[ $# -ge 5 ] || exit 0
cat -- "${6:--}" >"/dev/tcp${DEVICE_URI#sink:}"
)";
    fs::permissions(m_folder / "bin/backend/sink", fs::perms(0755));
    const auto root = m_folder.Path().string();
    std::ofstream(m_folder / "cups-files.conf")
        << "ServerRoot " << root << "\nServerBin " << root << "/bin"
        << "\nRequestRoot " << root << "/spool\nCacheDir " << root << "/cache\nStateDir " << root
        << "/state\nAccessLog " << root << "/log/access\nErrorLog " << root << "/log/error\nPageLog " << root
        << "/log/page\n";
    // As usual, a job belongs to its user; other than usual, anybody may set up queues.
    std::ofstream(m_folder / "cupsd.conf") << "Listen " << Address() << R"(
MultipleOperationTimeout 5
DirtyCleanInterval 0
ErrorPolicy abort-job
Browsing No
WebInterface No
<Policy default>
<Limit Send-Document Cancel-Job>
Require user @OWNER @SYSTEM
Order deny,allow
</Limit>
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
)" << settings;
    Start();
}

void CupsServer::Start()
{
    // It does not outlive a test that is killed.
    m_process = start({"setpriv", "--pdeathsig", "TERM", "cupsd", "-f", "-c", m_folder / "cupsd.conf", "-s",
                       m_folder / "cups-files.conf"},
                      m_folder / "output", true);
    if (!answersSoon()) {
        Kill();
        throw std::runtime_error("cupsd does not start: " + contents(m_folder / "output") +
                                 contents(m_folder / "log/error"));
    }
}

bool CupsServer::answersSoon()
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(m_port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (int attempt = 0; attempt < 1000 && !hasEnded(); ++attempt) {
        const int knock = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool answers =
            connect(knock, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
        close(knock);
        if (answers)
            return true;
        std::this_thread::sleep_for(10ms);
    }
    return false;
}

bool CupsServer::hasEnded()
{
    if (m_process > 0 && waitpid(m_process, nullptr, WNOHANG) != 0)
        m_process = -1;
    return m_process < 0;
}

void CupsServer::Stop()
{
    if (hasEnded())
        return;
    kill(m_process, SIGCONT);
    kill(m_process, SIGTERM);
    for (int attempt = 0; attempt < 500 && !hasEnded(); ++attempt)
        std::this_thread::sleep_for(10ms);
    Kill();
}

void CupsServer::Kill()
{
    if (hasEnded())
        return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
}

void CupsServer::Pause() const
{
    kill(m_process, SIGSTOP);
}

void CupsServer::Resume() const
{
    kill(m_process, SIGCONT);
}

void CupsServer::AddQueue(const std::string &name, int sinkPort)
{
    Run({"lpadmin", "-p", name, "-E", "-v", "sink:/127.0.0.1/" + std::to_string(sinkPort), "-m", "raw"});
}

std::string CupsServer::Run(const std::vector<std::string> &command) const
{
    auto words = command;
    words.insert(words.begin(), "CUPS_SERVER=" + Address());
    const auto output = m_folder / "command-output";
    int status = 0;
    waitpid(start(words, output, false), &status, 0);
    auto text = contents(output);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(command.front() + " failed: " + text);
    return text;
}

std::size_t CupsServer::Jobs(const std::string &queue, const std::string &which) const
{
    const auto list = Run({"lpstat", "-W", which, "-o", queue});
    return static_cast<std::size_t>(std::count(list.begin(), list.end(), '\n'));
}
