#include <demo/DatabaseDialog.h>
#include <demo/Hands.h>
#include <demo/MainWindow.h>
#include <demo/NewLevelDialog.h>
#include <demo/ShopDatabase.h>

#include <support/TempFolder.h>

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Shop;
using namespace Zelmar01;

namespace {

// What a user works with; the rest is text, frames and the parts of these.
const QSet<int> &controlRoles()
{
    static const QSet<int> roles{
        QAccessible::PushButton,   QAccessible::ButtonMenu,  QAccessible::ButtonDropDown,
        QAccessible::CheckBox,     QAccessible::RadioButton, QAccessible::ComboBox,
        QAccessible::EditableText, QAccessible::SpinBox,     QAccessible::List,
        QAccessible::Tree,         QAccessible::Table,       QAccessible::PageTabList,
        QAccessible::Link,         QAccessible::ProgressBar, QAccessible::Slider,
        QAccessible::Dial,         QAccessible::HotkeyField};
    return roles;
}

QAccessible::Role roleOf(QWidget *widget)
{
    auto *const told = QAccessible::queryAccessibleInterface(widget);
    return told ? told->role() : QAccessible::NoRole;
}

// The control that a widget is a part of, as the line of a combo box is; the widget itself when it is none.
QWidget *controlOf(QWidget *widget, const QWidget *root)
{
    auto *control = widget;
    for (auto *above = widget->parentWidget(); above && above != root; above = above->parentWidget()) {
        const auto role = roleOf(above);
        const bool holdsControls = role == QAccessible::PageTabList || role == QAccessible::Client;
        if (controlRoles().contains(role) && !holdsControls)
            control = above;
    }
    return control;
}

// Text that the mouse can select takes clicks, and asks for nothing.
bool onlyShows(const QWidget *widget)
{
    const auto *const line = qobject_cast<const QLineEdit *>(widget);
    return widget->focusPolicy() == Qt::ClickFocus &&
           (qobject_cast<const QLabel *>(widget) || (line && line->isReadOnly()));
}

// The arrow keys do what the arrows beside tabs do.
bool isTabArrow(const QWidget *widget)
{
    const auto *const arrows = widget->parentWidget();
    return widget->focusPolicy() == Qt::NoFocus && !arrows->inherits("Zelmar01::TTabSheet") &&
           arrows->parentWidget() && roleOf(arrows->parentWidget()) == QAccessible::PageTabList;
}

// The controls that are seen below a window, with whatever else takes the focus.
QList<QWidget *> controlsOn(QWidget *root)
{
    QList<QWidget *> controls;
    for (auto *const widget : root->findChildren<QWidget *>()) {
        const bool takesFocus =
            widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy() && !onlyShows(widget);
        if (widget->isVisible() && !widget->isWindow() && !isTabArrow(widget) &&
            controlOf(widget, root) == widget &&
            (takesFocus || (controlRoles().contains(roleOf(widget)) && !onlyShows(widget))))
            controls << widget;
    }
    return controls;
}

// Where the Tab key leads to, all the way round.
QSet<QWidget *> tabStops(QWidget *root)
{
    QSet<QWidget *> stops;
    auto *start = root->focusWidget() ? root->focusWidget() : root;
    start->setFocus();
    for (int step = 0; step < 500; ++step) {
        auto *const focus = QApplication::focusWidget();
        if (!focus)
            break;
        if (stops.contains(focus) && focus == start)
            break;
        if (step == 0)
            start = focus;
        stops << focus << controlOf(focus, root);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return stops;
}

// The key that leads to a control; a list that drops down also names the one that opens it.
QString mnemonicOf(QWidget *widget)
{
    auto *const told = QAccessible::queryAccessibleInterface(widget);
    const auto key = told ? told->text(QAccessible::Accelerator) : QString();
    return key.contains(u'+') ? key : QString();
}

// The arrow keys go from one choice of a group to the next.
bool hasNeighbourIn(const QSet<QWidget *> &stops, const QWidget *control)
{
    const auto *const choice = qobject_cast<const QRadioButton *>(control);
    const auto choices =
        choice ? choice->parentWidget()->findChildren<QRadioButton *>() : QList<QRadioButton *>();
    return std::ranges::any_of(choices, [&](auto *other) { return stops.contains(other); });
}

std::string descriptionOf(QWidget *widget)
{
    return widget->metaObject()->className() + (" " + widget->objectName().toStdString());
}

// Checks everything that can be worked with below a window.
void check(QWidget *root)
{
    root->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(root));
    const auto stops = tabStops(root);
    EXPECT_GT(stops.size(), 1);
    QMap<QString, QWidget *> mnemonics;
    for (auto *const control : controlsOn(root)) {
        SCOPED_TRACE(descriptionOf(control));
        auto *const told = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(told, nullptr);
        EXPECT_FALSE(told->text(QAccessible::Name).trimmed().isEmpty()) << "it has no name";
        // A place that scrolls, text that can be selected with the keys and a picture are what they are.
        EXPECT_TRUE(controlRoles().contains(told->role()) || qobject_cast<QScrollArea *>(control) ||
                    told->role() == QAccessible::StaticText || told->role() == QAccessible::Graphic)
            << "its role is " << told->role();
        const auto state = told->state();
        EXPECT_EQ(state.disabled != 0, !control->isEnabled());
        EXPECT_FALSE(state.invisible);
        if (const auto mnemonic = mnemonicOf(control); !mnemonic.isEmpty() && control->isEnabled()) {
            EXPECT_FALSE(mnemonics.contains(mnemonic))
                << mnemonic.toStdString() << " is also " << descriptionOf(mnemonics[mnemonic]);
            mnemonics.insert(mnemonic, control);
        }
        // What only shows need not be reached.
        if (!control->isEnabled() || told->role() == QAccessible::ProgressBar)
            continue;
        EXPECT_TRUE(state.focusable) << "it does not tell that it takes the focus";
        EXPECT_TRUE(stops.contains(control) || hasNeighbourIn(stops, control)) << "no key leads to it";
    }
}

class Accessibility : public testing::Test
{
protected:
    // Has `work` done with the dialog that opens next, and closes it.
    static void inDialog(const std::function<void(QDialog *)> &work, QPushButton &opener)
    {
        bool opened = false;
        QTimer::singleShot(0, &opener, [&] {
            auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            opened = true;
            work(dialog);
            dialog->reject();
        });
        opener.click();
        EXPECT_TRUE(opened);
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(Accessibility, EveryControlOfEveryPageIsReachedByKeyNamedAndDescribed)
{
    ShopDatabase database(QString::fromStdString(m_folder / "shop.db"));
    MainWindow window(&QDateTime::currentDateTime, database, nullptr);
    window.show();
    // What is enabled by work is to be seen enabled.
    Find<QPushButton>(window, u"add"_s).click();
    Find<QPushButton>(window, u"addJob"_s).click();
    for (auto *const page : window.Pages()) {
        SCOPED_TRACE(page->objectName().toStdString());
        window.ShowPage(page);
        QTest::qWait(50);
        check(&window);
    }
}

TEST_F(Accessibility, SoIsEveryControlOfTheDialogs)
{
    ShopDatabase database(QString::fromStdString(m_folder / "shop.db"));
    {
        DatabaseDialog dialog(database.Place());
        dialog.show();
        for (int engine = 0; engine < 3; ++engine) {
            SCOPED_TRACE(engine);
            Find<QComboBox>(dialog, u"engine"_s).setCurrentIndex(engine);
            check(&dialog);
        }
    }
    {
        auto *const dialog = new NewLevelDialog(
            u"Rayon"_s, {}, u"9"_s, [](const TNewLevel &) { return false; }, nullptr);
        dialog->show();
        check(dialog);
        dialog->close();
    }
    MainWindow window(&QDateTime::currentDateTime, database, nullptr);
    window.show();
    inDialog([](QDialog *dialog) { check(dialog); }, Find<QPushButton>(window, u"editCodes"_s));
    window.ShowPage(window.findChild<QWidget *>(u"tasks"_s));
    Find<QPushButton>(window, u"addJob"_s).click();
    inDialog(
        [](QDialog *sheet) {
            auto *const tabs = sheet->findChild<QTabWidget *>();
            ASSERT_NE(tabs, nullptr);
            for (int page = 0; page < tabs->count(); ++page) {
                SCOPED_TRACE(page);
                tabs->setCurrentIndex(page);
                check(sheet);
            }
        },
        Find<QPushButton>(window, u"showJob"_s));
}
