#include <Zelmar01/tasks/TaskScheduler.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/tasks/DefaultTaskService.h>
#include <Zelmar01/tasks/ServiceCalls.h>
#include <Zelmar01/tasks/saUtils.h>

#include <algorithm>

namespace Zelmar01 {

TTaskScheduler::TTaskScheduler(QObject *owner, std::shared_ptr<ITaskService> service)
    : TComponent(owner), m_service(service ? std::move(service) : DefaultTaskService())
{
    setActive(true);
}

TTaskScheduler::~TTaskScheduler()
{
    Clear();
}

void TTaskScheduler::setActive(bool active)
{
    if (!active)
        Close();
    else if (IsLoading())
        ShowingExceptions([this] { Open(); });
    else
        Open();
}

void TTaskScheduler::Open()
{
    m_scheduler.reset();
    if (!StartScheduler())
        Error(Format(TMessage::SchedulerStopped));
    OleCheck(*m_service, m_service->CreateScheduler(m_scheduler));
}

void TTaskScheduler::Close()
{
    m_scheduler.reset();
}

bool TTaskScheduler::StartScheduler()
{
    const auto start = m_service->StartScheduler();
    if (start.FailedStep == 0)
        return true;
    if (!start.Text.empty())
        return true;
    MessageDlg(QStringLiteral(" - %1 - ").arg(start.FailedStep), mtWarning, mbOK);
    return false;
}

ITaskScheduler &TTaskScheduler::requireScheduler() const
{
    if (!m_scheduler)
        Error(Format(TMessage::SchedulerStopped));
    return *m_scheduler;
}

std::shared_ptr<ITask> TTaskScheduler::openTask(const QString &fileName) const
{
    std::shared_ptr<ITaskObject> object;
    if (Failed(requireScheduler().Activate(fileName.toStdU16String().c_str(), ITask::Iid, object)))
        return nullptr;
    return std::dynamic_pointer_cast<ITask>(object);
}

void TTaskScheduler::Refresh()
{
    Clear();
    std::shared_ptr<IEnumWorkItems> jobs;
    OleCheck(*m_service, requireScheduler().Enum(jobs));
    // The array that holds the one name stays with the allocator; only the name is given back.
    char16_t **names = nullptr;
    std::uint32_t fetched = 0;
    while (jobs->Next(1, &names, &fetched) == TaskResult::Ok && fetched != 0) {
        TServiceBlock<char16_t> name(m_service->Allocator());
        name.Out() = names[0];
        addItem(QString::fromUtf16(name.Get()));
    }
    sortItems();
}

void TTaskScheduler::Clear()
{
    while (!m_items.empty())
        m_items.pop_back();
}

void TTaskScheduler::addItem(const QString &fileName)
{
    auto item = std::make_unique<TTaskItem>(*this);
    item->m_jobName = fileName;
    bool canAdd = true;
    emit OnBeforeTaskAdded(this, item.get(), canAdd);
    if (canAdd)
        m_items.push_back(std::move(item));
}

TTaskItem *TTaskScheduler::insertItem(int index, const QString &fileName)
{
    auto item = std::make_unique<TTaskItem>(*this);
    item->m_jobName = fileName;
    return m_items.insert(m_items.begin() + index, std::move(item))->get();
}

void TTaskScheduler::sortItems()
{
    struct TKeyed
    {
        TCollationKey Key;
        std::unique_ptr<TTaskItem> Item;
    };
    std::vector<TKeyed> keyed;
    keyed.reserve(m_items.size());
    for (auto &item : m_items) {
        TCollationKey key(item->m_jobName);
        keyed.push_back({std::move(key), std::move(item)});
    }
    // Jobs that differ in nothing but case stand in the order in which Find looks for them.
    std::sort(keyed.begin(), keyed.end(),
              [](const TKeyed &a, const TKeyed &b) { return a.Key.CompareStr(b.Key) < 0; });
    std::transform(keyed.begin(), keyed.end(), m_items.begin(),
                   [](TKeyed &entry) { return std::move(entry.Item); });
}

bool TTaskScheduler::Find(const QString &s, int &index) const
{
    const TCollationKey sought(s);
    const auto place = std::lower_bound(m_items.begin(), m_items.end(), sought,
                                        [](const std::unique_ptr<TTaskItem> &item, const TCollationKey &key) {
                                            return TCollationKey(item->m_jobName).CompareStr(key) < 0;
                                        });
    index = static_cast<int>(place - m_items.begin());
    return place != m_items.end() && TCollationKey((*place)->m_jobName).CompareStr(sought) == 0;
}

int TTaskScheduler::IndexOf(const QString &s) const
{
    int index = 0;
    return Find(s, index) ? index : -1;
}

void TTaskScheduler::failDuplicate(const QString &taskName) const
{
    throw ETaskError(Format(TMessage::TaskExists, {taskName}).toStdString());
}

TTaskItem *TTaskScheduler::CreateNewItem(const QString &taskName)
{
    if (m_autoRefresh)
        Refresh();
    const auto name = WithJobEnding(taskName);
    int index = 0;
    if (Find(name, index)) {
        if (m_duplicate == tdError)
            failDuplicate(taskName);
        return GetItem(index);
    }
    if (auto existing = openTask(name)) {
        if (m_duplicate == tdError)
            failDuplicate(taskName);
        auto *const item = insertItem(index, name);
        item->m_task = std::move(existing);
        return item;
    }
    std::shared_ptr<ITaskObject> object;
    OleCheck(*m_service,
             requireScheduler().NewWorkItem(name.toStdU16String().c_str(), ClsidTask, ITask::Iid, object));
    auto task = std::dynamic_pointer_cast<ITask>(object);
    if (!task)
        OleCheck(*m_service, TaskResult::NoInterface);
    auto *const item = insertItem(index, name);
    item->m_task = std::move(task);
    item->setFlags(tfDontStartIfOnBatteries | tfKillIfGoingOnBatteries);
    return item;
}

TTaskItem *TTaskScheduler::ActivateTask(const QString &taskName)
{
    if (m_autoRefresh)
        Refresh();
    const auto name = WithJobEnding(taskName);
    int index = 0;
    if (Find(name, index))
        return GetItem(index);
    return openTask(name) ? insertItem(index, name) : nullptr;
}

void TTaskScheduler::DeleteTask(const QString &taskName)
{
    auto &scheduler = requireScheduler();
    const auto name = WithJobEnding(taskName);
    int index = 0;
    if (Find(name, index))
        m_items.erase(m_items.begin() + index);
    OleCheck(*m_service, scheduler.Delete(name.toStdU16String().c_str()));
}

TTaskItem *TTaskScheduler::GetItem(int index) const
{
    if (index < 0 || index >= Count())
        Error(QString::fromStdString(MessageText(TMessage::TaskIndexOutOfRange)), {index});
    return m_items[static_cast<std::size_t>(index)].get();
}

QString TTaskScheduler::GetTargetComputer() const
{
    return Active() ? ReadText(*m_service, *m_scheduler, &ITaskScheduler::GetTargetComputer) : QString();
}

void TTaskScheduler::SetTargetComputer(const QString &value)
{
    auto &scheduler = requireScheduler();
    const auto computer = value.toStdU16String();
    OleCheck(*m_service, scheduler.SetTargetComputer(value.isEmpty() ? nullptr : computer.c_str()));
}

void TTaskScheduler::Error(const QString &msg) const
{
    throw ESchedulerError(msg.toStdString());
}

void TTaskScheduler::Error(const QString &fmt, const QVariantList &args) const
{
    Error(Format(fmt, args));
}

} // namespace Zelmar01
