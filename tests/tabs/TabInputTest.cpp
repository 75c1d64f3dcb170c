#include "TabFixture.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolTip>
#include <QWhatsThis>
#include <QWheelEvent>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// Tab 1 is disabled, tab 3 hidden.
class TabInput : public TabFixture
{
protected:
    TPageProbe &fivePages()
    {
        auto &control = pages({u"&Vente"_s, u"&Fiche"_s, u"&Stock"_s, u"&Caché"_s, u"&Atelier"_s});
        control.Pages(1)->setEnabled(false);
        control.Pages(3)->setTabVisible(false);
        return control;
    }

    void wheel(TExtCustomTab &control, QPoint at, int delta)
    {
        QWheelEvent event(at, control.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&control, &event);
    }

    QWidget *hintWindow() const
    {
        for (auto *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == u"TabHint"_s && window->isVisible())
                return window;
        }
        return nullptr;
    }

    void askForHint(TExtCustomTab &control, QPoint at)
    {
        moveTo(control, at);
        QHelpEvent event(QEvent::ToolTip, at, control.mapToGlobal(at));
        QApplication::sendEvent(&control, &event);
    }
};

} // namespace

TEST_F(TabInput, noWayLeadsToADisabledOrHiddenTab)
{
    auto &control = fivePages();
    show();
    control.setFocus();
    const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) {
        return [&control, pressed, modifiers] { QTest::keyClick(&control, pressed, modifiers); };
    };
    const auto inStrip = middleOf(control, 0);
    const struct
    {
        const char *What;
        int From;
        std::function<void()> Do;
        int To;
    } cases[] = {
        {"right skips", 0, key(Qt::Key_Right), 2},
        {"right skips the hidden one", 2, key(Qt::Key_Right), 4},
        {"right ends", 4, key(Qt::Key_Right), 4},
        {"left skips", 2, key(Qt::Key_Left), 0},
        {"left ends", 0, key(Qt::Key_Left), 0},
        {"end", 0, key(Qt::Key_End), 4},
        {"home", 4, key(Qt::Key_Home), 0},
        {"across the strip", 0, key(Qt::Key_Down), 0},
        {"control and tab", 0, key(Qt::Key_Tab, Qt::ControlModifier), 2},
        {"control and tab go round", 4, key(Qt::Key_Tab, Qt::ControlModifier), 0},
        {"and back", 0, key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), 4},
        {"page down", 2, key(Qt::Key_PageDown, Qt::ControlModifier), 4},
        {"Alt and a letter", 0, key(Qt::Key_A, Qt::AltModifier), 4},
        {"of a disabled one", 0, key(Qt::Key_F, Qt::AltModifier), 0},
        {"of a hidden one", 0, key(Qt::Key_C, Qt::AltModifier), 0},
        {"wheel", 0, [&] { wheel(control, inStrip, -120); }, 2},
        {"wheel ends", 4, [&] { wheel(control, inStrip, -120); }, 4},
        {"half a step of the wheel", 4, [&] { wheel(control, inStrip, 60); }, 4},
        {"and the other half", 4, [&] { wheel(control, inStrip, 60); }, 2},
        {"wheel over a page", 0, [&] { wheel(control, QPoint(100, 100), -120); }, 0},
        {"click", 0, [&] { click(control, 3); }, 4},
        {"click on a disabled one", 0, [&] { click(control, 1); }, 0},
        {"code", 0, [&] { control.SetActivePageIndex(1); }, 0},
        {"code, by tab", 0, [&] { control.SelectTab(1); }, 0},
    };
    for (const auto &a : cases) {
        control.SetActivePageIndex(a.From);
        control.setFocus();
        a.Do();
        EXPECT_EQ(control.ActivePageIndex(), a.To) << a.What;
    }
    EXPECT_TRUE(control.CMDialogChar(u'f')) << "consumed, although disabled";
    EXPECT_FALSE(control.CMDialogChar(u'C')) << "hidden";
    control.Pages(4)->setCaption(u"&Xénon"_s);
    QTest::keyClick(&control, Qt::Key_X, Qt::AltModifier);
    EXPECT_EQ(control.ActivePageIndex(), 4);
    control.SetActivePageIndex(0);
    auto *edit = new QLineEdit(control.Pages(0));
    edit->show();
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Right);
    EXPECT_EQ(control.ActivePageIndex(), 0) << "an arrow in a page is the page's";
    QTest::keyClick(edit, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(control.ActivePageIndex(), 2) << "which has no use for this";
    EXPECT_TRUE(m_shown.isEmpty()) << m_shown.join(u'\n').toStdString();
}

