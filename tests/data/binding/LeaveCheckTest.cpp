#include "Form.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/binding/LeaveCheck.h>
#include <Zelmar01/tabs/ExtPageControl.h>

#include <gtest/gtest.h>

#include <QStackedWidget>
#include <QTabWidget>

#include <functional>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

/// A line edit that takes numbers.
class Number : public QLineEdit
{
public:
    Number()
    {
        new TLeaveCheck(
            this, [this] { check(); }, [this] { return !isNumber(); });
    }

private:
    bool isNumber() const { return text().isEmpty() || text().toInt() != 0; }
    void check() const
    {
        if (!isNumber())
            throw EConvertError(text().toStdString());
    }
};

void addPages(QTabWidget &tabs, QWidget &first, QWidget &second)
{
    tabs.addTab(&first, {});
    tabs.addTab(&second, {});
}

void addPages(QStackedWidget &stack, QWidget &first, QWidget &second)
{
    stack.addWidget(&first);
    stack.addWidget(&second);
}

void addPages(TExtPageControl &pages, QWidget &first, QWidget &second)
{
    for (auto *content : {&first, &second}) {
        auto *page = new TTabSheet(&pages);
        (new QVBoxLayout(page))->addWidget(content);
    }
}

void choosePage(TExtPageControl &pages, int index)
{
    pages.SetActivePageIndex(index);
}

template<class Pages>
void choosePage(Pages &pages, int index)
{
    pages.setCurrentIndex(index);
}

template<class Pages>
struct LeaveCheckOnPages : testing::Test
{
};

} // namespace

TEST(LeaveCheck, ofTwoWrongControlsTheOneThatWasLeftIsTold)
{
    for (const int left : {0, 1}) {
        Told told;
        Form form;
        Number *const both[] = {&form.Add<Number>(), &form.Add<Number>()};
        auto &one = *both[left], &other = *both[1 - left];
        form.Show();
        other.setFocus();
        TypeKeys(other, u"x"_s);
        other.setEnabled(false);
        EXPECT_EQ(told.Take(), QStringList(u"x"_s));
        other.setEnabled(true);

        one.setFocus();
        TypeKeys(one, u"y"_s);
        other.setFocus();
        EXPECT_TRUE(one.hasFocus()) << left;
        EXPECT_EQ(told.Take(), QStringList(u"y"_s));
        one.setText(u"1"_s);
        other.setFocus();
        EXPECT_TRUE(other.hasFocus()) << left;
        one.setFocus();
        EXPECT_EQ(told.Take(), QStringList(u"x"_s));
    }
}

TEST(LeaveCheck, aWindowThatClosesIsFollowedByNoMessage)
{
    Told told;
    Form form;
    auto &number = form.Add<Number>();
    auto &cancel = form.Add<QLineEdit>();
    form.Show();
    number.setFocus();
    TypeKeys(number, u"x"_s);
    cancel.setFocus();
    form.close();
    EXPECT_TRUE(told.Take().isEmpty());
}

TEST(LeaveCheck, aControlThatTheHostHidesLetsTheUserGo)
{
    Told told;
    Form form;
    auto &part = form.Add<Form>();
    auto &number = part.Add<Number>();
    auto &other = form.Add<QLineEdit>();
    form.Show();
    number.setFocus();
    TypeKeys(number, u"x"_s);
    part.hide();
    EXPECT_EQ(told.Take(), QStringList(u"x"_s));
    EXPECT_TRUE(other.hasFocus());
}

using KindsOfPages = testing::Types<QTabWidget, QStackedWidget, TExtPageControl>;
TYPED_TEST_SUITE(LeaveCheckOnPages, KindsOfPages);

// A wrong text on a page that is not shown would be one that nobody can correct.
TYPED_TEST(LeaveCheckOnPages, thePageOfARefusedTextIsShownAgain)
{
    Told told;
    Form form;
    auto &pages = form.Add<TypeParam>();
    auto &number = *new Number, &other = *new Number;
    addPages(pages, number, other);
    form.Show();
    number.setFocus();
    TypeKeys(number, u"x"_s);
    choosePage(pages, 1);
    EXPECT_EQ(told.Take(), QStringList(u"x"_s));
    EXPECT_TRUE(number.isVisible() && number.hasFocus());
    number.setText(u"1"_s);
    choosePage(pages, 1);
    EXPECT_TRUE(told.Take().isEmpty());
    EXPECT_TRUE(other.isVisible() && other.hasFocus());
}

// As a refused post does, of a control that the user is far from.
TYPED_TEST(LeaveCheckOnPages, theHostCallsAControlBackOnceForBothPages)
{
    Told told;
    Form form;
    auto &pages = form.Add<TypeParam>();
    auto &number = *new Number, &other = *new Number;
    addPages(pages, number, other);
    form.Show();
    choosePage(pages, 1);
    other.setFocus();
    TypeKeys(other, u"x"_s);
    number.template findChild<TLeaveCheck *>()->Return();
    EXPECT_TRUE(number.isVisible() && number.hasFocus());
    EXPECT_TRUE(told.Take().isEmpty()) << "the other's turn comes later";
    choosePage(pages, 1);
    other.setFocus();
    number.setText(u"x"_s);
    choosePage(pages, 0);
    EXPECT_EQ(told.Take(), QStringList(u"x"_s));
    EXPECT_TRUE(other.isVisible() && other.hasFocus());
}
