#include "TabFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

using TabControl = TabFixture;

const QStringList four{u"Or"_s, u"Argent"_s, u"Platine"_s, u"Acier"_s};

} // namespace

TEST_F(TabControl, refusesWhatCannotBeSelected)
{
    auto &control = tabs(four);
    control.SetTabEnabled(2, false);
    show();
    const QSignalSpy told(&control, &TExtCustomTab::OnChange);
    const struct
    {
        int Wanted, Got, Told;
    } cases[] = {{0, 0, 0}, {10, 0, 0}, {4, 0, 0}, {2, 0, 0}, {3, 3, 1}, {-5, 3, 1}, {-1, -1, 2}, {1, 1, 3}};
    for (const auto &[wanted, got, count] : cases) {
        control.SetTabIndex(wanted);
        EXPECT_EQ(control.GetTabIndex(), got) << wanted;
        EXPECT_EQ(told.size(), count) << wanted;
    }
    control.SetTabEnabled(-1, false);
    control.SetTabIndex(-1);
    EXPECT_EQ(control.GetTabIndex(), 1) << "none can be disabled, too";
    QObject::connect(&control, &TExtCustomTab::OnChanging, &control,
                     [](QWidget *, bool &allow) { allow = false; });
    control.SetTabIndex(3);
    EXPECT_EQ(control.GetTabIndex(), 1);
}

TEST_F(TabControl, whoIsAskedMayChangeTheTabs)
{
    auto &control = tabs(four);
    show();
    std::function<void()> change;
    QObject::connect(&control, &TExtCustomTab::OnChanging, &control, [&] { change(); });
    const QSignalSpy told(&control, &TExtCustomTab::OnChange);
    const std::function<void()> changes[] = {[&] { control.DeleteTab(1); },
                                             [&] { control.SetTab(2, u"Laiton"_s); },
                                             [&] { control.SetTabEnabled(2, false); }};
    for (const auto &one : changes) {
        change = one;
        control.SetTabIndex(2);
        EXPECT_EQ(control.GetTabIndex(), 0);
        EXPECT_EQ(told.size(), 0);
    }
}

TEST_F(TabControl, disabledPositionsStayWhereTheyAre)
{
    auto &control = tabs(four);
    show();
    control.SetTabEnabled(5, false);
    control.SetTabEnabled(2, false);
    control.DeleteTab(0);
    EXPECT_FALSE(control.TabEnabled(2));
    EXPECT_EQ(control.Tabs()[2], u"Acier"_s);
    click(control, 2);
    EXPECT_EQ(control.GetTabIndex(), -1);
    click(control, 1);
    EXPECT_EQ(control.GetTabIndex(), 1);

    control.setTabs({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    EXPECT_EQ(control.GetTabIndex(), 1);
    control.InsertTab(99, u"f"_s);
    control.SetTabIndex(5);
    EXPECT_EQ(control.GetTabIndex(), 1);
    control.SetTabEnabled(5, true);
    control.SetTabIndex(5);
    EXPECT_EQ(control.GetTabIndex(), 5);
}

TEST_F(TabControl, theSelectionStaysWithItsTab)
{
    auto &control = tabs({});
    EXPECT_EQ(control.GetTabIndex(), -1);
    control.InsertTab(0, u"Or"_s);
    EXPECT_EQ(control.GetTabIndex(), 0) << "the first one that comes";
    control.InsertTab(0, u"Argent"_s);
    EXPECT_EQ(control.GetTabIndex(), 1);
    control.DeleteTab(0);
    EXPECT_EQ(control.GetTabIndex(), 0);
    control.DeleteTab(0);
    EXPECT_EQ(control.GetTabIndex(), -1);
    control.setTabs(four);
    control.SetTabIndex(3);
    control.setTabs(four.mid(0, 2));
    EXPECT_EQ(control.GetTabIndex(), -1);
    control.DeleteTab(7);
    control.SetTab(7, u"?"_s);
    EXPECT_EQ(control.TabCount(), 2);
}

TEST_F(TabControl, aFormMaySelectBeforeThereAreTabs)
{
    // Tab 2 is disabled, which a form does not ask about.
    const struct
    {
        int Wanted, Initial, Got;
    } cases[] = {{2, -1, 2}, {9, -1, 0}, {-1, -1, -1}, {1, 2, 2}, {1, 9, 1}};
    for (const auto &[wanted, initial, got] : cases) {
        TExtTabControl control;
        control.setTabIndex(wanted);
        control.setInitialTab(initial);
        control.setTabs(four);
        control.SetTabEnabled(2, false);
        const QSignalSpy told(&control, &TExtCustomTab::OnChange);
        control.show();
        EXPECT_EQ(control.GetTabIndex(), got);
        EXPECT_EQ(told.size(), 0);
    }
}

TEST_F(TabControl, aLayoutHasThePageArea)
{
    auto &control = tabs(four);
    auto *layout = new QVBoxLayout(&control);
    auto *edit = new QLineEdit;
    layout->setContentsMargins({});
    layout->addWidget(edit);
    show();
    EXPECT_TRUE(ToQRect(control.DisplayRect()).contains(edit->geometry()));
    control.setTabPosition(tabPosLeft);
    settle();
    EXPECT_TRUE(ToQRect(control.DisplayRect()).contains(edit->geometry()));
    EXPECT_GT(control.minimumSizeHint().width(), 80 + edit->minimumSizeHint().width());
}