TEST_F(TabInput, arrowsFollowTheWayTheStripRunsAndGoFromRowToRow)
{
    // Five tabs in a row at the top and the bottom, of which the tab 6 is disabled, and two at the sides.
    auto &control = tabs({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s, u"h"_s});
    control.setMultiLine(true);
    control.SetTabEnabled(6, false);
    control.setTabHeight(90);
    control.setFixedSize(480, 270);
    show();
    control.setFocus();
    const struct
    {
        TExtTabPosition Position;
        bool RightToLeft;
        int From;
        Qt::Key Key;
        int To;
    } cases[] = {{tabPosTop, false, 0, Qt::Key_Right, 1},   {tabPosTop, true, 0, Qt::Key_Left, 1},
                 {tabPosLeft, false, 0, Qt::Key_Down, 1},   {tabPosRight, true, 0, Qt::Key_Down, 1},
                 {tabPosRight, true, -1, Qt::Key_Down, 0}, // without a selection, from the beginning
                 {tabPosTop, false, 0, Qt::Key_Down, 5},    {tabPosTop, false, 1, Qt::Key_Down, 5},
                 {tabPosTop, false, 7, Qt::Key_Up, 2},      {tabPosTop, false, 7, Qt::Key_Down, 7},
                 {tabPosBottom, false, 7, Qt::Key_Down, 2}, {tabPosLeft, false, 0, Qt::Key_Right, 2},
                 {tabPosLeft, false, 2, Qt::Key_Left, 0},   {tabPosLeft, true, 0, Qt::Key_Left, 2},
                 {tabPosRight, false, 0, Qt::Key_Left, 2},  {tabPosRight, true, 0, Qt::Key_Right, 2}};
    for (const auto &[position, rightToLeft, from, key, to] : cases) {
        control.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        control.setTabPosition(position);
        control.SetTabIndex(from);
        QTest::keyClick(&control, key);
        EXPECT_EQ(control.GetTabIndex(), to) << position << ' ' << from;
    }
}

TEST_F(TabInput, theMouseMakesATabHotUntilItLeavesTheTabs)
{
    auto &control = fivePages();
    new QLineEdit(control.Pages(0));
    show();
    moveTo(control, middleOf(control, 2));
    EXPECT_EQ(control.Hottrack()->HotTab, -1) << "not enabled";
    control.Hottrack()->setEnabled(true);
    settle();
    moveTo(control, middleOf(control, 0));
    EXPECT_EQ(control.Hottrack()->HotTab, 0);

    // Only these two are painted, at once, out of the buffer.
    control.TakePaints();
    control.TakeRequests();
    moveTo(control, middleOf(control, 2));
    EXPECT_EQ(control.Hottrack()->HotTab, 2);
    EXPECT_EQ(control.TakePaints(), 1);
    EXPECT_EQ(control.TakeRequests(), (std::vector{2, 0})) << "the selected one is drawn last";
    moveTo(control, middleOf(control, 2) + QPoint(1, 1));
    EXPECT_EQ(control.TakePaints(), 0);

    moveTo(control, {100, 150});
    EXPECT_EQ(control.Hottrack()->HotTab, -1) << "a page is no tab";
    EXPECT_EQ(control.TakeRequests(), std::vector{2});
    moveTo(control, middleOf(control, 2));
    moveTo(control, {-5, -5});
    EXPECT_EQ(control.Hottrack()->HotTab, -1);

    moveTo(control, middleOf(control, 0));
    QTest::mousePress(m_form.windowHandle(), Qt::LeftButton, {},
                      control.mapTo(&m_form, middleOf(control, 0)));
    moveTo(control, middleOf(control, 2));
    EXPECT_EQ(control.Hottrack()->HotTab, 0) << "as long as a button is held";
    QTest::mouseRelease(m_form.windowHandle(), Qt::LeftButton);
}

