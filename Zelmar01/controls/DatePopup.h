#pragma once

#include <QDateTime>
#include <QFlags>
#include <QFrame>

class QCalendarWidget;
class QComboBox;
class QSpinBox;
class QTimeEdit;

namespace Zelmar01 {

/// What the drop-down calendar of a date editor has besides its days.
struct TDatePopupParts
{
    bool Clear = true, Now = true, Today = true; ///< the buttons
    bool Time = false;                           ///< a time of day to choose
    bool YearsInMonthList = false; ///< the list of months has those of the neighbouring years too
};

/// The drop-down calendar of a date editor. It closes, and deletes itself, when a day or a button is picked,
/// on Escape and on a click elsewhere.
class TDatePopup : public QFrame
{
    Q_OBJECT
public:
    /// `shown` is the day (and time) that it begins with.
    TDatePopup(const TDatePopupParts &parts, const QDateTime &shown, QWidget *editor);

    /// Opens it below the editor, or above it where there is no room.
    void OpenAt(const QWidget &editor);

signals:
    /// Invalid for the button that clears.
    void OnPick(const QDateTime &moment);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeHeader(bool yearsInMonthList);
    QWidget *makeButtons(const TDatePopupParts &parts);
    void fillMonths(bool yearsInMonthList);
    void showMonth(bool yearsInMonthList);
    void pick(const QDateTime &moment);
    void pickDay(QDate day);

    QCalendarWidget *m_calendar;
    QComboBox *m_month;
    QSpinBox *m_year;
    QTimeEdit *m_time = nullptr;
};

} // namespace Zelmar01
