#include <Zelmar01/printing/CodeFile.h>

#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/printing/Notations.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <utility>

#ifdef _WIN32
#include <io.h>
#include <share.h>
#else
#include <sys/file.h>
#include <unistd.h>
#endif

namespace Zelmar01 {

namespace {

constexpr std::size_t lineLength = 75;
constexpr std::size_t contentLength = 72;
constexpr std::size_t writtenListColumns = 51; // with the ":" before the list
constexpr std::size_t writtenNameColumns = 21;
constexpr std::size_t longestReadableList = 48;
constexpr std::size_t longestPaddedList = writtenListColumns - 1;
constexpr std::string_view header = "DosPrintControlCodes";
constexpr std::string_view lineEnd = "*\r\n";

struct TLabel
{
    std::string_view Text;
    TPrinterType Type;
};
constexpr std::array<TLabel, 5> labels{
    {{"HPPCL", ptHPPCL}, {"Epson", ptEpson}, {"IBM", ptIBM}, {"User1", ptUser1}, {"Tiroir", ptTiroir}}};

// The codes in the order of the file, which is not that of the record, by their places in the record.
constexpr std::array<std::size_t, PrinterCodeCount> fileOrder{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                                                              12, 13, 14, 15, 16, 18, 17, 22, 19, 20, 21};

// The calls that differ between the systems. Files are locked from the opening to the closing: by the sharing
// mode on Windows, by an advisory lock elsewhere.
#ifdef _WIN32
int openToRead(const std::filesystem::path &file)
{
    int handle = -1;
    _wsopen_s(&handle, file.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT, _SH_DENYWR, 0);
    return handle;
}

int openToWrite(const std::filesystem::path &file)
{
    int handle = -1;
    _wsopen_s(&handle, file.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT, _SH_DENYRW,
              _S_IREAD | _S_IWRITE);
    return handle;
}

std::ptrdiff_t readSome(int handle, char *to, std::size_t size)
{
    return _read(handle, to, static_cast<unsigned>(size));
}

std::ptrdiff_t writeSome(int handle, const char *from, std::size_t size)
{
    return _write(handle, from, static_cast<unsigned>(size));
}

bool toDisk(int handle)
{
    return _commit(handle) == 0;
}

int closeHandle(int handle)
{
    return _close(handle);
}
#else
// Without O_NONBLOCK a FIFO in the place of the file would keep the caller waiting.
constexpr int openFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool lock(int handle, int operation)
{
    // A file system without locks is no reason to do without the file.
    return flock(handle, operation | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

int openToRead(const std::filesystem::path &file)
{
    const int handle = open(file.c_str(), O_RDONLY | openFlags);
    if (handle < 0 || lock(handle, LOCK_SH))
        return handle;
    close(handle);
    return -1;
}

int openToWrite(const std::filesystem::path &file)
{
    // Truncated once the lock is held and not before, so that no reader sees a file grow from nothing.
    const int handle = open(file.c_str(), O_WRONLY | O_CREAT | openFlags, 0666);
    if (handle < 0)
        return handle;
    struct stat status = {};
    if (lock(handle, LOCK_EX) && fstat(handle, &status) == 0 &&
        (!S_ISREG(status.st_mode) || ftruncate(handle, 0) == 0))
        return handle;
    const int error = errno;
    close(handle);
    errno = error;
    return -1;
}

std::ptrdiff_t readSome(int handle, char *to, std::size_t size)
{
    return read(handle, to, size);
}

std::ptrdiff_t writeSome(int handle, const char *from, std::size_t size)
{
    return write(handle, from, size);
}

bool toDisk(int handle)
{
    // Devices and some network file systems have nothing to bring to a disk.
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

int closeHandle(int handle)
{
    return close(handle);
}
#endif

class TFile
{
public:
    explicit TFile(int handle) : m_handle(handle) {}
    ~TFile() { Close(); }
    TFile(const TFile &) = delete;
    TFile &operator=(const TFile &) = delete;

    bool IsOpen() const { return m_handle >= 0; }
    int Handle() const { return m_handle; }
    bool Close() { return m_handle < 0 || closeHandle(std::exchange(m_handle, -1)) == 0; }

private:
    int m_handle;
};

// Reads lines of 75 bytes through a buffer.
class TLineReader
{
public:
    explicit TLineReader(int handle) : m_handle(handle) {}

    // The next line; none when fewer bytes are left.
    std::optional<std::string_view> Next()
    {
        if (m_end - m_at < lineLength && !fill())
            return std::nullopt;
        const std::string_view line(m_buffer.data() + m_at, lineLength);
        m_at += lineLength;
        return line;
    }

private:
    bool fill()
    {
        std::copy(m_buffer.begin() + m_at, m_buffer.begin() + m_end, m_buffer.begin());
        m_end -= std::exchange(m_at, 0);
        while (m_end < lineLength) {
            const auto count = readSome(m_handle, m_buffer.data() + m_end, m_buffer.size() - m_end);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return false;
            m_end += static_cast<std::size_t>(count);
        }
        return true;
    }

    int m_handle;
    std::array<char, 16384> m_buffer;
    std::size_t m_at = 0, m_end = 0;
};

std::string_view trimmed(std::string_view text)
{
    while (text.ends_with(' '))
        text.remove_suffix(1);
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return text;
}

bool equalWithoutCase(std::string_view a, std::string_view b)
{
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return upper(x) == upper(y); });
}

TPrinterType typeOfLabel(std::string_view text)
{
    const auto *label =
        std::find_if(labels.begin(), labels.end(), [&](const TLabel &l) { return l.Text == text; });
    return label == labels.end() ? ptUser1 : label->Type;
}

void takeCodeLine(std::string_view line, TPrinterCodeSet &set)
{
    // The list and the name share column 50.
    const std::string code = ASCIIListToStr(trimmed(line.substr(1, 49)));
    const std::string_view name = trimmed(line.substr(49, 15));
    const auto &fields = PrinterCodeFields();
    const auto *field = std::find_if(fields.begin(), fields.end(), [&](const TPrinterCodeField &candidate) {
        return equalWithoutCase(name, candidate.Name);
    });
    if (field != fields.end())
        set.*field->Code = TPrinterCode(code);
}

bool writeAll(int handle, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = writeSome(handle, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string padded(std::string_view text, std::size_t length, char with = ' ')
{
    std::string line(text);
    line.resize(std::max(length, line.size()), with);
    return line;
}

std::string utf8Path(const std::filesystem::path &file)
{
    const auto name = file.u8string();
    return {name.begin(), name.end()};
}

EInOutError fileError(TMessage message, const std::filesystem::path &file)
{
    const int error = errno;
    auto cause = CauseFromErrno(error, utf8Path(file));
    if (error == EWOULDBLOCK)
        cause.Remedy = Translate("Zelmar01", "le fichier est en cours d'utilisation par un autre programme");
    return EInOutError(MessageText(message), std::move(cause));
}

} // namespace

std::filesystem::path CodeFilePath(const std::filesystem::path &name)
{
    auto file = name;
    if (!file.has_extension())
        file += ".PCC";
    return file.has_parent_path() ? file : ApplicationDirectory() / file;
}

void LoadCodeFile(const std::filesystem::path &path, TPrinterCodes &codes)
{
    const TFile file(openToRead(path));
    if (!file.IsOpen())
        return;
    TLineReader lines(file.Handle());
    auto line = lines.Next();
    if (!line || !line->starts_with(header))
        return;
    auto type = ptTiroir;
    for (int number = 2; (line = lines.Next()); ++number) {
        if (line->front() == '#')
            type = typeOfLabel(trimmed(line->substr(1, 15)));
        else if (line->front() != ':')
            return;
        else
            try {
                takeCodeLine(*line, codes[type]);
            } catch (const EConvertError &error) {
                throw EConvertError(error.what(), {0,
                                                   Filled(Translate("Zelmar01", "%1 : ligne %2"),
                                                          {utf8Path(path), std::to_string(number)}),
                                                   {}});
            }
    }
}

bool WriteCodeLine(int handle, std::string_view key, std::string_view code)
{
    return writeAll(handle, padded(":" + StrToASCIIList(code), writtenListColumns) +
                                padded(key, writtenNameColumns) + std::string(lineEnd));
}

std::vector<TUnreadableCode> SaveCodeFile(const std::filesystem::path &path, const TPrinterCodes &codes)
{
    TFile file(openToWrite(path));
    if (!file.IsOpen())
        throw fileError(TMessage::NoRightToCreate, path);
    if (!writeAll(file.Handle(), padded(header, contentLength) + std::string(lineEnd)))
        throw fileError(TMessage::DiskFull, path);

    std::vector<TUnreadableCode> unreadable;
    for (const auto &label : labels) {
        bool written =
            writeAll(file.Handle(),
                     padded(padded("#" + std::string(label.Text), writtenNameColumns), contentLength, '-') +
                         std::string(lineEnd));
        for (const auto place : fileOrder) {
            const auto &field = PrinterCodeFields()[place];
            const TPrinterCode &code = codes[label.Type].*field.Code;
            written = written && WriteCodeLine(file.Handle(), field.Name, code);
            if (!written)
                throw fileError(TMessage::DiskFull, path);
            if (const auto length = StrToASCIIList(code).size(); length > longestReadableList)
                unreadable.push_back({label.Type, field.Name, length, length > longestPaddedList});
        }
    }
    if (!toDisk(file.Handle()) || !file.Close())
        throw fileError(TMessage::DiskFull, path);
    return unreadable;
}

} // namespace Zelmar01
