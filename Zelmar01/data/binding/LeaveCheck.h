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
/// the matter by itself.
class TLeaveCheck : public QObject
{
    Q_OBJECT
public:
    /// `control` owns the check. `isOpen` says, when the user is to be told, whether what was refused is
    /// still what the control shows.
    TLeaveCheck(QWidget *control, std::function<void()> check, std::function<bool()> isOpen);

    /// Somebody else tells the user what was refused.
    void Forget() { m_untold = nullptr; }

private:
    void leave();
    void tell();

    std::function<void()> m_check;
    std::function<bool()> m_isOpen;
    std::exception_ptr m_untold;
    QTimer m_tell;
};

} // namespace Zelmar01
