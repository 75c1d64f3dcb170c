#include <Zelmar01/tasks/SchedulePage.h>

#include <Zelmar01/tasks/TaskErrors.h>
#include <Zelmar01/tasks/TriggerEditor.h>
#include <Zelmar01/tasks/saUtils.h>
#include <Zelmar01/tasks/service/RunTimes.h>
#include <Zelmar01/tasks/service/TriggerText.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr std::uint16_t shownRuns = 10;
constexpr int firstHour = 9;

// What most people mean by a new schedule.
TASK_TRIGGER everyMorning()
{
    const auto today = QDate::currentDate();
    TASK_TRIGGER trigger;
    trigger.wBeginYear = static_cast<std::uint16_t>(today.year());
    trigger.wBeginMonth = static_cast<std::uint16_t>(today.month());
    trigger.wBeginDay = static_cast<std::uint16_t>(today.day());
    trigger.wStartHour = firstHour;
    trigger.TriggerType = TASK_TIME_TRIGGER_DAILY;
    trigger.Type.Daily.DaysInterval = 1;
    return trigger;
}

SYSTEMTIME systemTime(const QDateTime &moment)
{
    const auto word = [](int value) { return static_cast<std::uint16_t>(value); };
    const auto date = moment.date();
    const auto time = moment.time();
    return {word(date.year()), word(date.month()),  word(date.dayOfWeek() % 7), word(date.day()),
            word(time.hour()), word(time.minute()), word(time.second()),        word(time.msec())};
}

QString runText(const SYSTEMTIME &run)
{
    const QDateTime moment(QDate(run.wYear, run.wMonth, run.wDay), QTime(run.wHour, run.wMinute));
    return QLocale(QCoreApplication::translate("Zelmar01", "fr_FR"))
        .toString(moment, run.wDay == 1
                              ? QCoreApplication::translate("Zelmar01", "dddd '1er' MMMM yyyy HH:mm")
                              : QCoreApplication::translate("Zelmar01", "dddd d MMMM yyyy HH:mm"));
}

QListWidget *makeList(const QString &name, const QString &label)
{
    auto *list = new QListWidget;
    list->setObjectName(name);
    list->setAccessibleName(label);
    return list;
}

QPushButton *makeButton(const QString &name, const QString &text)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

