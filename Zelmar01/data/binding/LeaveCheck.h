#pragma once

#include <QTimer>
#include <QWidget>

#include <exception>
#include <functional>

namespace Zelmar01 {

/// A check that runs when the user leaves a control (see TLeaveWatch) and may raise to refuse: the control
/// then gets the focus back, and the exception display tells the user, once.
///
/// It tells when no mouse button is down any more, since what took the focus may be a button that clears up
/// the matter by itself, or closes the window. A control that was left for another page has its own shown
/// again by then. One that is hidden in another way, or disabled, is left alone: its value is refused again
/// when it is asked for.
///
/// Of several controls of a window the one that was left gets the focus; others that are refused while it
/// does wait for their turn.
class TLeaveCheck : public QObject
{
    Q_OBJECT
public:
    /// `control` owns the check. `isOpen` says, when the user is to be told, whether what was refused is
    /// still what the control shows.
    TLeaveCheck(QWidget *control, std::function<void()> check, std::function<bool()> isOpen);

    /// Somebody else tells the user what was refused.
    void Forget() { m_untold = nullptr; }
    /// Gives the control the focus and shows the pages on which it stands.
    void Return();

private:
    void leave();
    void tell();
    void takeFocus();
    bool isAnyReturning() const;
    QWidget *control() const { return static_cast<QWidget *>(parent()); }

    std::function<void()> m_check;
    std::function<bool()> m_isOpen;
    std::exception_ptr m_untold;
    bool m_returning = false; // the control is being given the focus
    QTimer m_tell;
};

} // namespace Zelmar01
