#pragma once

#include <demo/MainWindow.h>

#include <QPoint>

#include <functional>
#include <random>

/// Random keys, clicks, drags, wheels and sizes for the windows of the shop, its menus and dialogs included.
/// Dialogs get input for a while and are closed then.
class SoakInput
{
public:
    /// `after` is called after each input.
    SoakInput(Shop::MainWindow &window, std::mt19937 &random, std::function<void()> after);

    /// Returns after so many inputs, with all dialogs and menus closed.
    void Go(int steps);

private:
    void step();
    void act();
    void changeShop();
    bool closesWindows(QWidget *target);
    void pressKey(QWidget *target);
    void useMouse(QWidget *target);
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    Shop::MainWindow &m_window;
    std::mt19937 &m_random;
    const std::function<void()> m_after;
    int m_left = 0, m_depth = 0;
};
