#include <Zelmar01/core/LeaveWatch.h>

#include <QApplication>
#include <QMenuBar>

namespace Zelmar01 {

TLeaveWatch::TLeaveWatch(QWidget *control) : QObject(control)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { follow(now); });
}

void TLeaveWatch::follow(const QWidget *now)
{
    if (!now)
        return;
    if (now == control() || control()->isAncestorOf(now)) {
        m_inside = true;
    } else if (m_inside && now->window() == control()->window() && !qobject_cast<const QMenuBar *>(now)) {
        m_inside = false;
        emit OnLeave();
    }
}

} // namespace Zelmar01
