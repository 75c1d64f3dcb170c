#include "Shop.h"

#include <data/binding/Form.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/keylists/ComboBoxFk.h>

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QSignalSpy>

using namespace Zelmar01;

namespace {

class ComboBoxFk : public testing::Test
{
protected:
    ComboBoxFk()
    {
        m_box.RemplirListe(m_shop.Metals, true);
        m_form.Show();
        m_box.setFocus();
    }

    void type(const char *text)
    {
        m_box.lineEdit()->selectAll();
        TypeKeys(m_box, QString::fromUtf8(text));
    }

    ShopDatabase m_shop;
    Form m_form;
    TComboBoxFk &m_box = m_form.Add<TComboBoxFk>();
    QLineEdit &m_other = m_form.Add<QLineEdit>();
};

} // namespace

TEST_F(ComboBoxFk, isFilledFromADataset)
{
    EXPECT_FALSE(m_shop.Metals.Active()) << "reopen leaves it closed";
    EXPECT_EQ(m_box.count(), 4);
    EXPECT_EQ(m_box.currentIndex(), -1);
    EXPECT_EQ(m_box.DonnerCle(), QString());
    EXPECT_EQ(m_box.currentText(), QString());

    m_shop.Metals.Open();
    m_shop.Metals.Last();
    m_box.RemplirListe(m_shop.Metals, false);
    EXPECT_EQ(m_box.count(), 4) << "from the first row, wherever the cursor was";
    EXPECT_TRUE(m_shop.Metals.Active() && m_shop.Metals.Eof());

    m_box.SelectionnerCle(QStringLiteral("10"));
    m_shop.Metals.Close();
    EXPECT_THROW(m_box.RemplirListe(m_shop.Metals, false), EDatabaseError);
    EXPECT_EQ(m_box.count(), 0);

    m_shop.Metals.setCommandText(QStringLiteral("select ID, LIBELLE from METAL where ID < 0"));
    m_box.RemplirListe(m_shop.Metals, true);
    EXPECT_EQ(m_box.DonnerCle(), QString());
    m_shop.Metals.setCommandText(QStringLiteral("select ID from METAL"));
    EXPECT_THROW(m_box.RemplirListe(m_shop.Metals, true), EDatabaseError) << "a single field";
    EXPECT_FALSE(m_shop.Metals.Active());
}

TEST_F(ComboBoxFk, aChangedRecordIsPostedBeforeTheListIsFilled)
{
    m_shop.Metals.Open();
    m_shop.Metals.Edit();
    m_shop.Metals.FieldByName(QStringLiteral("LIBELLE")).setAsString(QStringLiteral("Platine"));
    m_box.RemplirListe(m_shop.Metals, false);
    EXPECT_EQ(m_box.itemText(0), QStringLiteral("Platine"));
}

TEST_F(ComboBoxFk, selectsByKey)
{
    m_box.RemplirListe({QStringLiteral("A1"), QStringLiteral("a1"), QString()},
                       {QStringLiteral("un"), QStringLiteral("deux"), QStringLiteral("aucun")});
    for (const auto &[key, row] : {std::pair("a1", 0), {"x", -1}, {"", 2}}) {
        m_box.SelectionnerCle(QString::fromLatin1(key));
        EXPECT_EQ(m_box.currentIndex(), row) << key;
    }
    m_box.SelectionnerCle(QStringLiteral("a1"));
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("A1")) << "as the dataset has it";
    m_box.SelectionnerCle(QStringLiteral("absente"));
    EXPECT_EQ(m_box.DonnerCle() + m_box.currentText(), QString());
}

TEST_F(ComboBoxFk, aTypedTextBecomesTheEntryOnLeaving)
{
    struct TCase
    {
        const char *Typed, *Key, *Shown;
    };
    for (const auto &c : {TCase{"or", "3", "OR"}, // the first of two, not the one with exactly that text
                          {"ÉTAIN", "10", "Étain"},
                          {"ora", "", "ora"},
                          {" or", "", " or"}}) {
        for (const bool byEnter : {false, true}) {
            m_box.SelectionnerCle(QStringLiteral("8"));
            m_box.setFocus();
            QSignalSpy picked(&m_box, &QComboBox::activated);
            type(c.Typed);
            EXPECT_EQ(m_box.currentIndex(), -1) << "typing drops the entry";
            EXPECT_EQ(m_box.currentText(), QString::fromUtf8(c.Typed));
            QTest::keyClick(&m_box, byEnter ? Qt::Key_Return : Qt::Key_Tab);
            EXPECT_EQ(m_box.DonnerCle(), QString::fromUtf8(c.Key)) << c.Typed;
            EXPECT_EQ(m_box.currentText(), QString::fromUtf8(c.Shown));
            EXPECT_EQ(picked.count(), *c.Key ? 1 : 0);
            EXPECT_EQ(m_box.count(), 4) << "it became an entry";
        }
    }
}

