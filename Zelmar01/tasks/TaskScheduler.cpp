#include <Zelmar01/tasks/TaskScheduler.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/tasks/DefaultTaskService.h>
#include <Zelmar01/tasks/ServiceCalls.h>
#include <Zelmar01/tasks/saUtils.h>

#include <QMetaMethod>

#include <algorithm>

namespace Zelmar01 {

namespace {

// How many bytes at the beginning all keys have in common.
std::size_t commonBeginning(const std::vector<TCollationKey> &keys)
{
    auto length = keys.empty() ? 0 : keys.front().Letters().size();
    for (const auto &key : keys) {
        const auto &first = keys.front().Letters(), &other = key.Letters();
        length = std::min(length, other.size());
        length = static_cast<std::size_t>(
            std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(length), other.begin())
                .first -
            first.begin());
    }
    return length;
}

// The bytes from `at` on, as far as they go, as a number of the same order.
std::uint64_t bytesFrom(const std::string &bytes, std::size_t at)
{
    std::uint64_t number = 0;
    for (auto end = at + sizeof number; at < end; ++at)
        number = number << 8 | (at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0);
    return number;
}

} // namespace

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
        addItem(TextOf(name.Get()));
    }
    sortItems();
}

void TTaskScheduler::Clear()
{
    while (!m_items.empty())
        m_items.pop_back();
}

std::unique_ptr<TTaskItem> TTaskScheduler::makeItem(const QString &fileName)
{
    auto item = std::make_unique<TTaskItem>(*this);
    item->m_jobName = fileName;
    return item;
}

void TTaskScheduler::addItem(const QString &fileName)
{
    static const auto asking = QMetaMethod::fromSignal(&TTaskScheduler::OnBeforeTaskAdded);
    TEntry entry{fileName, nullptr};
    bool canAdd = true;
    if (isSignalConnected(asking)) {
        entry.Item = makeItem(fileName);
        emit OnBeforeTaskAdded(this, entry.Item.get(), canAdd);
    }
    if (canAdd)
        m_items.push_back(std::move(entry));
}

TTaskItem *TTaskScheduler::insertItem(int index, const QString &fileName)
{
    return m_items.insert(m_items.begin() + index, {fileName, makeItem(fileName)})->Item.get();
}

void TTaskScheduler::sortItems()
{
    std::vector<TCollationKey> keys;
    keys.reserve(m_items.size());
    for (const auto &item : m_items)
        keys.emplace_back(item.FileName);
    const auto beginning = commonBeginning(keys);
    struct TPlace
    {
        std::uint64_t Start;
        std::size_t Index;
    };
    std::vector<TPlace> order;
    order.reserve(keys.size());
    for (const auto &key : keys)
        order.push_back({bytesFrom(key.Letters(), beginning), order.size()});
    // Jobs that differ in nothing but case stand in the order in which Find looks for them.
    std::sort(order.begin(), order.end(), [&](const TPlace &a, const TPlace &b) {
        return a.Start != b.Start ? a.Start < b.Start : keys[a.Index].CompareStr(keys[b.Index]) < 0;
    });
    std::vector<TEntry> sorted;
    sorted.reserve(m_items.size());
    for (const auto &place : order)
        sorted.push_back(std::move(m_items[place.Index]));
    m_items = std::move(sorted);
}

bool TTaskScheduler::Find(const QString &s, int &index) const
{
    const TCollationKey sought(s);
    const auto place = std::lower_bound(m_items.begin(), m_items.end(), sought,
                                        [](const TEntry &entry, const TCollationKey &key) {
                                            return TCollationKey(entry.FileName).CompareStr(key) < 0;
                                        });
    index = static_cast<int>(place - m_items.begin());
    return place != m_items.end() && TCollationKey(place->FileName).CompareStr(sought) == 0;
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

TTaskItem *TTaskScheduler::GetItem(int index)
{
    if (index < 0 || index >= Count())
        Error(QString::fromStdString(MessageText(TMessage::TaskIndexOutOfRange)), {index});
    auto &entry = m_items[static_cast<std::size_t>(index)];
    if (!entry.Item)
        entry.Item = makeItem(entry.FileName);
    return entry.Item.get();
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
