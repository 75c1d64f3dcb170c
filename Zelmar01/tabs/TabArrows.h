#pragma once

#include <Zelmar01/tabs/Rect.h>

#include <QWidget>

#include <functional>

class QToolButton;

namespace Zelmar01 {

/// The two arrows that scroll a strip whose tabs find no room. They cover the end of the strip.
class TTabArrows : public QWidget
{
public:
    /// `scroll` is called with -1 and 1, again and again while a button is held.
    TTabArrows(QWidget *parent, std::function<void(int)> scroll);

    void Place(const TRect &rect, bool vertical, bool canGoBack, bool canGoForward);

private:
    QToolButton *m_back, *m_forward;
};

} // namespace Zelmar01
