#include <Zelmar01/controls/DateTimePickerPlus.h>

#include <Zelmar01/data/binding/DateText.h>

#include <QKeyEvent>
#include <QLineEdit>

namespace Zelmar01 {

TDateTimePickerPlus::TDateTimePickerPlus(QWidget *parent)
    : QDateTimeEdit(QDate::currentDate().startOfDay(), parent)
{
    setCalendarPopup(true);
    setDisplayFormat(DatePattern(locale()));
    lineEdit()->setReadOnly(true); // against the menu, dropped texts and input methods
}

void TDateTimePickerPlus::changeEvent(QEvent *event)
{
    QDateTimeEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange)
        setDisplayFormat(DatePattern(locale()));
}

void TDateTimePickerPlus::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_F4:
        return QDateTimeEdit::keyPressEvent(event);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return event->ignore(); // the dialog's
    default:
        // A text is swallowed, other keys are the window's.
        event->setAccepted(!event->text().isEmpty() || event->matches(QKeySequence::Paste) ||
                           event->matches(QKeySequence::Cut) || event->matches(QKeySequence::Delete));
    }
}

void TDateTimePickerPlus::inputMethodEvent(QInputMethodEvent *event)
{
    event->accept();
}

} // namespace Zelmar01
