#include <Zelmar01/tasks/TriggerEditor.h>

#include <Zelmar01/tasks/BitGrid.h>
#include <Zelmar01/tasks/MinutesField.h>
#include <Zelmar01/tasks/TaskPageWidget.h>
#include <Zelmar01/tasks/service/TriggerTimes.h>
#include <Zelmar01/tasks/service/Triggers.h>

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTimeEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr int largestInterval = 9999;
constexpr std::uint32_t defaultInterval = 60;
constexpr std::uint32_t defaultDuration = 24 * 60;

template<class Field>
Field *named(Field *field, const QString &name, const QString &label)
{
    field->setObjectName(name);
    field->setAccessibleName(label);
    return field;
}

QDateEdit *makeDate(const QString &name, const QString &label)
{
    auto *date = named(new QDateEdit, name, label);
    date->setLocale(QLocale(QLocale::French, QLocale::France));
    date->setDisplayFormat(u"dd/MM/yyyy"_s);
    date->setCalendarPopup(true);
    date->calendarWidget()->setDateEditEnabled(false); // dates are typed in the field
    return date;
}

QSpinBox *makeInterval(const QString &name, const QString &label)
{
    auto *number = named(new QSpinBox, name, label);
    number->setRange(1, largestInterval);
    return number;
}

// Label, field, and what stands behind it.
QWidget *makeRow(const QString &label, QWidget *field, const QString &behind)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    auto *caption = new QLabel(label);
    caption->setBuddy(field);
    layout->addWidget(caption);
    layout->addWidget(field);
    layout->addWidget(new QLabel(behind));
    layout->addStretch(1);
    return row;
}

std::uint16_t word(unsigned value)
{
    return static_cast<std::uint16_t>(value);
}

QDate dateOf(int year, int month, int day)
{
    const QDate date(year, month, day);
    return date.isValid() ? date : QDate::currentDate();
}

QTime timeOf(int hour, int minute)
{
    const QTime time(hour, minute);
    return time.isValid() ? time : QTime(0, 0);
}

QString unknownKind()
{
    return TTriggerEditor::tr("Ce type de déclencheur est inconnu : choisissez une fréquence.");
}

void setFlag(TASK_TRIGGER &trigger, std::uint32_t flag, bool on)
{
    trigger.rgFlags = on ? trigger.rgFlags | flag : trigger.rgFlags & ~flag;
}

} // namespace

TTriggerEditor::TTriggerEditor()
    : m_kind(named(new QComboBox, u"kind"_s, tr("Fréquence"))),
      m_time(named(new QTimeEdit, u"time"_s, tr("Heure de début"))),
      m_begin(makeDate(u"begin"_s, tr("Premier jour"))), m_end(makeDate(u"end"_s, tr("Dernier jour"))),
      m_hasEnd(named(new QCheckBox(tr("&jusqu'au")), u"hasEnd"_s, tr("Avec un dernier jour"))),
      m_active(named(new QCheckBox(tr("Déclencheur act&if")), u"active"_s, tr("Déclencheur actif"))),
      m_details(new QStackedWidget)
{
    m_active->setWhatsThis(tr("Un déclencheur inactif reste dans la liste et ne démarre rien."));
    // In the order of the kinds, which are also the rows of the pages of details.
    for (const auto &caption : {tr("Une seule fois"), tr("Tous les jours"), tr("Toutes les semaines"),
                                tr("Tous les mois, à une date"), tr("Tous les mois, un jour de la semaine"),
                                tr("Quand l'ordinateur est inactif"), tr("Au démarrage du système"),
                                tr("À l'ouverture de la session")})
        m_kind->addItem(caption);
    m_event = new QLabel;
    m_event->setWordWrap(true);
    m_event->setAlignment(Qt::AlignTop);
    for (auto *page : {new QWidget, makeDaily(), makeWeekly(), makeMonthlyDate(), makeMonthlyDow(),
                       static_cast<QWidget *>(m_event)})
        m_details->addWidget(page);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(makeStart());
    layout->addWidget(m_details);
    layout->addWidget(makeRepetition());
    layout->addWidget(m_active);
    layout->addStretch(1);

    connect(m_kind, &QComboBox::currentIndexChanged, this, &TTriggerEditor::kindChosen);
    connect(m_time, &QTimeEdit::timeChanged, this, &TTriggerEditor::fieldChanged);
    for (auto *date : {m_begin, m_end})
        connect(date, &QDateEdit::dateChanged, this, &TTriggerEditor::fieldChanged);
    for (auto *number : {m_days, m_weeks})
        connect(number, &QSpinBox::valueChanged, this, &TTriggerEditor::fieldChanged);
    for (auto *grid : {m_weekDays, m_monthDays, m_dateMonths, m_dowDays, m_dowMonths})
        connect(grid, &TBitGrid::Changed, this, &TTriggerEditor::fieldChanged);
    for (auto *box : {m_hasEnd, m_active, m_repeat, m_kill})
        connect(box, &QCheckBox::toggled, this, &TTriggerEditor::fieldChanged);
    for (auto *minutes : {m_interval, m_duration})
        connect(minutes, &TMinutesField::Changed, this, &TTriggerEditor::fieldChanged);
    connect(m_which, &QComboBox::currentIndexChanged, this, &TTriggerEditor::fieldChanged);
}

