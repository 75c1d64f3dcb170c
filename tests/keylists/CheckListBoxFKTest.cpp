#include "Shop.h"

#include <data/binding/Form.h>

#include <Zelmar01/keylists/CheckListBoxFK.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QSignalSpy>

using namespace Zelmar01;

namespace {

class CheckListBoxFK : public testing::Test
{
protected:
    CheckListBoxFK()
    {
        m_shop.Connection.Execute(QStringLiteral("delete from METAL where ID = 11"));
        m_list.RemplirListe(m_shop.Metals);
        m_form.Show();
        m_list.setFocus();
    }

    QPoint boxOf(int row) const
    {
        QStyleOptionViewItem option;
        option.initFrom(&m_list);
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        option.rect = m_list.visualRect(m_list.model()->index(row, 0));
        return m_list.style()
            ->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &m_list)
            .center();
    }

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    ShopDatabase m_shop;
    Form m_form;
    TCheckListBoxFK &m_list = m_form.Add<TCheckListBoxFK>();
};

} // namespace

TEST_F(CheckListBoxFK, isFilledFromADatasetAndLeavesItClosed)
{
    EXPECT_FALSE(m_shop.Metals.Active());
    EXPECT_EQ(m_list.Count(), 3);
    EXPECT_EQ(m_list.NbCaseCoche(), 0);
    EXPECT_EQ(m_list.DonnerCle(), QString()) << "the focus alone makes no item current";
    for (const auto &[row, key] : {std::pair(-1, 0), {0, 3}, {2, 10}, {3, 0}})
        EXPECT_EQ(m_list.ValeurCle(row), key) << row;
    m_list.ToutSelectionner();
    m_list.RemplirListe(m_shop.Metals);
    EXPECT_EQ(m_list.NbCaseCoche(), 0) << "checks outlived their items";

    m_shop.Metals.setCommandText(QStringLiteral("select ID, LIBELLE from METAL where ID < 0"));
    m_list.RemplirListe(m_shop.Metals);
    m_list.ToutSelectionner();
    m_list.SelectionnerCle(text("3"));
    m_list.CocherCle(text("3"), true);
    EXPECT_EQ(m_list.DonnerCle() + m_list.ListeDesSelectionnes(text(",")) +
                  m_list.ListeDesNonSelectionnes(text(",")),
              QString());
    EXPECT_EQ(m_list.ValeurCle(0), 0);
}

TEST_F(CheckListBoxFK, keysAre32BitNumbers)
{
    m_shop.Metals.setCommandText(text("select 2147483647, 'a' union all select -2147483648, 'b' order by 2"));
    m_list.RemplirListe(m_shop.Metals);
    EXPECT_EQ(m_list.ListeDesNonSelectionnes(text(",")), text("2147483647,-2147483648,"));
    for (const auto *sql : {"select 2147483648, 'x'", "select 'douze', 'x'", "select 1.5, 'x'"}) {
        m_shop.Metals.setCommandText(text(sql));
        EXPECT_THROW(m_list.RemplirListe(m_shop.Metals), EConvertError) << sql;
        EXPECT_EQ(m_list.Count(), 0);
        EXPECT_FALSE(m_shop.Metals.Active());
    }
    m_shop.Metals.setCommandText(text("select '12', 'x' union all select null, 'y' order by 2"));
    m_list.RemplirListe(m_shop.Metals);
    EXPECT_EQ(m_list.ValeurCle(0), 12);
    EXPECT_EQ(m_list.ListeDesNonSelectionnes(text(",")), text("12,0,"));
}

