#include "Shop.h"

#include <data/binding/Form.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace Zelmar01;

namespace {

class DBComboBoxEditFk : public testing::Test
{
protected:
    DBComboBoxEditFk()
    {
        m_data.setDataSet(&m_shop.Articles);
        m_metals.setDataSet(&m_shop.Metals);
        m_box.setDataField(text("METAL"));
        m_box.setDataSource(&m_data);
        m_box.setListSource(&m_metals);
        m_shop.Articles.Open();
        m_shop.Metals.Open();
        m_form.Show();
        m_box.setFocus();
    }

    void type(const char *typed)
    {
        m_box.setFocus();
        m_box.lineEdit()->selectAll();
        *typed ? TypeKeys(m_box, text(typed)) : QTest::keyClick(&m_box, Qt::Key_Delete);
    }
    QString shown() const { return m_box.currentText(); }
    QString stored()
    {
        auto &field = m_shop.Articles.FieldByName(text("METAL"));
        return field.IsNull() ? text("null") : field.AsString();
    }
    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    Told m_told;
    ShopDatabase m_shop;
    TDataSource m_data, m_metals;
    Form m_form;
    TDBComboBoxEditFk &m_box = m_form.Add<TDBComboBoxEditFk>();
    QLineEdit &m_other = m_form.Add<QLineEdit>();
    QSignalSpy m_changes{&m_box, &TDBComboBoxEditFk::OnChgtID};
};

} // namespace

TEST_F(DBComboBoxEditFk, showsTheTextOfTheRecordsKey)
{
    for (const auto *wanted : {"OR", "Étain", "", "99"}) { // the last two: null, and a key without an entry
        EXPECT_EQ(shown(), text(wanted));
        m_shop.Articles.Next();
    }
    EXPECT_EQ(m_shop.Metals.RecNo(), 1) << "the list's cursor was moved";
    m_shop.Metals.Close();
    m_shop.Articles.First();
    EXPECT_EQ(shown(), text("3")) << "without a list, the key itself";
    m_shop.Metals.Open();
    EXPECT_EQ(shown(), text("OR"));
    m_shop.Articles.Close();
    EXPECT_EQ(shown(), QString());
    EXPECT_TRUE(m_changes.isEmpty()) << "told of a change that no user made";
}

TEST_F(DBComboBoxEditFk, pickingAnEntryEditsTheRecord)
{
    QTest::keyClick(&m_box, Qt::Key_Down);
    EXPECT_EQ(m_shop.Articles.State(), dsEdit);
    EXPECT_EQ(stored(), text("8"));
    ASSERT_EQ(m_changes.count(), 1);
    EXPECT_EQ(m_changes[0][0].value<TDBComboBoxEditFk *>(), &m_box);
    EXPECT_EQ(m_changes[0][1].toLongLong(), 8);
    m_box.showPopup();
    TypeKeys(*m_box.view(), text("ét"));
    QTest::keyClick(m_box.view(), Qt::Key_Return);
    EXPECT_EQ(stored(), text("10"));
    m_shop.Articles.Next();
    m_shop.Articles.Close();
    m_shop.Articles.Open();
    EXPECT_EQ(stored(), text("10")) << "not in the database";
    // The same entry once more changes nothing, and Escape in the list chooses nothing.
    m_box.showPopup();
    QTest::keyClick(m_box.view(), Qt::Key_Return);
    m_box.showPopup();
    QTest::keyClick(m_box.view(), Qt::Key_Home);
    QTest::keyClick(m_box.view(), Qt::Key_Escape);
    EXPECT_EQ(m_shop.Articles.State(), dsBrowse);
    EXPECT_EQ(m_changes.count(), 2);
}