TEST_F(ComboBoxFk, aDroppedEntryComesBackByUndo)
{
    m_box.SelectionnerCle(QStringLiteral("8"));
    QTest::keyClick(&m_box, Qt::Key_End);
    QTest::keyClick(&m_box, Qt::Key_Left);
    TypeKeys(m_box, QStringLiteral("x"));
    EXPECT_EQ(m_box.currentText(), QStringLiteral("Argenxt"));
    EXPECT_EQ(m_box.lineEdit()->cursorPosition(), 6);
    QTest::keyClick(&m_box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_box.currentText(), QStringLiteral("Argent"));
    m_other.setFocus();
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("8"));
}

TEST_F(ComboBoxFk, anotherWindowIsNoLeaving)
{
    type("or");
    {
        Form window;
        window.Add<QLineEdit>().setFocus();
        window.Show();
    }
    m_form.Show();
    EXPECT_EQ(m_box.currentIndex(), -1);
    EXPECT_EQ(m_box.currentText(), QStringLiteral("or"));
    m_other.setFocus();
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("3"));
}

TEST_F(ComboBoxFk, worksByKeyboard)
{
    QTest::keyClick(&m_box, Qt::Key_Down);
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("3"));
    QTest::keyClick(&m_box, Qt::Key_Down, Qt::AltModifier);
    auto *view = m_box.view();
    ASSERT_TRUE(view->isVisible());
    TypeKeys(*view, QStringLiteral("ét"));
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_FALSE(view->isVisible());
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("10"));
    m_box.showPopup();
    QTest::keyClick(view, Qt::Key_Home);
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("10")) << "Escape in the list chooses nothing";
}

TEST_F(ComboBoxFk, canStopBeingEditableAndBecomeSoAgain)
{
    m_box.setEditable(false);
    TypeKeys(m_box, QStringLiteral("a"));
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("8"));
    m_box.setEditable(true); // with another line edit
    QCoreApplication::processEvents();
    type("étain");
    EXPECT_EQ(m_box.currentText(), QStringLiteral("étain"));
    QTest::keyClick(&m_box, Qt::Key_Tab);
    EXPECT_EQ(m_box.DonnerCle(), QStringLiteral("10"));
}

TEST_F(ComboBoxFk, theListShowsItsRowsAndScrollsToTheCurrentOne)
{
    QStringList texts;
    for (int row = 0; row < 100'000; ++row)
        texts << QString::number(row);
    m_box.RemplirListe(texts, texts);
    m_box.SelectionnerCle(QStringLiteral("54321"));
    for (const bool editable : {true, false}) { // which decides the style of the list
        m_box.setEditable(editable);
        m_box.showPopup();
        const auto *view = m_box.view();
        const auto place = view->visualRect(view->currentIndex());
        EXPECT_EQ(view->currentIndex().row(), 54321);
        EXPECT_TRUE(view->viewport()->rect().contains(place)) << editable;
        EXPECT_GE(view->viewport()->height(), 10 * place.height()) << editable;
        m_box.hidePopup();
    }
}

TEST_F(ComboBoxFk, keysStayWithEntriesThatHostsAddAndRemove)
{
    m_box.insertItem(0, QStringLiteral("(aucun)"));
    m_box.insertItem(2, QStringLiteral("Laiton"), 12);
    m_box.removeItem(1);
    m_box.SelectionnerCle(QStringLiteral("12"));
    EXPECT_EQ(m_box.currentText(), QStringLiteral("Laiton"));
    m_box.SelectionnerCle(QString());
    EXPECT_EQ(m_box.currentText(), QStringLiteral("(aucun)"));
    m_box.SelectionnerCle(QStringLiteral("8"));
    EXPECT_EQ(m_box.currentText(), QStringLiteral("Argent"));
    m_box.clear();
    EXPECT_EQ(m_box.count(), 0);
    EXPECT_EQ(m_box.DonnerCle(), QString());
}

TEST_F(ComboBoxFk, tellsAssistiveToolsWhatItShows)
{
    m_box.SelectionnerCle(QStringLiteral("10"));
    auto *box = QAccessible::queryAccessibleInterface(&m_box);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->role(), QAccessible::ComboBox);
    EXPECT_EQ(box->text(QAccessible::Value), QStringLiteral("Étain"));
    auto *view = QAccessible::queryAccessibleInterface(m_box.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->role(), QAccessible::List);
    ASSERT_EQ(view->childCount(), 4);
    EXPECT_EQ(view->child(1)->text(QAccessible::Name), QStringLiteral("Argent"));
}
