#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/package/Package.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

class StartUpTest : public testing::Test
{
protected:
    void TearDown() override { SetExceptionDisplay({}); }

    // What the units do, in order: "+a" starts, "-a" finishes. The one that fails raises in its place.
    TStartUp package()
    {
        std::vector<TUnit> units;
        for (const std::string name : {"a", "b", "c", "d"}) {
            units.push_back({name, [this, name] { note("+" + name); }, [this, name] { note("-" + name); }});
        }
        units.push_back({"without work", {}, {}});
        return TStartUp(std::move(units));
    }
    void note(const std::string &what)
    {
        if (what == m_failing)
            throw EInvalidOperation(what);
        m_log += what;
    }
    std::string takeLog() { return std::exchange(m_log, {}); }

    std::string m_failing;

private:
    std::string m_log;
};

} // namespace

TEST_F(StartUpTest, LoadingTwiceStartsOnceAndTheLastUnloadFinishesInReverse)
{
    auto units = package();
    units.Load();
    EXPECT_EQ(takeLog(), "+a+b+c+d");
    units.Load();
    units.Unload();
    EXPECT_EQ(takeLog(), "");
    units.Unload();
    EXPECT_EQ(takeLog(), "-d-c-b-a");
    units.Unload();
    EXPECT_EQ(takeLog(), "");
    units.Load();
    EXPECT_EQ(takeLog(), "+a+b+c+d");
}

TEST_F(StartUpTest, AStartThatFailsUndoesThoseBefore)
{
    struct TCase
    {
        const char *Failing, *Log;
    };
    for (const auto &[failing, log] : {TCase{"+a", ""}, {"+c", "+a+b-b-a"}, {"+d", "+a+b+c-c-b-a"}}) {
        SCOPED_TRACE(failing);
        auto units = package();
        m_failing = failing;
        EXPECT_THROW(units.Load(), EInvalidOperation);
        EXPECT_EQ(takeLog(), log);
        units.Unload();
        EXPECT_EQ(takeLog(), "");
        m_failing.clear();
        units.Load();
        EXPECT_EQ(takeLog(), "+a+b+c+d");
    }
}

TEST_F(StartUpTest, AFinishThatFailsIsShownAndTheOthersFinish)
{
    std::string shown;
    SetExceptionDisplay([&](const std::exception &error) { shown += error.what(); });
    auto units = package();
    units.Load();
    takeLog();
    m_failing = "-c";
    units.Unload();
    EXPECT_EQ(takeLog(), "-d-b-a");
    EXPECT_EQ(shown, "-c");
}

TEST_F(StartUpTest, ThePackageCountsItsUnitsInTheirOrder)
{
    const auto &units = TPackage::StartUp();
    std::string names;
    for (const auto &unit : units.Units())
        names += unit.Name + ' ';
    EXPECT_EQ(names,
              "PrnCode_fm DosPrint zmCheckBox zmCurrency zmDateEdit zmGauges zmLookUpEd zmMemo zmPickEdit "
              "zmSpinEdit zmTextEdit ExtPage LabelURL MSTask NumEcran saUtils saTask saDialogs "
              "saRegistration CheckListBoxFK TreeViewDescr ComboBoxFk zmImage zmGrid ");
    const auto expectCounts = [&](int count) {
        for (std::size_t unit = 0; unit < units.Units().size(); ++unit)
            EXPECT_EQ(units.Count(unit), count) << units.Units()[unit].Name;
    };
    {
        const TPackage host;
        expectCounts(1);
        const TPackage plugin;
        expectCounts(2);
    }
    expectCounts(0);
}
