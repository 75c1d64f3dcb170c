#include <Zelmar01/tasks/service/store/RunFiles.h>

#include <Zelmar01/tasks/service/store/PosixResult.h>

#include <cerrno>
#include <chrono>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace Zelmar01 {

namespace {

// For a runner that has written all it had to and is about to end.
constexpr int claimAttempts = 500;

struct flock wholeFile(short kind)
{
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

TRunFiles::TRunFiles(const TJobFolder &folder, std::u16string_view file)
    : m_folder(folder), m_base(folder.Side() / "runs" / PathFromText(file))
{
}

TRunRecord TRunFiles::Read() const
{
    TRunRecord record;
    std::string text;
    if (Failed(ReadWholeFile(fileOf(".run"), text)))
        return record;
    int phase = 0;
    TSeconds handled = 0;
    std::istringstream words(text);
    if (words >> phase >> handled && phase >= TRunRecord::AtRest && phase <= TRunRecord::Running) {
        record = {static_cast<TRunRecord::TPhase>(phase), handled, {}};
        words >> record.BootId;
    }
    return record;
}

TTaskResult TRunFiles::Write(const TRunRecord &record) const
{
    if (const auto result = MakePrivateFolder(m_base.parent_path()); Failed(result))
        return result;
    return m_folder.StoreSide(fileOf(".run"), std::to_string(record.Phase) + ' ' +
                                                  std::to_string(record.Handled) + ' ' + record.BootId +
                                                  '\n');
}

TTaskResult TRunFiles::Rest() const
{
    auto record = Read();
    record.Phase = TRunRecord::AtRest;
    return Write(record);
}

TTaskResult TRunFiles::Claim() const
{
    if (const auto result = MakePrivateFolder(m_base.parent_path()); Failed(result))
        return result;
    // Never closed: with any descriptor of this file the claim would go.
    const int file = open(fileOf(".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0)
        return ResultFromErrno(errno);
    const bool isFree = Read().Phase != TRunRecord::Running;
    for (int attempt = 0; attempt < claimAttempts; ++attempt) {
        auto lock = wholeFile(F_WRLCK);
        if (fcntl(file, F_SETLK, &lock) == 0)
            return TaskResult::Ok;
        if (errno != EAGAIN && errno != EACCES)
            return ResultFromErrno(errno);
        if (!isFree)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return TaskResult::AlreadyRunning;
}

std::optional<pid_t> TRunFiles::Runner() const
{
    const int file = open(fileOf(".lock").c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return std::nullopt;
    auto lock = wholeFile(F_WRLCK);
    const bool isKnown = fcntl(file, F_GETLK, &lock) == 0;
    close(file);
    return isKnown && lock.l_type != F_UNLCK ? std::optional(lock.l_pid) : std::nullopt;
}

std::filesystem::path TRunFiles::OutputFile() const
{
    return fileOf(".out");
}

void TRunFiles::Forget() const
{
    unlink(fileOf(".run").c_str());
    unlink(fileOf(".out").c_str());
    if (!Runner())
        unlink(fileOf(".lock").c_str());
}

std::filesystem::path TRunFiles::fileOf(const char *ending) const
{
    auto file = m_base;
    file += ending;
    return file;
}

} // namespace Zelmar01
