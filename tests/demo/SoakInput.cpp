#include "SoakInput.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <array>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

// Loops within loops: a dialog over a dialog, a long piece of work that takes messages.
constexpr int deepest = 5;

constexpr std::array keys{Qt::Key_Tab,    Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Up,     Qt::Key_Down,
                          Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Return, Qt::Key_Escape,
                          Qt::Key_Space,  Qt::Key_Home,   Qt::Key_End,       Qt::Key_PageUp, Qt::Key_PageDown,
                          Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F2,     Qt::Key_F4,
                          Qt::Key_F5,     Qt::Key_F8,     Qt::Key_F9,        Qt::Key_F10,    Qt::Key_Plus,
                          Qt::Key_Minus,  Qt::Key_0,      Qt::Key_1,         Qt::Key_9,      Qt::Key_Comma,
                          Qt::Key_A,      Qt::Key_E,      Qt::Key_Z,         Qt::Key_Menu};

constexpr std::array modifiers{Qt::NoModifier,    Qt::NoModifier,      Qt::NoModifier, Qt::NoModifier,
                               Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};

// Where the next input goes: a menu or list that has dropped down, the dialog on top, or the shop.
QWidget *target(QWidget &shop)
{
    if (auto *const popup = QApplication::activePopupWidget())
        return popup;
    if (auto *const dialog = QApplication::activeModalWidget())
        return dialog;
    return &shop;
}

// Dialogs of the desktop reach all files of the machine, or take the whole screen.
bool isOfTheDesktop(const QWidget *window)
{
    return window->inherits("QFileDialog") || window->inherits("QColorDialog") ||
           window->inherits("QFontDialog");
}

void closeOne(QWidget *window)
{
    if (auto *const dialog = qobject_cast<QDialog *>(window))
        dialog->reject();
    else
        window->close();
}

// As the window system would hand it over; what it leads to may close the window.
void mouse(const QPointer<QWindow> &window, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
           const QPoint &place)
{
    if (!window)
        return;
    QMouseEvent event(type, place, place, window->mapToGlobal(place), button, held, Qt::NoModifier);
    QApplication::sendEvent(window, &event);
}

void click(const QPointer<QWindow> &window, Qt::MouseButton button, const QPoint &place)
{
    mouse(window, QEvent::MouseMove, Qt::NoButton, Qt::NoButton, place);
    mouse(window, QEvent::MouseButtonPress, button, button, place);
    mouse(window, QEvent::MouseButtonRelease, button, Qt::NoButton, place);
}

} // namespace

SoakInput::SoakInput(Shop::MainWindow &window, std::mt19937 &random, std::function<void()> after)
    : m_window(window), m_random(random), m_after(std::move(after))
{
}

void SoakInput::Go(int steps)
{
    m_left = steps;
    // The loop ends when the last step has come back from all loops within it.
    QEventLoop loop;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
        if (m_left <= 0 && m_depth == 0 && target(m_window) == &m_window)
            loop.quit();
    });
    watch.start(20ms);
    step();
    loop.exec();
}

// The next step is ordered first: it comes in whatever loop this one begins. Long work that takes messages is
// left alone when nothing more is to be done to it.
void SoakInput::step()
{
    if (m_left <= 0 && m_depth == 0 && target(m_window) == &m_window)
        return;
    const bool waits = m_left <= 0 || m_depth >= deepest;
    QTimer::singleShot(waits ? 20ms : 0ms, &m_window, [this] { step(); });
    ++m_depth;
    --m_left;
    act();
    m_after();
    --m_depth;
}

void SoakInput::act()
{
    auto *const on = target(m_window);
    if (closesWindows(on))
        return;
    if (m_depth > deepest || m_left <= 0)
        return;
    switch (below(20)) {
    case 0:
        changeShop();
        break;
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
    case 8:
    case 9:
        pressKey(on);
        break;
    default:
        useMouse(on);
    }
}

bool SoakInput::closesWindows(QWidget *target)
{
    if (target == &m_window)
        return false;
    if (m_left > 0 && m_depth <= deepest && !isOfTheDesktop(target) && below(25) > 0)
        return false;
    closeOne(target);
    return true;
}

void SoakInput::changeShop()
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return;
    const auto pages = m_window.Pages();
    switch (below(4)) {
    case 0:
        m_window.resize(700 + below(900), 500 + below(500));
        break;
    default:
        m_window.ShowPage(pages[below(static_cast<int>(pages.size()))]);
    }
}

void SoakInput::pressKey(QWidget *target)
{
    auto *const focus = target->focusWidget() ? target->focusWidget() : target;
    QTest::keyClick(focus, keys[m_random() % keys.size()], modifiers[m_random() % modifiers.size()]);
}

void SoakInput::useMouse(QWidget *target)
{
    const QPoint from(below(qMax(1, target->width())), below(qMax(1, target->height())));
    const QPoint to(below(qMax(1, target->width())), below(qMax(1, target->height())));
    const QPointer<QWindow> window = target->windowHandle();
    switch (below(8)) {
    case 0:
        click(window, Qt::LeftButton, from);
        mouse(window, QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton, from);
        mouse(window, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, from);
        break;
    case 1:
        click(window, Qt::RightButton, from);
        break;
    case 2:
        mouse(window, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, from);
        mouse(window, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, (from + to) / 2);
        mouse(window, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, to);
        mouse(window, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, to);
        break;
    case 3: {
        auto *const under = target->childAt(from);
        auto *const receiver = under ? under : target;
        QWheelEvent turned(receiver->mapFrom(target, from), target->mapToGlobal(from), {},
                           {0, below(2) > 0 ? 120 : -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                           false);
        QApplication::sendEvent(receiver, &turned);
        break;
    }
    case 4:
        mouse(window, QEvent::MouseMove, Qt::NoButton, Qt::NoButton, to);
        break;
    default:
        click(window, Qt::LeftButton, from);
    }
}
