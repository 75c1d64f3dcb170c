#include "EditorShop.h"

#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmCurrency.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/controls/zmLookUpEd.h>
#include <Zelmar01/controls/zmMemo.h>
#include <Zelmar01/controls/zmSpinEdit.h>
#include <Zelmar01/controls/zmTextEdit.h>
#include <Zelmar01/data/DataErrors.h>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>

#include <memory>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

QString shownBy(QWidget &editor)
{
    if (auto *edit = qobject_cast<QLineEdit *>(&editor))
        return edit->text();
    if (auto *memo = qobject_cast<QPlainTextEdit *>(&editor))
        return memo->toPlainText();
    if (auto *box = qobject_cast<QComboBox *>(&editor))
        return box->currentText();
    if (auto *spin = qobject_cast<QAbstractSpinBox *>(&editor))
        return spin->text();
    if (auto *check = qobject_cast<QCheckBox *>(&editor))
        return QStringList({u"no"_s, u"neither"_s, u"yes"_s})[check->checkState()];
    return qobject_cast<TzmImage *>(&editor)->Picture().isNull() ? u"none"_s : u"picture"_s;
}

void typeOver(QWidget &editor, const QString &keys)
{
    editor.setFocus(Qt::TabFocusReason);
    if (qobject_cast<QCheckBox *>(&editor))
        return QTest::keyClick(&editor, Qt::Key_Space);
    if (qobject_cast<TzmImage *>(&editor)) {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(Qt::red);
        QApplication::clipboard()->setImage(image);
        return QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
    }
    QTest::keyClick(&editor, Qt::Key_A, Qt::ControlModifier);
    TypeKeys(editor, keys);
}

void empty(QWidget &editor)
{
    editor.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&editor, Qt::Key_Delete);
}

/// One editor on one column of the shop's articles, and what is to be seen of it.
struct TCase
{
    const char *Field;
    std::function<QWidget *(EditorShop &)> Make;
    QString First, Null; // shown of record 1 and of record 2
    QString Keys, Typed; // what is typed, and what is shown of it in the end
    QString Stored;      // in the database; empty for bytes
    QString Emptied;     // what an emptied editor stores; empty where it cannot be emptied
};

template<class Editor>
std::function<QWidget *(EditorShop &)> on(const char *field)
{
    return [field](EditorShop &shop) {
        auto *editor = new Editor;
        editor->setDataField(QString::fromLatin1(field));
        editor->setDataSource(&shop.Source);
        if constexpr (std::is_same_v<Editor, TzmDBLookupEdit>)
            editor->setListSource(&shop.MetalSource);
        return editor;
    };
}

const QList<TCase> &cases()
{
    static const QList<TCase> all{
        {"NOM", on<TzmDBEdit>("NOM"), u"Bague"_s, u""_s, u"Étui"_s, u"Étui"_s, u"Étui"_s, u"null"_s},
        {"STOCK", on<TzmDBEdit>("STOCK"), u"7"_s, u""_s, u"12"_s, u"12"_s, u"12"_s, u"null"_s},
        {"PRIX", on<TzmDBCurrencyEdit>("PRIX"), u"1\u202F234,50"_s, u"0,00"_s, u"2000.1"_s,
         u"2\u202F000,10"_s, u"2000.10"_s, u"0.00"_s},
        {"ACHAT", on<tzmDBDateEdit>("ACHAT"), u"28/02/2026"_s, u""_s, u"01032026"_s, u"01/03/2026"_s,
         u"2026-03-01"_s, u"null"_s},
        {"VISIBLE", on<TzmDBCheckEdit>("VISIBLE"), u"yes"_s, u"neither"_s, u""_s, u"no"_s, u"0"_s, u""_s},
        {"STOCK", on<TzmDBSpinEdit>("STOCK"), u"7"_s, u""_s, u"-3"_s, u"-3"_s, u"-3"_s, u"null"_s},
        {"METAL", on<TzmDBLookupEdit>("METAL"), u"Or"_s, u""_s, u"arg"_s, u"Argent"_s, u"8"_s, u"null"_s},
        {"NOTE", on<TzmDBMemo>("NOTE"), u"Deux saphirs"_s, u""_s, u"Remis à neuf"_s, u"Remis à neuf"_s,
         u"Remis à neuf"_s, u"null"_s},
        {"PHOTO", on<TzmDBImage>("PHOTO"), u"none"_s, u"none"_s, u""_s, u"picture"_s, u""_s, u"null"_s}};
    return all;
}