QWidget *TTriggerEditor::makeStart()
{
    m_time->setDisplayFormat(u"HH:mm"_s);
    auto *end = new QWidget;
    auto *endLayout = new QHBoxLayout(end);
    endLayout->setContentsMargins({});
    for (auto *widget : std::initializer_list<QWidget *>{m_begin, m_hasEnd, m_end})
        endLayout->addWidget(widget);
    endLayout->addStretch(1);

    auto *start = new QWidget;
    auto *layout = new QFormLayout(start);
    layout->setContentsMargins({});
    layout->addRow(tr("&Fréquence :"), m_kind);
    layout->addRow(tr("À &l'heure :"), m_time);
    layout->addRow(tr("À partir &du :"), end);
    qobject_cast<QLabel *>(layout->labelForField(end))->setBuddy(m_begin);
    return start;
}

QWidget *TTriggerEditor::makeDaily()
{
    m_days = makeInterval(u"days"_s, tr("Intervalle en jours"));
    auto *row = makeRow(tr("T&ous les"), m_days, tr("jour(s)"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins({});
    layout->addWidget(row);
    layout->addStretch(1);
    return page;
}

QWidget *TTriggerEditor::makeWeekly()
{
    m_weeks = makeInterval(u"weeks"_s, tr("Intervalle en semaines"));
    m_weekDays = TBitGrid::DaysOfWeek(u"weekDays"_s);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins({});
    layout->addWidget(makeRow(tr("T&outes les"), m_weeks, tr("semaine(s), le :")));
    layout->addWidget(m_weekDays);
    layout->addStretch(1);
    return page;
}

QWidget *TTriggerEditor::makeMonthlyDate()
{
    m_monthDays = TBitGrid::DaysOfMonth(u"monthDays"_s);
    m_dateMonths = TBitGrid::Months(u"dateMonths"_s);
    auto *page = new QWidget;
    auto *layout = new QFormLayout(page);
    layout->setContentsMargins({});
    layout->addRow(tr("Le (j&ours) :"), m_monthDays);
    layout->addRow(tr("&Mois :"), m_dateMonths);
    return page;
}

QWidget *TTriggerEditor::makeMonthlyDow()
{
    m_which = named(new QComboBox, u"which"_s, tr("Semaine du mois"));
    for (const auto &caption :
         {tr("premier"), tr("deuxième"), tr("troisième"), tr("quatrième"), tr("dernier")})
        m_which->addItem(caption);
    m_dowDays = TBitGrid::DaysOfWeek(u"dowDays"_s);
    m_dowMonths = TBitGrid::Months(u"dowMonths"_s);
    auto *page = new QWidget;
    auto *layout = new QFormLayout(page);
    layout->setContentsMargins({});
    layout->addRow(tr("L&e :"), m_which);
    layout->addRow(tr("J&our :"), m_dowDays);
    layout->addRow(tr("&Mois :"), m_dowMonths);
    return page;
}

QWidget *TTriggerEditor::makeRepetition()
{
    m_repeat = named(new QCheckBox(tr("Répéter to&utes les")), u"repeat"_s, tr("Répéter le démarrage"));
    m_interval = new TMinutesField(u"interval"_s, tr("Intervalle de répétition"));
    m_duration = new TMinutesField(u"duration"_s, tr("Durée de la répétition"));
    m_kill = named(new QCheckBox(tr("Arrêter la tâche à la fin de &cette durée")), u"kill"_s,
                   tr("Arrêter la tâche à la fin de la répétition"));
    auto *during = new QLabel(tr("pend&ant"));
    during->setBuddy(m_duration);
    auto *repetition = new QWidget;
    auto *layout = new QVBoxLayout(repetition);
    layout->setContentsMargins({});
    auto *row = new QHBoxLayout;
    for (auto *widget : std::initializer_list<QWidget *>{m_repeat, m_interval, during, m_duration})
        row->addWidget(widget);
    row->addStretch(1);
    layout->addLayout(row);
    layout->addWidget(m_kill);
    return repetition;
}

bool TTriggerEditor::kindIsKnown() const
{
    return m_kind->currentIndex() >= 0;
}

TASK_TRIGGER_TYPE TTriggerEditor::kind() const
{
    return kindIsKnown() ? static_cast<TASK_TRIGGER_TYPE>(m_kind->currentIndex()) : m_base.TriggerType;
}

void TTriggerEditor::SetTrigger(const TASK_TRIGGER &trigger)
{
    const QScopedValueRollback showing(m_showing, true);
    m_base = trigger;
    m_kind->setCurrentIndex(static_cast<int>(trigger.TriggerType));
    m_time->setTime(timeOf(trigger.wStartHour, trigger.wStartMinute));
    m_begin->setDate(dateOf(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay));
    m_hasEnd->setChecked(trigger.rgFlags & TriggerFlag::HasEndDate);
    m_end->setDate(m_hasEnd->isChecked() ? dateOf(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay)
                                         : m_begin->date().addMonths(1));
    m_active->setChecked(!(trigger.rgFlags & TriggerFlag::Disabled));
    m_repeat->setChecked(trigger.MinutesInterval > 0);
    m_interval->SetMinutes(trigger.MinutesInterval > 0 ? trigger.MinutesInterval : defaultInterval);
    m_duration->SetMinutes(trigger.MinutesDuration > 0 ? trigger.MinutesDuration : defaultDuration);
    m_kill->setChecked(trigger.rgFlags & TriggerFlag::KillAtDurationEnd);

    // The fields of the other kinds get what their user most likely means.
    const auto day = m_begin->date();
    const auto weekDay = 1U << (day.dayOfWeek() % 7);
    const bool weekly = kind() == TASK_TIME_TRIGGER_WEEKLY;
    const bool date = kind() == TASK_TIME_TRIGGER_MONTHLYDATE;
    const bool dow = kind() == TASK_TIME_TRIGGER_MONTHLYDOW;
    const auto &type = trigger.Type;
    m_days->setValue(kind() == TASK_TIME_TRIGGER_DAILY ? type.Daily.DaysInterval : 1);
    m_weeks->setValue(weekly ? type.Weekly.WeeksInterval : 1);
    m_weekDays->SetMask(weekly ? type.Weekly.rgfDaysOfTheWeek : weekDay);
    m_monthDays->SetMask(date ? type.MonthlyDate.rgfDays : 1U << (day.day() - 1));
    m_dateMonths->SetMask(date ? type.MonthlyDate.rgfMonths : TriggerMask::AllMonths);
    m_which->setCurrentIndex(dow ? type.MonthlyDOW.wWhichWeek - 1 : 0);
    m_dowDays->SetMask(dow ? type.MonthlyDOW.rgfDaysOfTheWeek : weekDay);
    m_dowMonths->SetMask(dow ? type.MonthlyDOW.rgfMonths : TriggerMask::AllMonths);
    enableFields();
}

TASK_TRIGGER TTriggerEditor::Trigger() const
{
    auto trigger = m_base;
    trigger.TriggerType = kind();
    trigger.wStartHour = word(static_cast<unsigned>(m_time->time().hour()));
    trigger.wStartMinute = word(static_cast<unsigned>(m_time->time().minute()));
    trigger.wBeginYear = word(static_cast<unsigned>(m_begin->date().year()));
    trigger.wBeginMonth = word(static_cast<unsigned>(m_begin->date().month()));
    trigger.wBeginDay = word(static_cast<unsigned>(m_begin->date().day()));
    setFlag(trigger, TriggerFlag::HasEndDate, m_hasEnd->isChecked());
    if (m_hasEnd->isChecked()) {
        trigger.wEndYear = word(static_cast<unsigned>(m_end->date().year()));
        trigger.wEndMonth = word(static_cast<unsigned>(m_end->date().month()));
        trigger.wEndDay = word(static_cast<unsigned>(m_end->date().day()));
    }
    setFlag(trigger, TriggerFlag::Disabled, !m_active->isChecked());
    const bool repeats = m_repeat->isChecked() && !IsEventTrigger(trigger);
    trigger.MinutesInterval = repeats ? m_interval->Minutes() : 0;
    if (repeats || m_kill->isChecked())
        trigger.MinutesDuration = m_duration->Minutes();
    else
        trigger.MinutesDuration = 0;
    setFlag(trigger, TriggerFlag::KillAtDurationEnd, m_kill->isChecked());

    if (kindIsKnown())
        trigger.Type.Words = {};
    switch (kind()) {
    case TASK_TIME_TRIGGER_DAILY:
        trigger.Type.Daily = {word(static_cast<unsigned>(m_days->value()))};
        break;
    case TASK_TIME_TRIGGER_WEEKLY:
        trigger.Type.Weekly = {word(static_cast<unsigned>(m_weeks->value())), word(m_weekDays->Mask())};
        break;
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        trigger.Type.MonthlyDate.rgfDays = m_monthDays->Mask();
        trigger.Type.MonthlyDate.rgfMonths = word(m_dateMonths->Mask());
        break;
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        trigger.Type.MonthlyDOW = {word(static_cast<unsigned>(m_which->currentIndex() + 1)),
                                   word(m_dowDays->Mask()), word(m_dowMonths->Mask())};
        break;
    default:
        break;
    }
    return trigger;
}

void TTriggerEditor::Check() const
{
    const auto trigger = Trigger();
    const auto kindNow = kind();
    if (!kindIsKnown())
        throw ERefusedValue(unknownKind(), m_kind);
    if (m_hasEnd->isChecked() && m_end->date() < m_begin->date())
        throw ERefusedValue(tr("Le dernier jour ne peut pas précéder le premier."), m_end);
    if (trigger.MinutesInterval > 0 && trigger.MinutesDuration <= trigger.MinutesInterval)
        throw ERefusedValue(tr("La répétition doit durer plus longtemps que son intervalle."), m_duration);
    if (kindNow == TASK_TIME_TRIGGER_WEEKLY && m_weekDays->Mask() == 0)
        throw ERefusedValue(tr("Choisissez au moins un jour de la semaine."), m_weekDays);
    if (kindNow == TASK_TIME_TRIGGER_MONTHLYDOW && m_which->currentIndex() < 0)
        throw ERefusedValue(tr("La semaine du mois n'existe pas : choisissez-en une."), m_which);
    if (kindNow == TASK_TIME_TRIGGER_MONTHLYDOW && m_dowDays->Mask() == 0)
        throw ERefusedValue(tr("Choisissez au moins un jour de la semaine."), m_dowDays);
    if (kindNow == TASK_TIME_TRIGGER_MONTHLYDATE && m_monthDays->Mask() == 0)
        throw ERefusedValue(tr("Choisissez au moins un jour du mois."), m_monthDays);
    for (const auto &[monthly, months] : {std::pair{TASK_TIME_TRIGGER_MONTHLYDATE, m_dateMonths},
                                          std::pair{TASK_TIME_TRIGGER_MONTHLYDOW, m_dowMonths}})
        if (kindNow == monthly && months->Mask() == 0)
            throw ERefusedValue(tr("Choisissez au moins un mois."), months);
    if (!IsEventTrigger(trigger) && !TTriggerTimes(trigger).CanStart())
        throw ERefusedValue(tr("Aucun des mois choisis n'a ce jour : la tâche ne démarrerait jamais."),
                            m_monthDays);
}

void TTriggerEditor::kindChosen()
{
    enableFields();
    fieldChanged();
}

void TTriggerEditor::fieldChanged()
{
    if (m_showing)
        return;
    enableFields();
    emit Changed();
}

void TTriggerEditor::enableFields()
{
    const bool onEvent = kind() >= TASK_EVENT_TRIGGER_ON_IDLE;
    m_details->setCurrentIndex(onEvent ? m_details->count() - 1 : static_cast<int>(kind()));
    m_event->setText(
        !kindIsKnown() ? unknownKind()
        : kind() == TASK_EVENT_TRIGGER_AT_SYSTEMSTART
            ? tr("La tâche démarre avec le système et non à une heure.")
            : tr("Ce système n'annonce pas cet événement : la tâche n'y démarre pas d'elle-même."));
    m_time->setEnabled(!onEvent);
    m_end->setEnabled(m_hasEnd->isChecked());
    m_repeat->setEnabled(!onEvent);
    m_interval->setEnabled(!onEvent && m_repeat->isChecked());
    m_kill->setEnabled(!onEvent);
    m_duration->setEnabled(!onEvent && (m_repeat->isChecked() || m_kill->isChecked()));
}

} // namespace Zelmar01
