#include "TabFixture.h"

#include <QAccessible>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

using Accessible = TabFixture;

} // namespace

TEST_F(Accessible, everyTabHasItsNameStateAndPlace)
{
    auto &control = pages({u"&Vente"_s, u"Or && argent"_s, u"Caché"_s, u"Stock"_s});
    control.Pages(1)->setEnabled(false);
    control.Pages(2)->setTabVisible(false);
    show();
    control.setFocus();
    auto *interface = QAccessible::queryAccessibleInterface(&control);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::PageTabList);
    EXPECT_EQ(interface->childCount(), 3 + 1) << "three tabs and the page that is seen";
    const struct
    {
        QString Name;
        bool Disabled, Selected;
    } tabs[] = {{u"Vente"_s, false, true}, {u"Or & argent"_s, true, false}, {u"Stock"_s, false, false}};
    for (int tab = 0; tab < 3; ++tab) {
        auto *child = interface->child(tab);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->role(), QAccessible::PageTab);
        EXPECT_EQ(child->text(QAccessible::Name), tabs[tab].Name);
        EXPECT_EQ(child->state().disabled, tabs[tab].Disabled);
        EXPECT_EQ(child->state().selected, tabs[tab].Selected);
        EXPECT_EQ(child->state().focused, tabs[tab].Selected);
        EXPECT_EQ(child->rect().size(), ToQRect(control.Strip().DrawnItem(tab)).size());
        EXPECT_EQ(interface->indexOfChild(child), tab);
        const auto middle = child->rect().center();
        EXPECT_EQ(interface->childAt(middle.x(), middle.y()), child);
    }
    EXPECT_EQ(interface->child(3)->object(), control.Pages(0));
    EXPECT_EQ(interface->child(3)->text(QAccessible::Name), u"Vente"_s);
    control.Pages(0)->setAccessibleName(u"Caisse"_s);
    EXPECT_EQ(interface->child(3)->text(QAccessible::Name), u"Caisse"_s);
    EXPECT_EQ(interface->indexOfChild(interface->child(3)), 3);
    EXPECT_EQ(interface->focusChild(), interface->child(0));

    const auto press = [&](int tab) {
        interface->child(tab)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    press(1);
    EXPECT_EQ(control.ActivePageIndex(), 0);
    press(2);
    EXPECT_EQ(control.ActivePageIndex(), 3);

    auto *last = interface->child(2);
    delete control.Pages(3);
    EXPECT_FALSE(last->isValid());
    EXPECT_TRUE(last->state().invalid);
}

TEST_F(Accessible, aControlThatGoesTakesItsTabsAlong)
{
    auto *control = new TExtTabControl;
    control->setTabs({u"a"_s});
    auto *interface = QAccessible::queryAccessibleInterface(control);
    const auto id = QAccessible::uniqueId(interface->child(0));
    delete control;
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}
