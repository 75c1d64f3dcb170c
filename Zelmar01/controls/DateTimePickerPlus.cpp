#include <Zelmar01/controls/DateTimePickerPlus.h>

#include <Zelmar01/data/binding/DateText.h>

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace Zelmar01 {

TDateTimePickerPlus::TDateTimePickerPlus(QWidget *parent)
    : QDateTimeEdit(QDate::currentDate().startOfDay(), parent)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
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
    if (event->key() == Qt::Key_F4 ||
        (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier)))
        return dropDown();
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return QDateTimeEdit::keyPressEvent(event);
    case Qt::Key_Left:
    case Qt::Key_Right:
        return goTo(
            event->key() == (layoutDirection() == Qt::LeftToRight ? Qt::Key_Right : Qt::Key_Left) ? 1 : -1);
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

// The calendar is made when it first drops down. Typing into it is no more meant than typing into the
// control, and what shows the typing is forgotten when the form goes in the middle of it.
void TDateTimePickerPlus::mousePressEvent(QMouseEvent *event)
{
    if (auto *calendar = calendarWidget())
        calendar->setDateEditEnabled(false);
    QDateTimeEdit::mousePressEvent(event);
}

// A wheel that scrolls the form must not change the date.
void TDateTimePickerPlus::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QDateTimeEdit::wheelEvent(event);
    else
        event->ignore();
}

// Another part of the date; the stock control goes through its digits.
void TDateTimePickerPlus::goTo(int neighbour)
{
    setCurrentSectionIndex(std::clamp(currentSectionIndex() + neighbour, 0, sectionCount() - 1));
    setSelectedSection(currentSection());
}

// The stock control opens its calendar by the mouse only.
void TDateTimePickerPlus::dropDown()
{
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    option.subControls = QStyle::SC_All;
    const auto arrow =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent click(type, arrow, mapToGlobal(arrow), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QDateTimeEdit::event(&click);
    }
}

// A composed text goes by this way, past the keys.
bool TDateTimePickerPlus::event(QEvent *event)
{
    return event->type() == QEvent::InputMethod || QDateTimeEdit::event(event);
}

} // namespace Zelmar01
