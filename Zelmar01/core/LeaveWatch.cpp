#include <Zelmar01/core/LeaveWatch.h>

#include <QApplication>
#include <QMenuBar>

namespace Zelmar01 {

TLeaveWatch::TLeaveWatch(QWidget *control) : QObject(control)
{
    connect(qApp, &QApplication::focusChanged, this, &TLeaveWatch::follow);
}

// Not what the signal tells: another watch may have moved the focus again since.
void TLeaveWatch::follow()
{
    const auto *now = QApplication::focusWidget();
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
