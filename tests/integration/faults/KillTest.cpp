// A process that is killed while it changes files: at each of its system calls, and at any moment. What a
// program then reads is the old or the new state, and what it leaves lying about goes with the next change.
// For databases see DatabaseFaultsTest.

#include "Changes.h"
#include "FaultyCalls.h"

#include <chrono>
#include <random>

namespace {

// Files that somebody left are taken for such when they are some hours old.
void makeOld(const std::filesystem::path &folder)
{
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            last_write_time(entry.path(),
                            std::filesystem::file_time_type::clock::now() - std::chrono::hours(5));
}

class Killed : public TWatchedChange
{
protected:
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
            isOver = InChild([&] {
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
        InChild(
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
