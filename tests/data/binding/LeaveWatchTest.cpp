#include "Form.h"

#include <Zelmar01/core/LeaveWatch.h>

#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenuBar>
#include <QSignalSpy>
#include <QSpinBox>

using namespace Zelmar01;

TEST(LeaveWatch, onlyAnotherWidgetOfTheWindowIsLeaving)
{
    Form form;
    auto &box = form.Add<QComboBox>();
    box.setEditable(true);
    box.addItems({QStringLiteral("a"), QStringLiteral("b")});
    auto &other = form.Add<QLineEdit>();
    QMenuBar menus(&form);
    menus.setFocusPolicy(Qt::StrongFocus);
    form.Show();
    TLeaveWatch watch(&box);
    QSignalSpy left(&watch, &TLeaveWatch::OnLeave);

    box.setFocus();
    box.showPopup();
    QCoreApplication::processEvents();
    box.hidePopup();
    EXPECT_EQ(left.count(), 0) << "its own popup";
    menus.setFocus(Qt::MenuBarFocusReason);
    box.setFocus();
    EXPECT_EQ(left.count(), 0) << "a menu";
    {
        Form window;
        auto &elsewhere = window.Add<QLineEdit>();
        window.Show();
        elsewhere.setFocus();
        EXPECT_EQ(left.count(), 0) << "another window";
    }
    form.Show();
    other.setFocus();
    EXPECT_EQ(left.count(), 1) << "from another window to another widget";
    other.clearFocus();
    other.setFocus();
    EXPECT_EQ(left.count(), 1) << "it was not inside";
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(left.count(), 2);
}
