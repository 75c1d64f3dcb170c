#include <Zelmar01/tasks/TaskTriggers.h>

#include <Zelmar01/tasks/ServiceCalls.h>
#include <Zelmar01/tasks/TaskItem.h>

namespace Zelmar01 {

namespace {

constexpr quint32 typeByte = 0xFF;

std::uint16_t word(int value)
{
    return static_cast<std::uint16_t>(value);
}

TDateTime dateOrZero(int year, int month, int day)
{
    TDateTime date = 0;
    return TryEncodeDate(year, month, day, date) ? date : 0;
}

} // namespace

TTrigger::TTrigger(const TTriggers &collection, std::shared_ptr<ITaskTrigger> trigger)
    : m_collection(collection), m_trigger(std::move(trigger))
{
}

TDateTime TTrigger::BeginDate() const
{
    return dateOrZero(m_record.wBeginYear, m_record.wBeginMonth, m_record.wBeginDay);
}

void TTrigger::setBeginDate(TDateTime date)
{
    const auto parts = DecodeDateTime(date);
    m_record.wBeginYear = word(parts.Year);
    m_record.wBeginMonth = word(parts.Month);
    m_record.wBeginDay = word(parts.Day);
}

TDateTime TTrigger::EndDate() const
{
    return dateOrZero(m_record.wEndYear, m_record.wEndMonth, m_record.wEndDay);
}

void TTrigger::setEndDate(TDateTime date)
{
    const auto parts = DecodeDateTime(date);
    m_record.wEndYear = word(parts.Year);
    m_record.wEndMonth = word(parts.Month);
    m_record.wEndDay = word(parts.Day);
}

TDateTime TTrigger::StartTime() const
{
    TDateTime time = 0;
    return TryEncodeTime(m_record.wStartHour, m_record.wStartMinute, 0, 0, time) ? time : 0;
}

void TTrigger::setStartTime(TDateTime time)
{
    const auto parts = DecodeDateTime(time);
    m_record.wStartHour = word(parts.Hour);
    m_record.wStartMinute = word(parts.Minute);
}

TTriggerType TTrigger::GetType() const
{
    return static_cast<TTriggerType>(m_record.TriggerType & typeByte);
}

void TTrigger::SetType(TTriggerType type)
{
    m_record.TriggerType = static_cast<TASK_TRIGGER_TYPE>((m_record.TriggerType & ~typeByte) | type);
}

void TTrigger::setFlag(quint32 flag, bool on)
{
    m_record.rgFlags = on ? m_record.rgFlags | flag : m_record.rgFlags & ~flag;
}

QString TTrigger::AsString() const
{
    return ReadText(m_collection.Item().Service(), *m_trigger, &ITaskTrigger::GetTriggerString);
}

void TTrigger::UpdateTrigger()
{
    OleCheck(m_collection.Item().Service(), m_trigger->SetTrigger(&m_record));
}

TTriggers::TTriggers(TTaskItem &item) : m_item(item) {}

void TTriggers::InitTriggers()
{
    auto &task = m_item.RequireTask();
    auto &service = m_item.Service();
    m_triggers.clear();
    std::uint16_t count = 0;
    OleCheck(service, task.GetTriggerCount(count));
    for (std::uint16_t i = 0; i < count; ++i) {
        std::shared_ptr<ITaskTrigger> trigger;
        OleCheck(service, task.GetTrigger(i, trigger));
        auto &item = *m_triggers.emplace_back(std::make_unique<TTrigger>(*this, trigger));
        OleCheck(service, trigger->GetTrigger(item.m_record));
    }
}

void TTriggers::UpdateTriggers()
{
    for (const auto &trigger : m_triggers)
        trigger->UpdateTrigger();
}

TTrigger &TTriggers::Add()
{
    std::uint16_t index = 0;
    std::shared_ptr<ITaskTrigger> trigger;
    OleCheck(m_item.Service(), m_item.RequireTask().CreateTrigger(index, trigger));
    return *m_triggers.emplace_back(std::make_unique<TTrigger>(*this, std::move(trigger)));
}

std::uint16_t TTriggers::checkedIndex(int index) const
{
    if (index < 0 || index >= Count())
        Error(QString::fromStdString(MessageText(TMessage::TriggerIndexOutOfRange)), {index});
    return static_cast<std::uint16_t>(index);
}

void TTriggers::Delete(int index)
{
    const auto serviceIndex = checkedIndex(index);
    OleCheck(m_item.Service(), m_item.RequireTask().DeleteTrigger(serviceIndex));
    m_triggers.erase(m_triggers.begin() + index);
}

void TTriggers::Clear()
{
    for (int index = Count() - 1; index >= 0; --index)
        OleCheck(m_item.Service(), m_item.RequireTask().DeleteTrigger(static_cast<std::uint16_t>(index)));
    m_triggers.clear();
}

TTrigger &TTriggers::GetItem(int index) const
{
    return *m_triggers[checkedIndex(index)];
}

void TTriggers::GetTriggerStrings(QStringList &strings) const
{
    strings.clear();
    if (m_triggers.empty())
        strings << Format(TMessage::NoTriggerLine);
    else if (Count() == 1)
        strings << GetItem(0).AsString();
    else
        for (int i = 0; i < Count(); ++i)
            strings << QStringLiteral("%1. %2").arg(i + 1).arg(GetItem(i).AsString());
}

void TTriggers::Error(const QString &fmt, const QVariantList &args) const
{
    throw ETriggerError(Format(fmt, args).toStdString());
}

} // namespace Zelmar01
