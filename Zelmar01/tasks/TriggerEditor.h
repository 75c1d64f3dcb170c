#pragma once

#include <Zelmar01/tasks/service/MSTask.h>

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QSpinBox;
class QStackedWidget;
class QTimeEdit;

namespace Zelmar01 {

class TBitGrid;
class TMinutesField;

/// The fields of one trigger.
class TTriggerEditor : public QWidget
{
    Q_OBJECT
public:
    TTriggerEditor();

    void SetTrigger(const TASK_TRIGGER &trigger);
    /// The trigger that was set, with what the fields say now.
    TASK_TRIGGER Trigger() const;

    /// Raises ERefusedValue (TaskPageWidget.h) for a trigger that the service refuses, or that could never
    /// start a job.
    void Check() const;

signals:
    /// The user changed something.
    void Changed();

private:
    QWidget *makeStart();
    QWidget *makeDaily();
    QWidget *makeWeekly();
    QWidget *makeMonthlyDate();
    QWidget *makeMonthlyDow();
    QWidget *makeRepetition();
    /// A trigger that was read may be of none of the kinds; it has none chosen.
    bool kindIsKnown() const;
    TASK_TRIGGER_TYPE kind() const;
    void kindChosen();
    void fieldChanged();
    void enableFields();

    TASK_TRIGGER m_base;
    bool m_showing = false;
    QComboBox *m_kind;
    QTimeEdit *m_time;
    QDateEdit *m_begin, *m_end;
    QCheckBox *m_hasEnd, *m_active;
    QStackedWidget *m_details;
    QSpinBox *m_days = nullptr, *m_weeks = nullptr;
    TBitGrid *m_weekDays = nullptr;
    TBitGrid *m_monthDays = nullptr, *m_dateMonths = nullptr;
    QComboBox *m_which = nullptr;
    TBitGrid *m_dowDays = nullptr, *m_dowMonths = nullptr;
    QCheckBox *m_repeat = nullptr, *m_kill = nullptr;
    TMinutesField *m_interval = nullptr, *m_duration = nullptr;
    QLabel *m_event = nullptr;
};

} // namespace Zelmar01
