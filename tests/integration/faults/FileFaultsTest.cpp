// Every system call that the library makes on its files fails in turn. Whatever fails: what is there
// afterwards is the old or the new state, a failure is told with its cause, nothing stays open or locked, and
// nothing is left lying about.

#include "Changes.h"
#include "FaultyCalls.h"

namespace {

const char *nameOf(TFault fault)
{
    switch (fault) {
    case TFault::Refused:
        return "refused";
    case TFault::Lasting:
        return "refused from there on";
    case TFault::Short:
        return "short";
    default:
        return "disk full from there on";
    }
}

class FileFaults : public TWatchedChange
{
protected:
    // What the change came to when the call of this number met a fault; false when there is no such call.
    bool makeWith(TFault fault, int number)
    {
        const TempFolder folder;
        m_change.Prepare(folder.Path());
        const auto open = OpenFiles();
        std::string said, met;
        int count = 0;
        {
            const FaultyCalls calls(folder.Path(), fault, number);
            said = m_change.Make(folder.Path());
            met = calls.Met();
            count = calls.Count();
        }
        SCOPED_TRACE(met + ' ' + nameOf(fault) + (said.empty() ? "" : ": " + said));
        EXPECT_EQ(OpenFiles(), open);
        const auto now = m_change.Read(folder.Path());
        EXPECT_TRUE(now == m_after || !said.empty()) << "said to be made: " << now;
        EXPECT_TRUE(now == m_before || now == m_after || m_change.Allows(m_before, m_after, now)) << now;
        // What cannot be removed stays, and nothing else.
        const bool mayStay = met.starts_with("unlink ") || fault == TFault::Lasting;
        EXPECT_TRUE(mayStay || AreAmong(FilesBelow(folder.Path()), m_files)) << FilesBelow(folder.Path());
        if (m_change.MayBeRepeated || now != m_after) {
            EXPECT_EQ(m_change.Make(folder.Path()), "") << "what failed once fails again";
            EXPECT_EQ(m_change.Read(folder.Path()), m_after);
        }
        return number <= count;
    }
};

} // namespace

TEST_P(FileFaults, leaveTheOldOrTheNew)
{
    for (const auto fault : {TFault::Refused, TFault::Lasting, TFault::Short, TFault::DiskFull}) {
        int number = 1;
        while (makeWith(fault, number) && !HasFatalFailure())
            ++number;
        EXPECT_GT(number, 1);
    }
}

TEST_P(FileFaults, whatCannotBeReadIsNotTakenForSomethingElse)
{
    const TempFolder folder;
    m_change.Prepare(folder.Path());
    const auto open = OpenFiles();
    for (int number = 1;; ++number) {
        std::string now, met;
        {
            const FaultyCalls calls(folder.Path(), TFault::Refused, number);
            now = m_change.Read(folder.Path());
            met = calls.Met();
        }
        EXPECT_EQ(OpenFiles(), open);
        if (met.empty())
            break;
        EXPECT_TRUE(now == m_before || now.starts_with("error") || m_change.Allows(m_before, m_after, now))
            << met << ": " << now;
    }
    EXPECT_EQ(m_change.Read(folder.Path()), m_before);
}

INSTANTIATE_TEST_SUITE_P(Files, FileFaults, testing::ValuesIn(FileChanges()), NameOfChange);