TEST_F(DBComboBoxEditFk, aTypedTextIsLookedUpOnEnterOnLeavingAndBeforeThePost)
{
    const std::function<void()> ways[] = {
        [this] { QTest::keyClick(&m_box, Qt::Key_Return); }, [this] { QTest::keyClick(&m_box, Qt::Key_Tab); },
        [this] { m_shop.Articles.Next(); }, [this] { m_shop.Articles.Post(); }};
    for (const auto &way : ways) {
        m_shop.Articles.First();
        type("argent");
        EXPECT_EQ(m_shop.Articles.State(), dsEdit);
        EXPECT_EQ(stored(), text("3")) << "stored while typing";
        way();
        m_shop.Articles.First();
        EXPECT_EQ(stored(), text("8"));
        EXPECT_EQ(shown(), text("Argent"));
        type("");
        way();
        m_shop.Articles.First();
        EXPECT_EQ(stored(), text("null"));
        m_shop.Articles.Edit();
        m_shop.Articles.FieldByName(text("METAL")).setAsInteger(3);
        m_shop.Articles.Post();
    }
    EXPECT_EQ(m_changes.count(), 8);
    EXPECT_EQ(m_changes[1][1].toLongLong(), 0);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(DBComboBoxEditFk, aTextWithoutAnEntryKeepsTheFocus)
{
    type("bois");
    for (const auto key : {Qt::Key_Tab, Qt::Key_Return}) {
        QTest::keyClick(&m_box, key);
        EXPECT_TRUE(m_box.hasFocus());
        EXPECT_EQ(shown(), text("bois"));
        EXPECT_EQ(m_told.Take().size(), 1) << key;
    }
    EXPECT_THROW(m_shop.Articles.Next(), EDatabaseError);
    QTest::keyClick(&m_box, Qt::Key_Escape);
    m_other.setFocus();
    EXPECT_TRUE(m_other.hasFocus());
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(DBComboBoxEditFk, aKeyWithoutAnEntryIsNotOverwritten)
{
    m_shop.Articles.Last();
    m_other.setFocus();
    m_shop.Articles.Edit();
    m_shop.Articles.FieldByName(text("NOM")).setAsString(text("Jonc uni"));
    m_shop.Articles.Post();
    EXPECT_EQ(stored(), text("99"));
    type("99"); // typed over, as it was
    m_other.setFocus();
    m_shop.Articles.Post();
    EXPECT_EQ(stored(), text("99"));
    EXPECT_TRUE(m_changes.isEmpty() && m_told.Take().isEmpty());
    type("or");
    m_other.setFocus();
    EXPECT_EQ(stored(), text("3"));
}

TEST_F(DBComboBoxEditFk, escapeAndCancelGiveTheRecordsKeyBack)
{
    QTest::keyClick(&m_box, Qt::Key_Down);
    QTest::keyClick(&m_box, Qt::Key_Escape);
    EXPECT_EQ(stored() + shown(), text("3OR"));
    type("arg");
    m_shop.Articles.Cancel();
    EXPECT_EQ(shown(), text("OR"));
}

TEST_F(DBComboBoxEditFk, whatMustNotBeChangedIsNot)
{
    const auto wheel = [this] {
        QWheelEvent event({5, 5}, m_box.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&m_box, &event);
    };
    const std::function<void()> ways[] = {
        [this] { QTest::keyClick(&m_box, Qt::Key_Down); },
        [this] { QTest::keyClick(&m_box, Qt::Key_PageDown); },
        [this] { TypeKeys(m_box, text("x")); },
        [this] { QTest::keyClick(&m_box, Qt::Key_F4); },
        [this] { QTest::keyClick(&m_box, Qt::Key_Down, Qt::AltModifier); },
        wheel,
    };
    const auto tryAll = [&] {
        for (const auto &way : ways) {
            way();
            EXPECT_FALSE(m_box.view()->isVisible());
            EXPECT_EQ(m_shop.Articles.State(), dsBrowse);
            EXPECT_EQ(stored() + shown(), text("3OR"));
        }
    };
    m_box.setReadOnly(true);
    tryAll();
    EXPECT_THROW(m_box.SelectionnerCle(text("8")), EDatabaseError);
    m_box.setReadOnly(false);
    m_other.setFocus();
    wheel(); // a wheel that scrolls the form
    EXPECT_EQ(stored(), text("3"));
    m_box.setFocus();
    wheel();
    EXPECT_EQ(stored(), text("8"));
}

TEST_F(DBComboBoxEditFk, aFreshListKeepsTheChoiceAndWhatIsBeingTyped)
{
    m_shop.Connection.Execute(text("insert into METAL values (1, 'Acier')"));
    m_shop.Connection.Execute(text("update METAL set LIBELLE = 'Or fin' where ID = 3"));
    m_box.RafraichirListe();
    EXPECT_EQ(m_box.count(), 5);
    EXPECT_EQ(shown(), text("Or fin"));
    EXPECT_EQ(m_shop.Articles.State(), dsBrowse);
    type("aci");
    m_box.RafraichirListe();
    EXPECT_EQ(shown(), text("aci"));
    TypeKeys(m_box, text("er"));
    QTest::keyClick(&m_box, Qt::Key_Tab);
    EXPECT_EQ(stored(), text("1"));
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(DBComboBoxEditFk, worksOnAListFilledByHand)
{
    m_box.setListSource(nullptr);
    EXPECT_EQ(shown(), text("3"));
    m_box.RemplirListe(m_shop.Metals, true);
    EXPECT_EQ(shown(), text("OR"));
    m_box.SelectionnerCle(text("10"));
    EXPECT_EQ(stored() + m_box.DonnerCle(), text("1010"));
    m_box.SelectionnerCle(text("absente"));
    EXPECT_EQ(stored(), text("10"));
    EXPECT_EQ(m_changes.count(), 1);
    // Without a field it is a key-bound combo box like any other.
    m_box.setDataSource(nullptr);
    m_box.SelectionnerCle(text("8"));
    EXPECT_EQ(shown(), text("Argent"));
    type("or");
    m_other.setFocus();
    EXPECT_EQ(m_box.DonnerCle(), text("3"));
    EXPECT_EQ(m_changes.count(), 1);
}
