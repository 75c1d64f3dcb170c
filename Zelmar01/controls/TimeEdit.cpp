#include <Zelmar01/controls/TimeEdit.h>

#include <QWheelEvent>

namespace Zelmar01 {

tzmTimeEdit::tzmTimeEdit(QWidget *parent) : QTimeEdit(parent)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    resetCircular();
    resetTimeFormat();
}

void tzmTimeEdit::setTimeFormat(TTimeFormat format)
{
    m_format = format;
    setDisplayFormat(format == tfHourMinSec ? QStringLiteral("HH:mm:ss")
                     : format == tfHour     ? QStringLiteral("HH")
                                            : QStringLiteral("HH:mm"));
}

// A wheel that scrolls the form must not change the time.
void tzmTimeEdit::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QTimeEdit::wheelEvent(event);
    else
        event->ignore();
}

} // namespace Zelmar01
