#pragma once

#include <Zelmar01/tasks/TaskSettings.h>
#include <Zelmar01/tasks/service/store/JobPage.h>

#include <QDialog>

#include <functional>
#include <memory>
#include <vector>

class QPushButton;
class QTabWidget;

namespace Zelmar01 {

class TTaskPageWidget;

/// The property sheet of a job of the job store.
class TTaskSheetDialog : public QDialog
{
    Q_OBJECT
public:
    /// Raises EInOutError when the job cannot be read.
    TTaskSheetDialog(const TPropertySheet &sheet, const std::vector<std::shared_ptr<TJobPage>> &pages,
                     QWidget *parent);

    void accept() override;

private:
    void addPage(TASKPAGE type);
    void addButtons(std::uint32_t flags);
    void apply();
    bool save();
    void help();

    std::shared_ptr<ITask> m_job;
    std::shared_ptr<ITaskAllocator> m_allocator;
    bool m_persist;
    std::function<void()> m_applied;
    TTaskSettings m_saved;
    std::vector<TTaskPageWidget *> m_pages;
    QTabWidget *m_tabs;
    QPushButton *m_apply = nullptr;
    bool m_changed = false;
};

} // namespace Zelmar01
