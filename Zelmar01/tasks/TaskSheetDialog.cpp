#include <Zelmar01/tasks/TaskSheetDialog.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tasks/ProgramPage.h>
#include <Zelmar01/tasks/SchedulePage.h>
#include <Zelmar01/tasks/SettingsPage.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWhatsThis>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

QIcon blankIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

TTaskSheetDialog::TTaskSheetDialog(const TPropertySheet &sheet,
                                   const std::vector<std::shared_ptr<TJobPage>> &pages, QWidget *parent)
    : QDialog(parent), m_job(pages.front()->Job), m_allocator(pages.front()->Allocator),
      m_persist(
          std::any_of(pages.begin(), pages.end(), [](const auto &page) { return page->PersistChanges; })),
      m_saved(ReadTaskSettings(*m_job, *m_allocator)), m_tabs(new QTabWidget)
{
    const auto has = [&](std::uint32_t flag) { return (sheet.Flags & flag) != 0; };
    if (has(SheetFlag::UseCallback))
        m_applied = sheet.Applied;
    const auto caption = QString::fromStdU16String(sheet.Caption);
    setWindowTitle(has(SheetFlag::PropTitle) ? tr("Propriétés de %1").arg(caption) : caption);
    setWindowIcon(has(SheetFlag::UseIcon) ? QApplication::windowIcon() : blankIcon());
    setWindowFlag(Qt::WindowContextHelpButtonHint, !has(SheetFlag::NoContextHelp));
    setObjectName(u"taskSheet"_s);

    m_tabs->setObjectName(u"sheetTabs"_s);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    for (const auto &page : pages)
        addPage(page->Type);
    auto *schedule = findChild<TSchedulePage *>();
    auto *enabled = findChild<TProgramPage *>();
    if (schedule && enabled)
        connect(enabled, &TProgramPage::EnabledChanged, schedule, &TSchedulePage::SetTaskEnabled);
    addButtons(sheet.Flags);
}

void TTaskSheetDialog::addPage(TASKPAGE type)
{
    TTaskPageWidget *page = nullptr;
    switch (type) {
    case TASKPAGE_TASK:
        m_tabs->addTab(page = new TProgramPage, tr("&Tâche"));
        break;
    case TASKPAGE_SCHEDULE:
        m_tabs->addTab(page = new TSchedulePage, tr("&Planification"));
        break;
    case TASKPAGE_SETTINGS:
        m_tabs->addTab(page = new TSettingsPage, tr("Pa&ramètres"));
        break;
    }
    m_pages.push_back(page);
    page->ShowSettings(m_saved);
    connect(page, &TTaskPageWidget::Changed, this, [this] {
        m_changed = true;
        if (m_apply)
            m_apply->setEnabled(true);
    });
}

void TTaskSheetDialog::addButtons(std::uint32_t flags)
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Annuler"));
    connect(buttons, &QDialogButtonBox::accepted, this, &TTaskSheetDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &TTaskSheetDialog::reject);
    if (!(flags & SheetFlag::NoApplyNow)) {
        m_apply = buttons->addButton(QDialogButtonBox::Apply);
        m_apply->setText(tr("Appli&quer"));
        m_apply->setEnabled(false);
        connect(m_apply, &QPushButton::clicked, this, &TTaskSheetDialog::apply);
    }
    if (flags & SheetFlag::HasHelp) {
        buttons->addButton(QDialogButtonBox::Help)->setText(tr("Aide"));
        connect(buttons, &QDialogButtonBox::helpRequested, this, &TTaskSheetDialog::help);
    }
    layout()->addWidget(buttons);
}

void TTaskSheetDialog::accept()
{
    if (!m_changed || save())
        QDialog::accept();
}

void TTaskSheetDialog::apply()
{
    if (save() && m_applied)
        ShowingExceptions(m_applied);
}

bool TTaskSheetDialog::save()
{
    bool saved = false;
    ShowingExceptions([&] {
        auto settings = m_saved;
        for (auto *page : m_pages) {
            try {
                page->TakeSettings(settings);
            } catch (const ERefusedValue &refusal) {
                m_tabs->setCurrentWidget(page);
                refusal.Field()->setFocus();
                throw;
            }
        }
        WriteTaskSettings(*m_job, m_saved, settings, m_persist);
        m_saved = ReadTaskSettings(*m_job, *m_allocator);
        for (auto *page : m_pages)
            page->ShowSettings(m_saved);
        m_changed = false;
        if (m_apply)
            m_apply->setEnabled(false);
        saved = true;
    });
    return saved;
}

void TTaskSheetDialog::help()
{
    auto *const page = m_tabs->currentWidget();
    QWhatsThis::showText(page->mapToGlobal(page->rect().topLeft()), page->whatsThis(), page);
}

} // namespace Zelmar01
