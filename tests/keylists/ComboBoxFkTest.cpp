#include "Shop.h"

#include <data/binding/Form.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/keylists/ComboBoxFk.h>

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QSignalSpy>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

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

    m_shop.Metals.Open();
    m_shop.Metals.Last();
    m_box.RemplirListe(m_shop.Metals, false);
    EXPECT_EQ(m_box.count(), 4) << "from the first row, wherever the cursor was";
    EXPECT_TRUE(m_shop.Metals.Active() && m_shop.Metals.Eof());

    m_box.SelectionnerCle(u"10"_s);
    m_shop.Metals.Close();
    EXPECT_THROW(m_box.RemplirListe(m_shop.Metals, false), EDatabaseError);
    EXPECT_EQ(m_box.count(), 0);

    m_shop.Metals.setCommandText(u"select ID, LIBELLE from METAL where ID < 0"_s);
    m_box.RemplirListe(m_shop.Metals, true);
    EXPECT_EQ(m_box.DonnerCle(), QString());
    m_shop.Metals.setCommandText(u"select ID from METAL"_s);
    EXPECT_THROW(m_box.RemplirListe(m_shop.Metals, true), EDatabaseError) << "a single field";
    EXPECT_FALSE(m_shop.Metals.Active());
}

TEST_F(ComboBoxFk, selectsByKey)
{
    m_box.RemplirListe({u"A1"_s, u"a1"_s, QString()}, {u"un"_s, u"deux"_s, u"aucun"_s});
    for (const auto &[key, row] : {std::pair("a1", 0), {"x", -1}, {"", 2}}) {
        m_box.SelectionnerCle(QString::fromLatin1(key));
        EXPECT_EQ(m_box.currentIndex(), row) << key;
    }
    m_box.SelectionnerCle(u"a1"_s);
    EXPECT_EQ(m_box.DonnerCle(), u"A1"_s) << "as the dataset has it";
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
            m_box.SelectionnerCle(u"8"_s);
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
    m_box.SelectionnerCle(u"8"_s);
    QTest::keyClick(&m_box, Qt::Key_End);
    QTest::keyClick(&m_box, Qt::Key_Left);
    TypeKeys(m_box, u"x"_s);
    EXPECT_EQ(m_box.currentText(), u"Argenxt"_s);
    EXPECT_EQ(m_box.lineEdit()->cursorPosition(), 6);
    QTest::keyClick(&m_box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_box.currentText(), u"Argent"_s);
    m_other.setFocus();
    EXPECT_EQ(m_box.DonnerCle(), u"8"_s);
}

TEST_F(ComboBoxFk, canStopBeingEditableAndBecomeSoAgain)
{
    m_box.setEditable(false);
    TypeKeys(m_box, u"a"_s);
    EXPECT_EQ(m_box.DonnerCle(), u"8"_s);
    m_box.setEditable(true); // with another line edit
    QCoreApplication::processEvents();
    type("étain");
    EXPECT_EQ(m_box.currentText(), u"étain"_s);
    QTest::keyClick(&m_box, Qt::Key_Tab);
    EXPECT_EQ(m_box.DonnerCle(), u"10"_s);
}

TEST_F(ComboBoxFk, theListShowsItsRowsAndScrollsToTheCurrentOne)
{
    QStringList texts;
    for (int row = 0; row < 100'000; ++row)
        texts << QString::number(row);
    m_box.RemplirListe(texts, texts);
    m_box.SelectionnerCle(u"54321"_s);
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
