#include <Zelmar01/data/binding/LeaveCheck.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/LeaveWatch.h>
#include <Zelmar01/core/Pages.h>

#include <QApplication>
#include <QScopedValueRollback>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr std::chrono::milliseconds buttonPoll{10};

} // namespace

TLeaveCheck::TLeaveCheck(QWidget *control, std::function<void()> check, std::function<bool()> isOpen)
    : QObject(control), m_check(std::move(check)), m_isOpen(std::move(isOpen))
{
    m_tell.setSingleShot(true);
    connect(&m_tell, &QTimer::timeout, this, &TLeaveCheck::tell);
    connect(new TLeaveWatch(control), &TLeaveWatch::OnLeave, this, &TLeaveCheck::leave);
}

void TLeaveCheck::leave()
{
    try {
        m_check();
    } catch (...) {
        if (isAnyReturning())
            return;
        m_untold = std::current_exception();
        takeFocus();
        m_tell.start(0);
    }
}

bool TLeaveCheck::isAnyReturning() const
{
    const auto all = control()->window()->findChildren<TLeaveCheck *>();
    return std::any_of(all.begin(), all.end(), [](const TLeaveCheck *check) { return check->m_returning; });
}

// A hidden control would lose the focus with every window that opens, and be left anew when that closes.
void TLeaveCheck::takeFocus()
{
    const QScopedValueRollback returning(m_returning, true);
    if (control()->isVisible())
        control()->setFocus(Qt::OtherFocusReason);
}

void TLeaveCheck::Return()
{
    const QScopedValueRollback returning(m_returning, true);
    ShowPagesOf(*control());
    takeFocus();
}

void TLeaveCheck::tell()
{
    if (QApplication::mouseButtons() != Qt::NoButton)
        return m_tell.start(buttonPoll);
    const auto error = std::exchange(m_untold, nullptr);
    if (!error || !m_isOpen() || !control()->window()->isVisible())
        return;
    if (!control()->isVisible()) // its page has gone, and may not be changed while that is under way
        Return();
    ShowingExceptions([&] { std::rethrow_exception(error); });
}

} // namespace Zelmar01
