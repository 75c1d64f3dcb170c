#include "EditorShop.h"

#include <Zelmar01/controls/DatePopup.h>
#include <Zelmar01/controls/DateTimePickerPlus.h>
#include <Zelmar01/controls/TimeEdit.h>
#include <Zelmar01/controls/zmDateEdit.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QToolButton>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

class Dates : public testing::Test
{
protected:
    Dates() { m_form.Show(); }

    /// What stands in the edit once it has been left, or "refused".
    QString typed(tzmDateEdit &edit, const QLocale &locale, const QString &keys)
    {
        m_form.setLocale(locale);
        edit.setEditValue({});
        edit.setFocus(Qt::TabFocusReason);
        edit.selectAll();
        TypeKeys(edit, keys);
        QTest::keyClick(&edit, Qt::Key_Tab);
        if (!edit.hasFocus())
            return edit.text();
        EXPECT_EQ(m_told.Take().size(), 1);
        QTest::keyClick(&edit, Qt::Key_Escape);
        m_other.setFocus();
        return u"refused"_s;
    }
    TDatePopup &open()
    {
        m_edit.setFocus();
        QTest::keyClick(&m_edit, Qt::Key_F4);
        auto *popup = qobject_cast<TDatePopup *>(QApplication::activePopupWidget());
        if (!popup)
            throw std::runtime_error("no calendar");
        return *popup;
    }
    static QPushButton *button(const TDatePopup &popup, const QString &text)
    {
        for (auto *button : popup.findChildren<QPushButton *>())
            if (button->text().remove(u'&') == text && button->isVisible())
                return button;
        return nullptr;
    }

    Told m_told;
    Form m_form;
    QLineEdit &m_other = m_form.Add<QLineEdit>();
    tzmDateEdit &m_edit = m_form.Add<tzmDateEdit>();
    tzmDateEditJourMois &m_feast = m_form.Add<tzmDateEditJourMois>();
};

} // namespace

TEST_F(Dates, areTypedOverTheMaskOfTheLocale)
{
    const struct
    {
        const char *Keys, *French, *English;
    } cases[] = {
        {"28022026", "28/02/2026", "refused"},
        {"02282026", "refused", "02/28/2026"},
        {"3/4/2026", "03/04/2026", "03/04/2026"},
        {"29022026", "refused", "refused"},
        {"0102", "01/02/", "01/02/"}, // this year's
        {"01a0b2c2026", "01/02/2026", "01/02/2026"},
        {"", "", ""},
    };
    for (const auto &one : cases)
        for (const auto &[locale, wanted] : {std::pair(French, one.French), {English, one.English}}) {
            auto shown = QString::fromLatin1(wanted);
            if (shown.endsWith(u'/'))
                shown += QString::number(QDate::currentDate().year());
            EXPECT_EQ(typed(m_edit, locale, QString::fromLatin1(one.Keys)), shown) << one.Keys;
        }
    m_edit.setInputKind(tzmDateEdit::ikStandard);
    EXPECT_EQ(typed(m_edit, French, u"3.4.26"_s), u"03/04/2026"_s) << "freely";
    EXPECT_EQ(typed(m_edit, French, u"x3y/4/26"_s), u"03/04/2026"_s) << "letters cannot be typed";
    m_edit.setFocus();
    QApplication::clipboard()->setText(u"2026-12-31"_s);
    QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(m_edit.Date(), QDate(2026, 12, 31));
    QTest::keyClick(&m_edit, Qt::Key_Escape);
    EXPECT_EQ(m_edit.Date(), QDate(2026, 4, 3));
}

TEST_F(Dates, aDayAndAMonthAreAllThatAFeastDayHas)
{
    const struct
    {
        const char *Keys, *Shown;
    } cases[] = {
        {"2902", "29/02"}, {"1/3", "01/03"},      {"30/02", "refused"}, {"1", "refused"},
        {"32", "refused"}, // the 2 is not taken
        {"1/13", "01/01"}, {"1/2/2026", "01/02"}, {"a1/b2", "01/02"},   {"", ""},
    };
    for (const auto &one : cases)
        for (const auto &locale : {French, English})
            EXPECT_EQ(typed(m_feast, locale, QString::fromLatin1(one.Keys)), QString::fromLatin1(one.Shown))
                << one.Keys;
    m_feast.setDate(QDate(1984, 2, 29));
    m_feast.setFocus();
    m_feast.selectAll();
    TypeKeys(m_feast, u"1/5"_s);
    EXPECT_EQ(m_feast.Date(), QDate(1984, 5, 1)) << "in the year that was there";
}

