#include "EditorShop.h"

#include <Zelmar01/controls/zmCurrency.h>
#include <Zelmar01/core/Exceptions.h>

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

/// An amount on a form, with a field to go to.
class Amounts : public testing::Test
{
protected:
    Amounts() { m_form.Show(); }

    void inLocale(const QLocale &locale)
    {
        m_form.setLocale(locale);
        m_other.setFocus();
        m_edit.setEditValue({});
        m_edit.setFocus(Qt::TabFocusReason);
    }
    /// What stands in the edit once it has been left, or "refused".
    QString left()
    {
        QTest::keyClick(&m_edit, Qt::Key_Tab);
        if (!m_edit.hasFocus())
            return m_edit.text();
        EXPECT_EQ(m_told.Take().size(), 1);
        QTest::keyClick(&m_edit, Qt::Key_Escape);
        return u"refused"_s;
    }
    void paste(const QString &text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier);
    }
    static QString wide(const char16_t *text) { return QString::fromUtf16(text); }

    Told m_told;
    Form m_form;
    TzmCurrencyEdit &m_edit = m_form.Add<TzmCurrencyEdit>();
    QLineEdit &m_other = m_form.Add<QLineEdit>();
};

} // namespace

// What is an amount is a matter of tests/data/binding.
TEST_F(Amounts, areTypedAndPastedInTheFormOfTheLocale)
{
    const struct
    {
        bool IsPasted;
        const char16_t *Text, *French, *English;
    } cases[] = {
        {false, u"", u"0,00", u"0.00"},
        {false, u"-1234.5", u"-1\u202F234,50", u"-1,234.50"},
        {false, u"−3", u"-3,00", u"-3.00"},
        {false, u"1.999", u"1,99", u"1.99"}, // a third decimal cannot be typed
        {false, u"12abc€5", u"125,00", u"125.00"},
        {false, u"1..2", u"1,20", u"1.20"},
        {false, u"5-", u"5,00", u"5.00"},
        {false, u"9007199254740993.01", u"9\u202F007\u202F199\u202F254\u202F740\u202F993,01",
         u"9,007,199,254,740,993.01"}, // no binary fraction has it
        {false, u"-", u"refused", u"refused"},
        {true, u"1\u202F234,50 €", u"1\u202F234,50", u"1,234.50"},
        {true, u" -0,005 ", u"-0,01", u"-0.01"},
        {true, u"voir facture", u"0,00", u"0.00"},
        {true, u"99999999999999999999", u"refused", u"refused"},
    };
    for (const auto &one : cases)
        for (const auto &[locale, shown] : {std::pair(French, one.French), {English, one.English}}) {
            inLocale(locale);
            if (one.IsPasted)
                paste(wide(one.Text));
            else
                TypeKeys(m_edit, wide(one.Text));
            EXPECT_EQ(left(), wide(shown)) << wide(one.Text).toStdString();
        }
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(Amounts, arePastedFromTheMenuAndIntoWhatStandsThere)
{
    inLocale(French);
    QApplication::clipboard()->setText(u"2.5"_s);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {2, 2}, m_edit.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&m_edit, &event);
    auto *menu = m_edit.findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_P);
    EXPECT_EQ(m_edit.text(), u"2,50"_s);
    QTest::keyClick(&m_edit, Qt::Key_Home);
    paste(u"1"_s);
    EXPECT_EQ(left(), u"12,50"_s);
}

TEST_F(Amounts, areReplacedByWhatIsTypedAfterAClick)
{
    inLocale(QLocale(QLocale::French, QLocale::France));
    m_edit.setValue(TDecimal(125, 1));
    m_other.setFocus();
    const QPoint inside(6, m_edit.height() / 2);
    QTest::mouseClick(&m_edit, Qt::LeftButton, {}, inside);
    EXPECT_TRUE(m_edit.hasFocus());
    EXPECT_EQ(m_edit.selectedText(), m_edit.text());
    QTest::keyClicks(&m_edit, u"3"_s);
    EXPECT_EQ(m_edit.text(), u"3"_s);
    QTest::mouseClick(&m_edit, Qt::LeftButton, {}, inside);
    EXPECT_FALSE(m_edit.hasSelectedText()) << "a second click sets the cursor";
}

TEST_F(Amounts, keepTheFocusUntilTheyAreAmounts)
{
    auto &button = m_form.Add<QPushButton>();
    button.setDefault(true);
    QSignalSpy pressed(&button, &QPushButton::clicked),
        changed(&m_edit, &TzmCurrencyEdit::OnEditValueChanged);
    inLocale(French);
    m_edit.setValue(TDecimal(125, 1));
    changed.clear();
    EXPECT_EQ(m_edit.text(), u"12,50"_s);
    m_edit.selectAll();
    TypeKeys(m_edit, u"-"_s);
    QTest::keyClick(&m_edit, Qt::Key_Return);
    EXPECT_EQ(m_told.Take(), QStringList(u"« - » n'est pas un montant"_s));
    EXPECT_THROW(m_edit.Value(), EConvertError);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.setFocus();
    EXPECT_TRUE(m_edit.hasFocus());
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_EQ(changed.count(), 0);
    QTest::keyClick(&m_edit, Qt::Key_Escape);
    EXPECT_EQ(m_edit.Value(), TDecimal(125, 1));
    EXPECT_EQ(m_edit.selectedText(), u"12,50"_s);
    TypeKeys(m_edit, u"7"_s);
    QTest::keyClick(&m_edit, Qt::Key_Return);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(m_edit.Value(), TDecimal(7));
}

TEST_F(Amounts, haveFormatsAndANullOfTheForm)
{
    inLocale(French);
    m_edit.setNullable(true);
    m_edit.setNullstring(u"à convenir"_s);
    EXPECT_EQ(left(), u"à convenir"_s);
    m_edit.setDisplayFormat(u",0.000 €;(,0.000 €)"_s);
    m_edit.setEditFormat(u"0.000"_s);
    m_edit.setDecimalPlaces(3);
    m_edit.setEditValue(u"-1234.5"_s);
    EXPECT_EQ(m_edit.text(), u"(1\u202F234,500 €)"_s);
    m_edit.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(m_edit.text(), u"-1234,500"_s);
    // The decimal key of the keypad says "." on some keyboards and "," on others.
    m_edit.selectAll();
    for (const auto &[key, text] : {std::pair(Qt::Key_1, "1"), {Qt::Key_Comma, ","}, {Qt::Key_2, "2"}})
        QTest::sendKeyEvent(QTest::Click, &m_edit, key, QString::fromLatin1(text), Qt::KeypadModifier);
    EXPECT_EQ(m_edit.Value(), TDecimal(12, 1));
    m_edit.clear();
    QTest::keyClick(&m_edit, Qt::Key_Space);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    EXPECT_EQ(left(), u"à convenir"_s);
    EXPECT_FALSE(m_edit.EditValue().isValid());
    EXPECT_THROW(m_edit.setEditValue(u"cher"_s), EConvertError);
}
