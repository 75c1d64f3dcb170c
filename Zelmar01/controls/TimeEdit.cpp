#include <Zelmar01/controls/TimeEdit.h>

namespace Zelmar01 {

tzmTimeEdit::tzmTimeEdit(QWidget *parent) : QTimeEdit(parent)
{
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

} // namespace Zelmar01
