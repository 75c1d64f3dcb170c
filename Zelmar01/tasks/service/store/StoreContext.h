#pragma once

#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>

namespace Zelmar01 {

/// What all objects of a job store share, and keep as long as one of them lives.
struct TStoreContext
{
    TStoreContext(TJobFolder folder, std::filesystem::path runner, std::function<TSeconds()> now,
                  std::function<TTimeZone()> readZone)
        : Folder(std::move(folder)), Runner(std::move(runner)), Now(std::move(now)),
          ReadZone(std::move(readZone))
    {
    }

    TJobFolder Folder;
    std::filesystem::path Runner;
    std::function<TSeconds()> Now;
    std::function<TTimeZone()> ReadZone;
    TTaskAllocator Allocator;

    /// The zone, which is read again after a second, not for each of ten thousand jobs.
    const TTimeZone &Zone()
    {
        const auto now = std::chrono::steady_clock::now();
        if (!m_zone || now >= m_zoneEnds) {
            m_zone = ReadZone();
            m_zoneEnds = now + std::chrono::seconds(1);
        }
        return *m_zone;
    }

    SYSTEMTIME LocalNow() { return SystemTimeFromSeconds(Zone().ToLocal(Now())); }

    /// A copy of a text for the caller, as the interfaces hand texts out.
    TTaskResult HandOut(std::u16string_view text, char16_t *&block)
    {
        auto *const copy = AllocText(Allocator, text);
        if (!copy)
            return TaskResult::OutOfMemory;
        block = copy;
        return TaskResult::Ok;
    }

private:
    std::optional<TTimeZone> m_zone;
    std::chrono::steady_clock::time_point m_zoneEnds;
};

} // namespace Zelmar01
