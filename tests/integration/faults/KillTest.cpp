// A process that is killed while it changes files: at each of its system calls, and at any moment. What a
// program then reads is the old or the new state, and what it leaves lying about goes with the next change.

#include "Changes.h"
#include "FaultyCalls.h"

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace {

// Does something in a process of its own; true when that came to its end.
template<class Work>
bool inChild(Work work, std::chrono::microseconds life = std::chrono::hours(1))
{
    const auto child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    if (life < std::chrono::seconds(1)) {
        std::this_thread::sleep_for(life);
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status);
}

// Files that somebody left are taken for such when they are some hours old.
void makeOld(const std::filesystem::path &folder)
{
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            last_write_time(entry.path(),
                            std::filesystem::file_time_type::clock::now() - std::chrono::hours(5));
}

class Killed : public testing::TestWithParam<TChange>
{
protected:
    Killed()
    {
        const TempFolder folder;
        m_change.Prepare(folder.Path());
        m_before = m_change.Read(folder.Path());
        m_files = FilesBelow(folder.Path());
        m_change.Make(folder.Path());
        m_after = m_change.Read(folder.Path());
        m_files += FilesBelow(folder.Path());
    }

    void expectWhole(const TempFolder &folder)
    {
        const auto now = m_change.Read(folder.Path());
        EXPECT_TRUE(now == m_before || now == m_after || m_change.Allows(m_before, m_after, now)) << now;
        if (!m_change.MayBeRepeated && now == m_after)
            return;
        makeOld(folder.Path());
        EXPECT_EQ(m_change.Make(folder.Path()), "");
        EXPECT_EQ(m_change.Read(folder.Path()), m_after);
        EXPECT_TRUE(AreAmong(FilesBelow(folder.Path()), m_files)) << FilesBelow(folder.Path());
    }

    const TChange m_change = GetParam();
    std::string m_before, m_after, m_files;
};

} // namespace

TEST_P(Killed, atEachCall)
{
    for (const auto fault : {TFault::Killed, TFault::KilledBehind}) {
        bool isOver = false;
        for (int number = 1; !isOver; ++number) {
            SCOPED_TRACE((fault == TFault::Killed ? "before call " : "behind call ") +
                         std::to_string(number));
            const TempFolder folder;
            m_change.Prepare(folder.Path());
            isOver = inChild([&] {
                const FaultyCalls calls(folder.Path(), fault, number);
                m_change.Make(folder.Path());
            });
            expectWhole(folder);
        }
    }
}

TEST_P(Killed, atAnyMoment)
{
    std::mt19937 random(4711);
    const TempFolder folder;
    m_change.Prepare(folder.Path());
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        const auto life = std::chrono::microseconds(500 + random() % 8000);
        inChild(
            [&] {
                for (;;)
                    m_change.Make(folder.Path());
            },
            life);
        const auto now = m_change.Read(folder.Path());
        EXPECT_TRUE(now == m_before || now == m_after || !m_change.MayBeRepeated ||
                    m_change.Allows(m_before, m_after, now))
            << now;
    }
    if (m_change.MayBeRepeated)
        expectWhole(folder);
}

INSTANTIATE_TEST_SUITE_P(Files, Killed, testing::ValuesIn(FileChanges()), NameOfChange);
