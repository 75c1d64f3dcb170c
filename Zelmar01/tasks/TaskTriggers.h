#pragma once

#include <Zelmar01/core/DateTime.h>
#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <memory>
#include <vector>

namespace Zelmar01 {

class TTaskItem;
class TTriggers;

/// One trigger of a job: the service's object and a copy of its record.
///
/// The properties read and write the copy alone. UpdateTrigger() writes it to the job, and the job's Save()
/// to its file.
class TTrigger
{
    Q_GADGET
    Q_PROPERTY(TDateTime BeginDate READ BeginDate WRITE setBeginDate)
    Q_PROPERTY(TDateTime EndDate READ EndDate WRITE setEndDate)
    Q_PROPERTY(bool HasEndDate READ HasEndDate WRITE setHasEndDate)
    Q_PROPERTY(TDateTime StartTime READ StartTime WRITE setStartTime)
    Q_PROPERTY(quint32 Duration READ Duration WRITE setDuration)
    Q_PROPERTY(quint32 Interval READ Interval WRITE setInterval)
    Q_PROPERTY(bool KillAtDurationEnd READ KillAtDurationEnd WRITE setKillAtDurationEnd)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled)
    Q_PROPERTY(TTriggerType TriggerType READ GetType WRITE SetType)
    Q_PROPERTY(QString AsString READ AsString)
public:
    /// The numbers are the service's. A record may hold others.
    enum TTriggerType : quint8 {
        ttOnce,
        ttDaily,
        ttWeekly,
        ttMonthlyDate,
        ttMonthlyDow,
        ttOnIdle,
        ttAtStartup,
        ttAtLogon
    };
    Q_ENUM(TTriggerType)

    /// The record is all zero but for its size. Triggers come from TTriggers.
    TTrigger(const TTriggers &collection, std::shared_ptr<ITaskTrigger> trigger);
    TTrigger(const TTrigger &) = delete;
    TTrigger &operator=(const TTrigger &) = delete;

    /// The first day that may have a start, and with HasEndDate the last one. Reading gives 0 when the record
    /// holds no day of the calendar, writing raises EConvertError outside the years 1 to 9999. Writing the
    /// end date leaves HasEndDate as it is.
    TDateTime BeginDate() const;
    void setBeginDate(TDateTime date);
    TDateTime EndDate() const;
    void setEndDate(TDateTime date);
    bool HasEndDate() const { return hasFlag(TriggerFlag::HasEndDate); }
    void setHasEndDate(bool has) { setFlag(TriggerFlag::HasEndDate, has); }

    /// The time of day of a start, in whole minutes; what is below them is dropped. Reading gives 0 when the
    /// record holds no time of day.
    TDateTime StartTime() const;
    void setStartTime(TDateTime time);

    /// Minutes: a start is repeated every Interval (0 for not at all) as long as Duration lasts.
    quint32 Duration() const { return m_record.MinutesDuration; }
    void setDuration(quint32 minutes) { m_record.MinutesDuration = minutes; }
    quint32 Interval() const { return m_record.MinutesInterval; }
    void setInterval(quint32 minutes) { m_record.MinutesInterval = minutes; }
    bool KillAtDurationEnd() const { return hasFlag(TriggerFlag::KillAtDurationEnd); }
    void setKillAtDurationEnd(bool kill) { setFlag(TriggerFlag::KillAtDurationEnd, kill); }

    /// This is the service's flag "disabled" and not its opposite: a trigger whose Enabled is true starts
    /// nothing once it is written back. Hosts rely on it as it stands.
    bool Enabled() const { return hasFlag(TriggerFlag::Disabled); }
    void setEnabled(bool enabled) { setFlag(TriggerFlag::Disabled, enabled); }

    /// The low byte of the record's field; the others stay.
    TTriggerType GetType() const;
    void SetType(TTriggerType type);

    /// What goes with the kind.
    TRIGGER_TYPE_UNION Details() const { return m_record.Type; }
    void setDetails(const TRIGGER_TYPE_UNION &details) { m_record.Type = details; }

    /// When the job's trigger (not the copy) starts it, in words. Raises EOleSysError.
    QString AsString() const;

    /// Writes the copy to the job. Raises EOleSysError, for a record that breaks the service's rules among
    /// others.
    void UpdateTrigger();

private:
    friend class TTriggers;

    bool hasFlag(quint32 flag) const { return (m_record.rgFlags & flag) != 0; }
    void setFlag(quint32 flag, bool on);

    const TTriggers &m_collection;
    std::shared_ptr<ITaskTrigger> m_trigger;
    TASK_TRIGGER m_record;
};

using TTriggerType = TTrigger::TTriggerType;
using enum TTrigger::TTriggerType;

/// The triggers of one job, in the service's order. The collection is empty until the job is first activated.
class TTriggers
{
public:
    /// Belongs to `item`, which must live longer.
    explicit TTriggers(TTaskItem &item);

    /// Reads all triggers anew from the job; the objects that there were are gone. Raises ETaskError for a
    /// job that is not active, and EOleSysError.
    void InitTriggers();
    /// TTrigger::UpdateTrigger of each.
    void UpdateTriggers();

    /// A new trigger of the job, at the end. Its record is all zero, whatever the service's own defaults are:
    /// fill it and call UpdateTrigger(). Raises ETaskError for a job that is not active, and EOleSysError.
    TTrigger &Add();
    /// Deletes a trigger of the job; those behind it move down. Raises ETriggerError for an index out of
    /// range, ETaskError and EOleSysError.
    void Delete(int index);
    /// Deletes all triggers of the job, from the last one on. The first failure ends it: the triggers above
    /// are then gone in the service, and the collection still has all. Raises like Delete.
    void Clear();

    int Count() const { return static_cast<int>(m_triggers.size()); }
    /// Raises ETriggerError for an index out of range.
    TTrigger &GetItem(int index) const;
    TTrigger &operator[](int index) const { return GetItem(index); }

    /// The texts of all triggers, numbered from 1 when there are several; without any, a line that says so.
    void GetTriggerStrings(QStringList &strings) const;

    [[noreturn]] void Error(const QString &fmt, const QVariantList &args) const;

    TTaskItem &Item() const { return m_item; }

private:
    std::uint16_t checkedIndex(int index) const;

    TTaskItem &m_item;
    std::vector<std::unique_ptr<TTrigger>> m_triggers;
};

} // namespace Zelmar01
