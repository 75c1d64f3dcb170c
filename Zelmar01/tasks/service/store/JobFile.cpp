#include <Zelmar01/tasks/service/store/JobFile.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <random>

namespace Zelmar01 {

namespace {

// Numbers and records lie in the file as they do in memory.
static_assert(std::endian::native == std::endian::little);

constexpr std::uint16_t fileVersion = 1;
constexpr std::size_t fixedSize = 68;
constexpr std::size_t applicationNameOffset = fixedSize + sizeof(std::uint16_t);
constexpr std::size_t signatureSize = 68;
constexpr std::size_t maxCount = 0xFFFF;

// Takes values off the front of the bytes; the first failure stays and whatever follows is empty.
class TReader
{
public:
    explicit TReader(std::string_view bytes) : m_bytes(bytes) {}

    std::size_t Position() const { return m_at; }
    std::size_t Left() const { return m_bytes.size() - m_at; }
    TTaskResult Result() const { return m_result; }

    void Fail(TTaskResult result)
    {
        if (Succeeded(m_result))
            m_result = result;
        m_at = m_bytes.size();
    }

    template<class T>
    void Read(T &value)
    {
        Read(&value, sizeof value);
    }

    void Read(void *target, std::size_t size)
    {
        if (size > Left())
            return Fail(TaskResult::HandleEndOfFile);
        std::memcpy(target, m_bytes.data() + m_at, size);
        m_at += size;
    }

    template<class T>
    T Take()
    {
        T value{};
        Read(value);
        return value;
    }

    // A count, and so many elements.
    template<class T>
    void ReadCounted(std::vector<T> &elements)
    {
        const auto count = Take<std::uint16_t>();
        if (count * sizeof(T) > Left())
            return Fail(TaskResult::HandleEndOfFile);
        elements.resize(count);
        if (count > 0)
            Read(elements.data(), count * sizeof(T));
    }

    void ReadText(TJobText &text)
    {
        const auto count = Take<std::uint16_t>();
        if (count == 0) {
            text.reset();
            return;
        }
        if (count * sizeof(char16_t) > Left())
            return Fail(TaskResult::HandleEndOfFile);
        text.emplace(count, u'\0');
        Read(text->data(), count * sizeof(char16_t));
        // The count includes the end of the text, and there is only one end.
        if (text->find(u'\0') != text->size() - 1)
            return Fail(TaskResult::InvalidData);
        text->pop_back();
    }

private:
    std::string_view m_bytes;
    std::size_t m_at = 0;
    TTaskResult m_result = TaskResult::Ok;
};

class TWriter
{
public:
    template<class T>
    void Write(const T &value)
    {
        Write(&value, sizeof value);
    }

    void Write(const void *source, std::size_t size)
    {
        if (size > 0)
            Bytes.append(static_cast<const char *>(source), size);
    }

    template<class T>
    void WriteCounted(const std::vector<T> &elements)
    {
        Write(static_cast<std::uint16_t>(elements.size()));
        Write(elements.data(), elements.size() * sizeof(T));
    }

    void WriteText(const TJobText &text)
    {
        Write(static_cast<std::uint16_t>(text ? text->size() + 1 : 0));
        if (text)
            Write(text->c_str(), (text->size() + 1) * sizeof(char16_t));
    }