TSchedulePage::TSchedulePage()
    : m_list(makeList(u"triggers"_s, tr("Déclencheurs"))),
      m_none(new QLabel(Format(TMessage::NoTriggerLine))), m_add(makeButton(u"add"_s, tr("&Nouveau"))),
      m_delete(makeButton(u"delete"_s, tr("&Supprimer"))), m_editor(new TTriggerEditor),
      m_runs(makeList(u"runs"_s, tr("Prochaines exécutions")))
{
    setObjectName(u"schedulePage"_s);
    setWhatsThis(tr("Quand la tâche démarre. Une tâche peut avoir plusieurs déclencheurs ; à droite, ses "
                    "prochaines exécutions telles qu'elles seraient avec ce que dit cette page."));
    m_none->setTextFormat(Qt::PlainText);
    m_none->setObjectName(u"none"_s);
    m_list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    m_list->setWordWrap(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_runs->setFocusPolicy(Qt::TabFocus);
    m_runs->setSelectionMode(QAbstractItemView::NoSelection);
    m_runs->setMinimumWidth(m_runs->fontMetrics().horizontalAdvance(u"mercredi 30 septembre 2026 00:00"_s) +
                            4 * m_runs->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_delete);
    buttons->addStretch(1);
    auto *top = new QHBoxLayout;
    top->addWidget(m_list, 1);
    top->addWidget(m_none, 1);
    top->addLayout(buttons);
    auto *left = new QVBoxLayout;
    left->addLayout(top);
    left->addWidget(m_editor, 1);
    auto *caption = new QLabel(tr("Prochaines e&xécutions :"));
    caption->setBuddy(m_runs);
    auto *right = new QVBoxLayout;
    right->addWidget(caption);
    right->addWidget(m_runs, 1);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(right);

    connect(m_list, &QListWidget::currentRowChanged, this, &TSchedulePage::choose);
    connect(m_add, &QPushButton::clicked, this, &TSchedulePage::addTrigger);
    connect(m_delete, &QPushButton::clicked, this, &TSchedulePage::deleteTrigger);
    connect(m_editor, &TTriggerEditor::Changed, this, &TSchedulePage::triggerChanged);
}

void TSchedulePage::fill(const TTaskSettings &settings)
{
    const int row = qMax(0, currentRow());
    m_saved = m_triggers = settings.Triggers;
    m_taskEnabled = !(settings.Flags & TaskFlag::Disabled);
    showTriggers(qMin(row, static_cast<int>(m_triggers.size()) - 1));
}

void TSchedulePage::TakeSettings(TTaskSettings &settings) const
{
    const int row = currentRow();
    // What was there before may be as senseless as it likes, as long as nobody touches it. A refused trigger
    // stays chosen.
    for (std::size_t i = 0; i < m_triggers.size(); ++i) {
        const auto isThis = [&](const auto &saved) { return SameTrigger(saved, m_triggers[i]); };
        if (std::ranges::none_of(m_saved, isThis)) {
            m_list->setCurrentRow(static_cast<int>(i));
            m_editor->Check();
        }
    }
    m_list->setCurrentRow(row);
    settings.Triggers = m_triggers;
}

void TSchedulePage::SetTaskEnabled(bool enabled)
{
    m_taskEnabled = enabled;
    showRuns();
}

int TSchedulePage::currentRow() const
{
    return m_list->currentRow();
}

void TSchedulePage::addTrigger()
{
    m_triggers.push_back(everyMorning());
    showTriggers(static_cast<int>(m_triggers.size()) - 1);
    m_editor->setFocus();
    fieldChanged();
}

void TSchedulePage::deleteTrigger()
{
    const int row = currentRow();
    m_triggers.erase(m_triggers.begin() + row);
    showTriggers(qMin(row, static_cast<int>(m_triggers.size()) - 1));
    fieldChanged();
}

void TSchedulePage::choose(int row)
{
    if (row >= 0)
        m_editor->SetTrigger(m_triggers[static_cast<std::size_t>(row)]);
}

void TSchedulePage::triggerChanged()
{
    auto &trigger = m_triggers[static_cast<std::size_t>(currentRow())];
    trigger = m_editor->Trigger();
    m_list->currentItem()->setText(QString::fromStdU16String(TriggerText(trigger)));
    showRuns();
    fieldChanged();
}

void TSchedulePage::showTriggers(int current)
{
    {
        const QSignalBlocker silent(m_list);
        m_list->clear();
        for (const auto &trigger : m_triggers)
            m_list->addItem(QString::fromStdU16String(TriggerText(trigger)));
        m_list->setCurrentRow(current);
    }
    choose(currentRow());
    m_list->setVisible(m_triggers.size() > 1);
    m_none->setVisible(m_triggers.empty());
    m_editor->setEnabled(!m_triggers.empty());
    m_delete->setEnabled(!m_triggers.empty());
    m_add->setEnabled(m_triggers.size() < TaskMaxTriggers);
    showRuns();
}

void TSchedulePage::showRuns()
{
    const TRunTimes runTimes(m_triggers, m_taskEnabled ? 0 : TaskFlag::Disabled);
    std::vector<SYSTEMTIME> runs;
    const auto result = RunTimesBetween(runTimes, systemTime(QDateTime::currentDateTime()), nullptr,
                                        shownRuns, TTimeZone::System(), runs);
    m_runs->clear();
    for (const auto &run : runs)
        m_runs->addItem(runText(run));
    if (runs.empty())
        m_runs->addItem(QString::fromStdString(ResultText(Failed(result) ? result : runTimes.WhyNone())));
    m_runs->setWordWrap(runs.empty());
}

} // namespace Zelmar01
