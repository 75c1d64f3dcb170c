#include "TabFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

const QStringList four{u"&Vente"_s, u"&Fiche"_s, u"&Stock"_s, u"&Clients"_s};

class PageControl : public TabFixture
{
protected:
    static std::string errorOf(const TExtPageControl &control, int tab)
    {
        try {
            control.GetPageIndexByTabIndex(tab);
        } catch (const EExtPageInvalidCall &error) {
            return error.what();
        }
        return {};
    }
};

} // namespace

TEST_F(PageControl, hiddenTabsLeaveTheNumbersOfPagesBehind)
{
    auto &control = pages(four);
    control.setObjectName(u"onglets"_s);
    control.Pages(1)->setTabVisible(false);
    EXPECT_EQ(control.GetPageIndexByTabIndex(0), 0);
    EXPECT_EQ(control.GetPageIndexByTabIndex(1), 2);
    EXPECT_EQ(control.GetPageIndexByTabIndex(2), 3);
    EXPECT_EQ(control.Pages(1)->TabIndex(), -1);
    EXPECT_EQ(errorOf(control, 3),
              "Function GetPageIndexByTabIndex of component onglets of class TExtPageControl was called with "
              "an invalid parameter (CurrentTabIndex = 3).");
    EXPECT_NE(errorOf(control, -1), "") << "although the page without a tab has that index";
}

TEST_F(PageControl, nativeWindowsOfOtherPagesGoAndTheirContentsStay)
{
    auto &control = pages(four);
    auto *edit = new QLineEdit(control.Pages(1));
    edit->setText(u"Bague or"_s);
    show();
    control.Pages(0)->winId();
    control.Pages(1)->winId();
    control.DestroyAllOtherSheetHandles();
    EXPECT_NE(control.Pages(0)->internalWinId(), 0U);
    EXPECT_EQ(control.Pages(1)->internalWinId(), 0U);
    control.SetActivePageIndex(1);
    settle();
    EXPECT_TRUE(edit->isVisible());
    QTest::keyClicks(edit, u" 18"_s);
    EXPECT_EQ(edit->text(), u"Bague or 18"_s);
}

TEST_F(PageControl, whoRefusesToLeaveAPageStaysThere)
{
    auto &control = pages(four);
    auto *first = new QLineEdit(control.Pages(0));
    new QLineEdit(control.Pages(1));
    show();
    first->setFocus();
    QObject::connect(qApp, &QApplication::focusChanged, &control, [&](const QWidget *old) {
        if (old == first)
            control.SetActivePageIndex(0);
    });
    const QSignalSpy told(&control, &TExtCustomTab::OnChange);
    click(control, 1);
    EXPECT_EQ(control.ActivePageIndex(), 0);
    EXPECT_EQ(control.TabIndex(), 0);
    for (int page = 0; page < 4; ++page)
        EXPECT_EQ(control.Pages(page)->isVisible(), page == 0) << page;
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(told.size(), 1) << "of the way back";
}