    std::string Bytes;
};

// The fields of the fixed part that are no more than numbers, in their order; `io` reads or writes each.
template<class TJobValue, class TField>
void eachNumber(TJobValue &job, TField io)
{
    io(job.ErrorRetryCount);
    io(job.ErrorRetryInterval);
    io(job.IdleDeadline);
    io(job.IdleWait);
    io(job.Priority);
    io(job.MaxRunTime);
    io(job.ExitCode);
    io(job.Status);
    io(job.Flags);
    io(job.LastRun);
    io(job.RunningInstances);
}

template<class TJobValue, class TField>
void eachText(TJobValue &job, TField io)
{
    io(job.ApplicationName);
    io(job.Parameters);
    io(job.WorkingDirectory);
    io(job.Creator);
    io(job.Comment);
}

void readReserved(TReader &reader, std::optional<TJobReserved> &reserved)
{
    switch (reader.Take<std::uint16_t>()) {
    case 0:
        reserved.reset();
        break;
    case sizeof(TJobReserved):
        reserved = reader.Take<TJobReserved>();
        break;
    default:
        reader.Fail(TaskResult::InvalidData);
    }
}

// All that is left; it must be a signature or, when it breaks off, begin like one.
void readSignature(TReader &reader, std::vector<std::uint8_t> &signature)
{
    constexpr std::array<std::uint8_t, 4> start{1, 0, 1, 0}; // its version, and that of its oldest readers
    signature.resize(reader.Left());
    if (signature.empty())
        return;
    reader.Read(signature.data(), signature.size());
    const auto length = std::min(signature.size(), start.size());
    if (signature.size() > signatureSize ||
        (signature.size() < signatureSize &&
         !std::equal(start.begin(), start.begin() + static_cast<std::ptrdiff_t>(length), signature.begin())))
        reader.Fail(TaskResult::InvalidData);
}

std::size_t textSize(const TJobText &text)
{
    return text ? text->size() : 0;
}

bool canBeWritten(const TJob &job)
{
    bool fits = job.UserData.size() <= maxCount && job.Triggers.size() <= maxCount;
    eachText(job, [&](const TJobText &text) {
        fits = fits && textSize(text) <= MaxJobText && (!text || text->find(u'\0') == text->npos);
    });
    return fits;
}

} // namespace

TJob NewJob()
{
    TJob job;
    std::random_device random;
    std::array<std::uint32_t, 4> words;
    std::generate(words.begin(), words.end(), [&] { return static_cast<std::uint32_t>(random()); });
    job.Uuid = std::bit_cast<TGuid>(words);
    // Version 4, made of random numbers.
    job.Uuid.Data3 = static_cast<std::uint16_t>((job.Uuid.Data3 & 0x0FFF) | 0x4000);
    job.Uuid.Data4[0] = static_cast<std::uint8_t>((job.Uuid.Data4[0] & 0x3F) | 0x80);
    return job;
}

TTaskResult ReadJobFile(std::string_view bytes, TJob &job)
{
    TReader reader(bytes);
    TJob read;
    reader.Read(read.ProductVersion);
    if (reader.Take<std::uint16_t>() != fileVersion)
        reader.Fail(TaskResult::UnknownObjectVersion);
    reader.Read(read.Uuid);
    if (reader.Take<std::uint16_t>() != applicationNameOffset)
        reader.Fail(TaskResult::InvalidData);
    const auto triggerOffset = reader.Take<std::uint16_t>();
    eachNumber(read, [&](auto &number) { reader.Read(number); });
    eachText(read, [&](TJobText &text) { reader.ReadText(text); });
    reader.ReadCounted(read.UserData);
    readReserved(reader, read.Reserved);
    read.TriggerOffsetBias = static_cast<std::uint16_t>(triggerOffset - reader.Position());
    reader.ReadCounted(read.Triggers);
    for (const auto &trigger : read.Triggers)
        if (trigger.cbTriggerSize != sizeof trigger)
            reader.Fail(TaskResult::InvalidData);
    readSignature(reader, read.Signature);
    if (Succeeded(reader.Result()))
        job = std::move(read);
    return reader.Result();
}

TTaskResult WriteJobFile(const TJob &job, std::string &bytes)
{
    if (!canBeWritten(job))
        return TaskResult::InvalidArgument;
    TWriter writer;
    writer.Write(job.ProductVersion);
    writer.Write(fileVersion);
    writer.Write(job.Uuid);
    writer.Write(static_cast<std::uint16_t>(applicationNameOffset));
    const auto triggerOffsetAt = writer.Bytes.size();
    writer.Write(std::uint16_t{0});
    eachNumber(job, [&](const auto &number) { writer.Write(number); });
    eachText(job, [&](const TJobText &text) { writer.WriteText(text); });
    writer.WriteCounted(job.UserData);
    writer.Write(static_cast<std::uint16_t>(job.Reserved ? sizeof *job.Reserved : 0));
    if (job.Reserved)
        writer.Write(*job.Reserved);
    const auto triggerOffset = static_cast<std::uint16_t>(writer.Bytes.size() + job.TriggerOffsetBias);
    std::memcpy(writer.Bytes.data() + triggerOffsetAt, &triggerOffset, sizeof triggerOffset);
    writer.WriteCounted(job.Triggers);
    writer.Write(job.Signature.data(), job.Signature.size());
    bytes = std::move(writer.Bytes);
    return TaskResult::Ok;
}

} // namespace Zelmar01