TEST_F(CheckListBoxFK, givesTheKeysOfCheckedAndUncheckedItems)
{
    m_list.CocherCle(text("3"), true);
    m_list.CocherCle(text("10"), true);
    EXPECT_EQ(m_list.ListeDesSelectionnes(text(";")), text("3;10;"));
    EXPECT_EQ(m_list.ListeDesNonSelectionnes(text(";")), text("8;"));
    EXPECT_EQ(m_list.ListeDesSelectionnes({}), text("310"));
    EXPECT_EQ(m_list.SelectedItems(), QStringList({text("OR"), text("Étain")}));
    m_list.CocherCle(text("3"), false);
    EXPECT_EQ(m_list.NbCaseCoche(), 1);
    m_list.ToutSelectionner();
    EXPECT_EQ(m_list.ListeDesSelectionnes(text(", ")), text("3, 8, 10, "));
    m_list.ToutDeselectionner();
    EXPECT_EQ(m_list.SelectedItems(), QStringList());
    m_list.RemplirListe({-7, 0}, {text("a"), text("b")});
    EXPECT_EQ(m_list.ListeDesNonSelectionnes(text(",")), text("-7,0,"));
}

TEST_F(CheckListBoxFK, keysAreComparedAsTexts)
{
    m_list.RemplirListe({5, 7, 7, -1}, {text("a"), text("b"), text("c"), text("d")});
    for (const auto &[key, row] : {std::pair("7", 1), {"-1", 3}, {"007", 0}, {" 7", 0}, {"x", 0}, {"", 0}}) {
        m_list.setCurrentIndex(m_list.model()->index(2, 0));
        m_list.SelectionnerCle(text(key));
        EXPECT_EQ(m_list.ItemIndex(), row) << key;
        m_list.ToutDeselectionner();
        m_list.CocherCle(text(key), true);
        EXPECT_EQ(m_list.NbCaseCoche(), text(key) == text("7") || text(key) == text("-1") ? 1 : 0) << key;
        EXPECT_EQ(m_list.Checked(row), m_list.NbCaseCoche() == 1);
    }
    EXPECT_EQ(m_list.DonnerCle(), text("5"));
}

TEST_F(CheckListBoxFK, usersCheckByMouseAndKeyboard)
{
    QSignalSpy clicked(&m_list, &TCheckListBoxFK::OnClickCheck);
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, boxOf(1));
    EXPECT_EQ(m_list.ListeDesSelectionnes(text(",")), text("8,"));
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, boxOf(2) + QPoint(40, 0));
    EXPECT_EQ(m_list.NbCaseCoche(), 1) << "a click on the text checked the item";
    EXPECT_EQ(m_list.DonnerCle(), text("10"));
    QTest::keyClick(&m_list, Qt::Key_Space);
    EXPECT_EQ(m_list.ListeDesSelectionnes(text(",")), text("8,10,"));
    QTest::keyClick(&m_list, Qt::Key_Home);
    QTest::keyClick(&m_list, Qt::Key_Space);
    QTest::keyClick(&m_list, Qt::Key_Space);
    EXPECT_FALSE(m_list.Checked(0));
    EXPECT_EQ(clicked.count(), 4);
    EXPECT_EQ(clicked[0][0].toInt(), 1);
    TypeKeys(m_list, text("ét"));
    EXPECT_EQ(m_list.DonnerCle(), text("10"));
    m_list.CocherCle(text("3"), true);
    EXPECT_EQ(clicked.count(), 4) << "told of a check that no user made";
    m_list.setEnabled(false);
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, boxOf(0));
    EXPECT_TRUE(m_list.Checked(0));
}

TEST_F(CheckListBoxFK, checksStayWithTheirItems)
{
    const QAbstractItemModelTester tester(m_list.model());
    m_list.CocherCle(text("8"), true);
    m_list.model()->insertRow(0);
    EXPECT_EQ(m_list.ListeDesSelectionnes(text(",")), text("8,"));
    m_list.model()->removeRows(0, 2);
    EXPECT_TRUE(m_list.Checked(0));
    EXPECT_EQ(m_list.ListeDesNonSelectionnes(text(",")), text("10,"));
}

TEST_F(CheckListBoxFK, tellsAssistiveToolsWhatIsChecked)
{
    m_list.CocherCle(text("8"), true);
    auto *list = QAccessible::queryAccessibleInterface(&m_list);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 3);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), text("Argent"));
    EXPECT_TRUE(list->child(1)->state().checkable && list->child(1)->state().checked);
    EXPECT_FALSE(list->child(0)->state().checked);
}