TEST_F(PageControl, theNextEnabledPageMayHaveNoTab)
{
    // Page 1 is disabled, page 2 has no tab.
    auto &control = pages({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    control.Pages(1)->setEnabled(false);
    control.Pages(2)->setTabVisible(false);
    const struct
    {
        int From;
        bool Forward, Wrap;
        int To;
    } cases[] = {{0, true, false, 2}, {4, true, false, 4},  {4, true, true, 0},
                 {2, false, true, 0}, {0, false, false, 0}, {0, false, true, 4}};
    for (const auto &[from, forward, wrap, to] : cases) {
        control.SetActivePageIndex(from);
        control.SelectNextEnabledPage(forward, wrap);
        EXPECT_EQ(control.ActivePageIndex(), to) << from << forward << wrap;
    }
    for (int page = 0; page < 5; ++page)
        control.Pages(page)->setEnabled(page == 4);
    control.SelectNextEnabledPage(true, true);
    EXPECT_EQ(control.ActivePageIndex(), 4);
}

TEST_F(PageControl, theActivePageIsTheOnlyOneSeenAndFillsThePageArea)
{
    auto &control = pages(four);
    show();
    for (const int page : {2, 0, 3}) {
        control.SetActivePageIndex(page);
        for (int other = 0; other < 4; ++other)
            EXPECT_EQ(control.Pages(other)->isVisible(), other == page);
    }
    control.setTabHeight(50);
    control.resize(380, 200);
    EXPECT_EQ(control.Pages(3)->geometry(), QRect(4, 50 + 2 + 4, 380 - 8, 200 - 52 - 8));
    control.Pages(3)->setEnabled(false);
    EXPECT_TRUE(control.Pages(3)->isVisible()) << "a page that is disabled later stays active";
    control.SetActivePage(nullptr);
    EXPECT_EQ(control.TabIndex(), -1);
    EXPECT_FALSE(control.Pages(3)->isVisible());
}

TEST_F(PageControl, whoChangesThePageIsAskedAndTold)
{
    auto &control = pages(four);
    control.Pages(2)->setEnabled(false);
    show();
    bool allow = true;
    int asked = 0;
    QObject::connect(&control, &TExtCustomTab::OnChanging, &control, [&](QWidget *, bool &allowChange) {
        ++asked;
        allowChange = allow;
    });
    const QSignalSpy told(&control, &TExtCustomTab::OnChange);
    const struct
    {
        int Wanted;
        bool Allow;
        int Got, Asked, Told;
    } cases[] = {{1, true, 1, 1, 1},  {1, true, 1, 1, 1}, {2, true, 1, 1, 1},
                 {3, false, 1, 2, 1}, {3, true, 3, 3, 2}, {-1, true, -1, 3, 2}};
    for (const auto &a : cases) {
        allow = a.Allow;
        if (a.Wanted == 3)
            click(control, 3);
        else
            control.SetActivePageIndex(a.Wanted);
        EXPECT_EQ((std::vector{control.ActivePageIndex(), asked, int(told.size())}),
                  (std::vector{a.Got, a.Asked, a.Told}));
    }
}

TEST_F(PageControl, whatGoesIsNeitherActiveNorHot)
{
    auto &control = pages(four);
    control.Pages(2)->setEnabled(false);
    control.Hottrack()->setEnabled(true);
    control.setTabHints(four);
    auto *line = new QLineEdit(control.Pages(1));
    show();
    control.SetActivePageIndex(1);
    line->setFocus();
    moveTo(control, middleOf(control, 3));
    ASSERT_EQ(control.Hottrack()->HotTab, 3);
    const QSignalSpy told(&control, &TExtCustomTab::OnChange);

    control.Pages(1)->setTabVisible(false);
    EXPECT_EQ(control.ActivePageIndex(), 3) << "the next enabled one";
    EXPECT_EQ(control.Hottrack()->HotTab, -1);
    EXPECT_EQ(control.toolTip(), QString());
    EXPECT_TRUE(control.hasFocus()) << "which was in the page that went";
    delete control.Pages(3);
    EXPECT_EQ(control.TabIndex(), 0);
    EXPECT_TRUE(control.Pages(0)->isVisible());
    control.Pages(0)->setPageIndex(2);
    EXPECT_EQ(control.ActivePageIndex(), 2);
    EXPECT_EQ(control.TabIndex(), 1);

    auto *moved = control.Pages(2);
    auto *other = new TExtPageControl(&m_form);
    other->AddPage(moved);
    EXPECT_EQ(control.PageCount(), 2);
    EXPECT_EQ(other->ActivePage(), moved);
    moved->setParent(nullptr);
    EXPECT_EQ(other->PageCount(), 0);
    EXPECT_EQ(moved->PageControl(), nullptr);
    delete moved;
    EXPECT_EQ(control.ActivePage(), nullptr) << "the rest is disabled or has no tab";
    EXPECT_EQ(told.size(), 0);
    settle();
}

TEST_F(PageControl, aFormOpensOnThePageThatItAsksFor)
{
    // What comes before the pages; the third page is disabled, the first has a tab unless told otherwise.
    const struct
    {
        const char *Active;
        int Initial;
        bool FirstHasTab;
        int Opened;
    } cases[] = {{"b", -1, true, 1}, {"c", -1, true, 0},      {"b", 2, true, 2},
                 {"", -1, true, -1}, {nullptr, -1, false, 1}, {nullptr, 9, true, 0}};
    for (const auto &[active, initial, firstHasTab, opened] : cases) {
        TExtPageControl control;
        if (active)
            control.setActivePage(QLatin1String(active));
        control.setInitialPage(initial);
        for (const auto &name : {u"a"_s, u"b"_s, u"c"_s})
            (new TTabSheet(&control))->setObjectName(name);
        control.Pages(0)->setTabVisible(firstHasTab);
        control.Pages(2)->setEnabled(false);
        const QSignalSpy told(&control, &TExtCustomTab::OnChange);
        control.show();
        EXPECT_EQ(control.ActivePageIndex(), opened);
        EXPECT_EQ(told.size(), 0);
        control.SetActivePage(nullptr);
        control.Loaded();
        EXPECT_EQ(control.TabIndex(), -1) << "nothing is loaded twice";
    }
    EXPECT_EQ(m_shown, QStringList{u"Indice de liste hors limites (9)"_s});
    QWidget plain;
    EXPECT_THROW(TExtPageControl().addPage(&plain), EInvalidOperation);
}

TEST_F(PageControl, theFocusFollowsIntoTheNewPage)
{
    auto &control = pages(four);
    auto *first = new QLineEdit(control.Pages(0));
    auto *second = new QLineEdit(control.Pages(1));
    auto *outside = new QLineEdit(&m_form);
    show();
    first->setFocus();
    control.SetActivePageIndex(1);
    EXPECT_TRUE(second->hasFocus());
    control.SetActivePageIndex(2);
    EXPECT_TRUE(control.hasFocus());
    outside->setFocus();
    control.SetActivePageIndex(0);
    EXPECT_TRUE(outside->hasFocus()) << "which is not on a page";
    first->setFocus();
    const std::unique_ptr<TTabSheet> taken(control.Pages(0));
    control.RemovePage(taken.get());
    EXPECT_TRUE(second->hasFocus());
}

TEST_F(PageControl, aTagChoosesTheGlyph)
{
    TExtPageControlTag tagged(&m_form);
    for (const int tag : {7, 3})
        (new TTabSheet(&tagged))->setTag(tag);
    EXPECT_EQ(tagged.GetGlyphIndex(1), 3);
    EXPECT_EQ(tagged.GetGlyphIndex(9), -1);
    EXPECT_EQ(tagged.TExtPageControl::GetGlyphIndex(1), 1);
}