TEST_F(Dates, arePickedFromTheCalendar)
{
    m_form.setLocale(French);
    m_edit.setDate(QDate(2026, 2, 27));
    auto *calendar = open().findChild<QCalendarWidget *>();
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 2, 27));
    auto *days = calendar->findChild<QAbstractItemView *>();
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(m_edit.EditValue(), QVariant(QDate(2026, 3, 1)));
    EXPECT_TRUE(m_edit.hasFocus());

    QTest::keyClick(open().findChild<QCalendarWidget *>(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(m_edit.Date(), QDate(2026, 3, 1));

    const struct
    {
        QString Text;
        QVariant Value;
    } buttons[] = {
        {u"Effacer"_s, {}},
        {u"Maintenant"_s, QDate::currentDate()}, // without its time
        {u"Aujourd'hui"_s, QDate::currentDate()},
    };
    for (const auto &one : buttons) {
        m_edit.setDate(QDate(2026, 2, 27));
        auto *pressed = button(open(), one.Text);
        ASSERT_NE(pressed, nullptr) << one.Text.toStdString();
        QTest::mouseClick(pressed, Qt::LeftButton);
        EXPECT_EQ(m_edit.EditValue(), one.Value) << one.Text.toStdString();
    }

    m_edit.setDateButtons(tzmDateEdit::btnToday);
    m_edit.setYearsInMonthList(true);
    m_edit.setDate(QDate(2026, 2, 27));
    auto &popup = open();
    EXPECT_EQ(button(popup, u"Effacer"_s), nullptr);
    auto *months = popup.findChild<QComboBox *>();
    EXPECT_EQ(months->count(), 25);
    EXPECT_EQ(months->currentText(), u"février 2026"_s);
    popup.close();

    m_edit.setReadOnly(true);
    QTest::keyClick(&m_edit, Qt::Key_Down, Qt::AltModifier);
    QTest::mouseClick(m_edit.findChild<QToolButton *>(), Qt::LeftButton);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Dates, aClickOnTheArrowOpensAndClosesTheCalendar)
{
    QApplication::processEvents();
    auto *arrow = m_edit.findChild<QToolButton *>();
    EXPECT_GE(arrow->geometry().left(), m_edit.width() / 2);
    EXPECT_TRUE(m_edit.rect().contains(arrow->geometry()));
    QTest::mouseClick(arrow, Qt::LeftButton);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::mouseClick(QApplication::activePopupWidget(), Qt::LeftButton, {}, {-20, -20});
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Dates, aTimeIsKeptWhereTheFormAsksForIt)
{
    m_form.setLocale(French);
    m_edit.setShowTime(true);
    m_edit.setSaveTime(true);
    m_edit.setEditValue(QDateTime(QDate(2026, 2, 28), QTime(13, 45)));
    EXPECT_EQ(m_edit.text(), u"28/02/2026 13:45"_s);
    m_edit.setFocus(Qt::TabFocusReason);
    m_edit.selectAll();
    TypeKeys(m_edit, u"010320260905"_s);
    EXPECT_EQ(m_edit.EditValue(), QVariant(QDateTime(QDate(2026, 3, 1), QTime(9, 5))));
}

TEST(Picker, ignoresTypingAndFollowsArrowsAndMouse)
{
    Form form;
    form.setLocale(French);
    auto &picker = form.Add<TDateTimePickerPlus>();
    auto &other = form.Add<QLineEdit>();
    form.Show();
    picker.setFocus();
    EXPECT_EQ(picker.dateTime(), QDate::currentDate().startOfDay());
    const QDate day(2026, 2, 28);
    picker.setDate(day);
    QApplication::clipboard()->setText(u"01/01/2001"_s);
    TypeKeys(picker, u"01/01/2001é"_s);
    for (const auto key : {Qt::Key_1, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Space, Qt::Key_PageUp})
        QTest::keyClick(&picker, key);
    for (const auto key : {Qt::Key_V, Qt::Key_X})
        QTest::keyClick(&picker, key, Qt::ControlModifier);
    QInputMethodEvent composed;
    composed.setCommitString(u"12"_s);
    QApplication::sendEvent(&picker, &composed);
    EXPECT_EQ(picker.date(), day);

    picker.setCurrentSection(QDateTimeEdit::DaySection);
    QTest::keyClick(&picker, Qt::Key_Down);
    EXPECT_EQ(picker.date(), QDate(2026, 2, 27));
    QTest::keyClick(&picker, Qt::Key_Right);
    QTest::keyClick(&picker, Qt::Key_Up);
    EXPECT_EQ(picker.dateTime(), QDate(2026, 3, 27).startOfDay());
    QTest::keyClick(&picker, Qt::Key_F4);
    auto *calendar = picker.calendarWidget();
    ASSERT_TRUE(calendar->isVisible());
    auto *days = calendar->findChild<QAbstractItemView *>();
    QTest::keyClicks(days, u"05"_s);
    QTest::keyClick(days, Qt::Key_Left);
    QTest::keyClick(days, Qt::Key_Return);
    EXPECT_EQ(picker.date(), QDate(2026, 3, 26));
    other.setFocus();
    TurnWheel(picker);
    EXPECT_EQ(picker.date(), QDate(2026, 3, 26)) << "a wheel that scrolls the form";
}

TEST(TimeEditor, runsOnFromTheLastMinuteToTheFirst)
{
    Form form;
    auto &edit = form.Add<tzmTimeEdit>();
    form.Show();
    edit.setTime(QTime(23, 59));
    EXPECT_EQ(edit.text(), u"23:59"_s);
    edit.setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.time(), QTime(0, 59));
    edit.setTimeFormat(tzmTimeEdit::tfHourMinSec);
    EXPECT_EQ(edit.text(), u"00:59:00"_s);
    edit.clearFocus();
    TurnWheel(edit);
    EXPECT_EQ(edit.text(), u"00:59:00"_s);
}