class EachEditor : public testing::TestWithParam<qsizetype>
{
protected:
    EachEditor() : m_editor(m_case.Make(m_shop))
    {
        m_form.setLocale(French);
        m_form.layout()->addWidget(m_editor);
        m_form.Show();
        m_other.setFocus();
    }
    QString shown() { return shownBy(*m_editor); }
    QString stored() { return m_shop.InDatabase(1, m_case.Field); }
    void type() { typeOver(*m_editor, m_case.Keys); }

    const TCase &m_case = cases()[GetParam()];
    Told m_told;
    EditorShop m_shop;
    Form m_form;
    QLineEdit &m_other = m_form.Add<QLineEdit>();
    QWidget *m_editor;
};

/// An amount and a text of one record.
class DataAware : public testing::Test
{
protected:
    DataAware()
    {
        m_form.setLocale(French);
        m_price.setDataSource(&m_shop.Source);
        m_price.setDataField(u"PRIX"_s);
        m_name.setDataSource(&m_shop.Source);
        m_name.setDataField(u"NOM"_s);
        m_form.Show();
        m_name.setFocus();
    }
    int messages() { return static_cast<int>(m_told.Take().size()); }

    Told m_told;
    EditorShop m_shop;
    Form m_form;
    TzmDBCurrencyEdit &m_price = m_form.Add<TzmDBCurrencyEdit>();
    TzmDBEdit &m_name = m_form.Add<TzmDBEdit>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(All, EachEditor, testing::Range<qsizetype>(0, cases().size()), [](const auto &one) {
    return std::to_string(one.param) + cases()[one.param].Field;
});

TEST_P(EachEditor, showsTheCurrentRecord)
{
    EXPECT_EQ(shown(), m_case.First);
    m_shop.Articles.Next();
    EXPECT_EQ(shown(), m_case.Null);
    m_shop.Articles.First();
    EXPECT_EQ(shown(), m_case.First);
    m_shop.Articles.Close();
    EXPECT_EQ(shown(), m_case.Null) << "without a record";
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_P(EachEditor, isPostedWithItsRecord)
{
    type();
    EXPECT_EQ(m_shop.Articles.State(), dsEdit);
    m_shop.Articles.Post(); // from the editor, which still has the focus
    if (!m_case.Stored.isEmpty()) {
        EXPECT_EQ(stored(), m_case.Stored);
    }
    EXPECT_NE(stored(), u"null"_s);
    m_other.setFocus();
    EXPECT_EQ(shown(), m_case.Typed);
    m_shop.Articles.Next();
    m_shop.Articles.First();
    EXPECT_EQ(shown(), m_case.Typed);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_P(EachEditor, isCancelledWithItsRecordAndByEscape)
{
    const auto before = m_shop.Stored(m_case.Field);
    for (const bool hasLeft : {false, true}) {
        type();
        if (hasLeft)
            m_other.setFocus();
        m_shop.Articles.Cancel();
        m_other.setFocus();
        EXPECT_EQ(shown(), m_case.First);
        EXPECT_EQ(m_shop.Articles.State(), dsBrowse);
    }
    type();
    QTest::keyClick(m_editor, Qt::Key_Escape);
    m_other.setFocus();
    EXPECT_EQ(shown(), m_case.First);
    EXPECT_EQ(m_shop.Stored(m_case.Field), before);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_P(EachEditor, isEmptiedToNull)
{
    if (m_case.Emptied.isEmpty())
        return;
    type();
    empty(*m_editor);
    m_other.setFocus();
    EXPECT_EQ(shown(), m_case.Null);
    m_shop.Articles.Post();
    EXPECT_EQ(stored(), m_case.Emptied);
}

TEST_P(EachEditor, isLockedWithItsField)
{
    const auto isLocked = [this] {
        type();
        const bool locked = m_shop.Articles.State() == dsBrowse &&
                            shown().remove(u'\u202F') == QString(m_case.First).remove(u'\u202F');
        m_shop.Articles.Cancel();
        m_other.setFocus();
        return locked;
    };
    m_editor->setProperty("ReadOnly", true);
    EXPECT_TRUE(isLocked());
    m_editor->setProperty("ReadOnly", false);
    EXPECT_FALSE(isLocked());
    m_shop.Articles.FieldByName(QString::fromLatin1(m_case.Field)).setReadOnly(true);
    m_shop.Articles.First();
    EXPECT_TRUE(isLocked());
}

TEST_F(DataAware, aRefusedPostLeavesWhatWasTyped)
{
    typeOver(m_price, u"-5000"_s);
    EXPECT_THROW(m_shop.Articles.Post(), EDatabaseError);
    EXPECT_EQ(m_shop.Articles.State(), dsEdit);
    EXPECT_EQ(m_price.text(), u"-5000,00"_s);
    EXPECT_EQ(m_shop.InDatabase(1, "PRIX"), u"1234.50"_s);
    typeOver(m_price, u"-50"_s);
    m_shop.Articles.Post();
    EXPECT_EQ(m_shop.InDatabase(1, "PRIX"), u"-50.00"_s);
}

TEST_F(DataAware, aValueThatIsNoneKeepsTheFocusAndIsToldOnce)
{
    auto &post = m_form.Add<QPushButton>();
    int posts = 0;
    QObject::connect(&post, &QPushButton::clicked, &post, [&] {
        ++posts;
        ShowingExceptions([&] { m_shop.Articles.Post(); });
    });
    typeOver(m_price, u"-"_s);
    QTest::keyClick(&m_price, Qt::Key_Return);
    EXPECT_EQ(messages(), 1);
    QTest::mouseClick(&post, Qt::LeftButton);
    EXPECT_EQ(messages(), 1) << "told by who posts";
    EXPECT_TRUE(m_price.hasFocus() || posts == 1);
    EXPECT_EQ(m_shop.Articles.State(), dsEdit);
    typeOver(m_price, u"3"_s);
    QTest::mouseClick(&post, Qt::LeftButton);
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(m_shop.InDatabase(1, "PRIX"), u"3.00"_s);
}

TEST_F(DataAware, theRecordChangesUnderTheEditor)
{
    // By the host, while the user is in another field of the record: what is typed stays.
    typeOver(m_name, u"Broche"_s);
    m_shop.Articles.FieldByName(u"PRIX"_s).setAsString(u"99.9"_s);
    EXPECT_EQ(m_price.text(), u"99,90"_s);
    EXPECT_EQ(m_name.text(), u"Broche"_s);
    // By the host, in the field itself: the field wins.
    m_shop.Articles.FieldByName(u"NOM"_s).setAsString(u"Collier"_s);
    EXPECT_EQ(m_name.text(), u"Collier"_s);
    m_shop.Articles.Cancel();

    // By another till: only what was changed here is written.
    typeOver(m_name, u"Broche"_s);
    m_shop.Connection.Execute(u"update ARTICLE set PRIX = 5, NOM = 'Camée' where ID = 1"_s);
    m_shop.Articles.Post();
    EXPECT_EQ(m_shop.InDatabase(1, "NOM") + u' ' + m_shop.InDatabase(1, "PRIX"), u"Broche 5.00"_s);

    // The dataset is read again, or taken away, while the user types.
    typeOver(m_name, u"Onyx"_s);
    m_shop.Articles.Close();
    m_shop.Articles.Open();
    EXPECT_EQ(m_name.text(), u"Broche"_s);
    m_shop.Source.setDataSet(nullptr);
    TypeKeys(m_name, u"x"_s);
    EXPECT_EQ(m_name.text(), QString());
    EXPECT_EQ(messages(), 0);
}

TEST_F(DataAware, theBoundEditorsAreOneMechanismForAnyTypeOfField)
{
    // A check box on texts, a date on a text, and a field that an editor cannot show.
    auto &check = m_form.Add<TzmDBCheckEdit>();
    check.setValueChecked(u"Bague"_s);
    check.setValueUnchecked(u"Autre"_s);
    check.setDataSource(&m_shop.Source);
    check.setDataField(u"NOM"_s);
    EXPECT_EQ(check.checkState(), Qt::Checked);
    typeOver(check, {});
    m_shop.Articles.Post();
    EXPECT_EQ(m_shop.InDatabase(1, "NOM"), u"Autre"_s);
    EXPECT_EQ(m_name.text(), u"Autre"_s);

    m_price.setDataField(u"NOM"_s);
    EXPECT_EQ(messages(), 1) << "a name is no amount";
    EXPECT_TRUE(m_price.isReadOnly()) << "or it would be overwritten unseen";
    EXPECT_EQ(m_price.text(), u"0,00"_s);
    m_price.setDataField(u"STOCK"_s);
    EXPECT_EQ(m_price.text(), u"7,00"_s);
    EXPECT_FALSE(m_price.isReadOnly());
    EXPECT_THROW(m_price.setDataField(u"PAS_LA"_s), EDatabaseError);
}
