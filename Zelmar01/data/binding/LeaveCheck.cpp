#include <Zelmar01/data/binding/LeaveCheck.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/LeaveWatch.h>

#include <QApplication>

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
        m_untold = std::current_exception();
        static_cast<QWidget *>(parent())->setFocus(Qt::OtherFocusReason);
        m_tell.start(0);
    }
}

void TLeaveCheck::tell()
{
    if (QApplication::mouseButtons() != Qt::NoButton)
        return m_tell.start(buttonPoll);
    const auto error = std::exchange(m_untold, nullptr);
    if (error && m_isOpen())
        ShowingExceptions([&] { std::rethrow_exception(error); });
}

} // namespace Zelmar01