TEST_F(TabInput, hintsAreTakenByPageAndCountedByTab)
{
    auto &control = fivePages();
    control.setToolTip(u"tout"_s);
    control.setTabHints({u"vente"_s, u"fiche"_s, u"stock"_s, u"caché"_s});
    show();
    control.setToolTip(u"plus tard"_s);
    moveTo(control, middleOf(control, 0));
    EXPECT_EQ(control.toolTip(), u"vente"_s);
    moveTo(control, middleOf(control, 2));
    EXPECT_EQ(control.toolTip(), u"stock"_s);
    moveTo(control, {450, 10});
    EXPECT_EQ(control.toolTip(), QString()) << "on the strip, but on no tab";
    for (const auto &outside : {QPoint(100, 150), QPoint(-5, -5)}) {
        moveTo(control, middleOf(control, 2));
        moveTo(control, outside);
        EXPECT_EQ(control.toolTip(), u"tout"_s) << "the hint that was loaded";
    }

    // The tab 3 is the page 4, for which there is no line.
    moveTo(control, middleOf(control, 3));
    EXPECT_EQ(control.toolTip(), QString());
    EXPECT_EQ(m_shown, QStringList{u"Indice de liste hors limites (4)"_s});
    moveTo(control, middleOf(control, 2));
    moveTo(control, middleOf(control, 3));
    EXPECT_EQ(m_shown.size(), 1) << "once, as long as nothing changes";
    control.setTabHints({u"vente"_s, u"fiche"_s, u"stock"_s, u"caché"_s, u"atelier"_s});
    moveTo(control, middleOf(control, 2));
    moveTo(control, middleOf(control, 3));
    EXPECT_EQ(control.toolTip(), u"atelier"_s);

    control.setShowHint(false);
    moveTo(control, middleOf(control, 0));
    EXPECT_EQ(control.toolTip(), u"atelier"_s);
}

TEST_F(TabInput, aHintStandsExactlyBelowItsTab)
{
    auto &control = tabs({u"a"_s, u"b"_s});
    control.setTabHints({u"Bagues"_s});
    show();
    askForHint(control, middleOf(control, 1));
    EXPECT_EQ(hintWindow(), nullptr) << "no line, no hint";
    askForHint(control, middleOf(control, 0));
    const auto *hint = hintWindow();
    ASSERT_NE(hint, nullptr);
    const auto tab = control.GetTabRect(0);
    EXPECT_EQ(hint->pos(), control.mapToGlobal(QPoint(tab.Left + 3, tab.Bottom + 1)));
    moveTo(control, middleOf(control, 1));
    EXPECT_EQ(hintWindow(), nullptr);

    askForHint(control, middleOf(control, 0));
    QTest::keyClick(&control, Qt::Key_Shift);
    EXPECT_EQ(hintWindow(), nullptr);
    control.setShowHint(false);
    askForHint(control, middleOf(control, 0));
    EXPECT_EQ(hintWindow(), nullptr);
}

TEST_F(TabInput, helpOnATabIsHelpOnItsPage)
{
    auto &control = fivePages();
    control.Pages(2)->setWhatsThis(u"Le stock"_s);
    show();
    THelpRequest request{control.mapToGlobal(middleOf(control, 2))};
    EXPECT_TRUE(control.WMHelp(request));
    EXPECT_EQ(request.Item, control.Pages(2));
    QWhatsThis::hideText();
    THelpRequest elsewhere{control.mapToGlobal(QPoint(100, 150))};
    EXPECT_FALSE(control.WMHelp(elsewhere));
    EXPECT_EQ(elsewhere.Item, nullptr);

    const auto offersHelp = [&](int tab) {
        const auto at = middleOf(control, tab);
        QHelpEvent event(QEvent::QueryWhatsThis, at, control.mapToGlobal(at));
        return QApplication::sendEvent(&control, &event) && event.isAccepted();
    };
    EXPECT_TRUE(offersHelp(2));
    EXPECT_FALSE(offersHelp(0));
    control.setWhatsThis(u"Le magasin"_s);
    EXPECT_TRUE(offersHelp(0)) << "what helps with the control helps with its pages";
}

TEST_F(TabInput, arrowsBringTabsIntoSight)
{
    QStringList captions;
    for (int i = 0; i < 12; ++i)
        captions << QString::number(i);
    auto &control = tabs(captions);
    show();
    const auto visible = [&](int tab) {
        const auto rect = control.GetTabRect(tab);
        return rect.Left >= 0 && rect.Right <= control.Strip().Arrows().Left;
    };
    EXPECT_FALSE(visible(11));
    control.SetTabIndex(11);
    EXPECT_TRUE(visible(11)) << "a tab that is selected is seen";
    QTest::mouseClick(m_form.windowHandle(), Qt::LeftButton, {},
                      control.mapTo(&m_form, ToQRect(control.Strip().Arrows()).topLeft() + QPoint(6, 10)));
    EXPECT_FALSE(visible(11));
    EXPECT_EQ(control.GetTabIndex(), 11);
    control.setTabWidth(100);
    EXPECT_TRUE(visible(11)) << "also after the tabs have grown";
    control.setMultiLine(true);
    EXPECT_TRUE(control.Strip().Arrows().IsEmpty());
}
