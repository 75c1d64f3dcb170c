#include <Zelmar01/tasks/UseTaskSheets.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tasks/TaskSheetDialog.h>
#include <Zelmar01/tasks/TaskSheets.h>

#include <QApplication>
#include <QPointer>
#include <QScopeGuard>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr std::intptr_t confirmed = 1, cancelled = 0, notShown = -1;

QWidget *parentOf(const TPropertySheet &sheet)
{
    auto *const parent = sheet.Parent ? QWidget::find(sheet.Parent) : nullptr;
    return parent ? parent->window() : QApplication::activeWindow();
}

std::intptr_t showJobSheet(const TPropertySheet &sheet)
{
    std::vector<std::shared_ptr<TJobPage>> pages;
    for (const auto &page : sheet.Pages)
        pages.push_back(std::dynamic_pointer_cast<TJobPage>(page));
    const bool ofOneJob = std::all_of(pages.begin(), pages.end(), [&](const auto &page) {
        return page && page->Job == pages.front()->Job;
    });
    if (pages.empty() || !ofOneJob)
        return notShown;
    auto result = notShown;
    // The service that asked for the sheet raises nothing.
    ShowingExceptions([&] {
        // The window that it stands on may be closed meanwhile, and takes the sheet with it.
        const QPointer<TTaskSheetDialog> dialog(new TTaskSheetDialog(sheet, pages, parentOf(sheet)));
        result = dialog->exec() == QDialog::Accepted ? confirmed : cancelled;
        delete dialog;
    });
    return result;
}

bool isNative(const TPropertySheet &sheet)
{
    return std::none_of(sheet.Pages.begin(), sheet.Pages.end(), [](const auto &page) {
        return std::dynamic_pointer_cast<TJobPage>(page) != nullptr;
    });
}

// Keeps input from all windows of the application, as a modal window of the system would if it were one of
// them.
class TModalTime
{
public:
    TModalTime()
    {
        m_window.setAttribute(Qt::WA_DontShowOnScreen);
        m_window.setWindowModality(Qt::ApplicationModal);
        m_window.show();
    }

private:
    QWidget m_window;
};

std::intptr_t showSheet(ITaskService &service, const TPropertySheet &sheet)
{
    const QPointer<QWidget> before(QApplication::activeWindow());
    const auto activateAgain = qScopeGuard([&] {
        if (before)
            before->activateWindow();
    });
    if (!isNative(sheet))
        return service.ShowSheet(sheet);
    auto withParent = sheet;
    if (const auto *const parent = parentOf(sheet); parent && !sheet.Parent)
        withParent.Parent = parent->winId();
    const TModalTime modal;
    return service.ShowSheet(withParent);
}

} // namespace

void UseTaskSheets()
{
    if (auto before = SetJobSheet(showJobSheet))
        SetJobSheet(std::move(before));
    if (auto before = SetTaskSheet(showSheet))
        SetTaskSheet(std::move(before));
}

} // namespace Zelmar01
