#include <Zelmar01/tasks/SettingsPage.h>

#include <Zelmar01/tasks/MinutesField.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

#include <limits>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr std::uint32_t millisecondsAMinute = 60'000;
constexpr std::uint32_t defaultLimit = 72 * 60; // minutes
constexpr std::uint32_t longestLimit = (UnlimitedRunTime - 2) / millisecondsAMinute;

QSpinBox *makeMinutes(const QString &name, const QString &label)
{
    auto *field = new QSpinBox;
    field->setObjectName(name);
    field->setAccessibleName(label);
    field->setRange(0, std::numeric_limits<std::uint16_t>::max());
    field->setSuffix(QCoreApplication::translate("Zelmar01", " min"));
    return field;
}

} // namespace

TSettingsPage::TSettingsPage()
    : m_limited(new QCheckBox(tr("&Arrêter la tâche quand elle dure plus de"))),
      m_limit(new TMinutesField(u"limit"_s, tr("Durée maximale")))
{
    setObjectName(u"settingsPage"_s);
    setWhatsThis(tr("Combien de temps la tâche peut durer, et ce qu'elle attend ou évite pour démarrer."));
    auto *layout = new QVBoxLayout(this);
    for (auto *group : {makeEnd(), makeIdle(), makePower(), makeOthers()})
        layout->addWidget(group);
    auto *note = new QLabel(
        tr("Ce système ne tient pas compte de l'inactivité, du réveil, de la connexion, de "
           "la session ouverte ni du bureau. La tâche garde ces réglages pour un système qui le fait."));
    note->setWordWrap(true);
    layout->addWidget(note);
    layout->addStretch(1);

    for (const auto &flag : m_flags)
        connect(flag.Box, &QCheckBox::toggled, this, &TSettingsPage::userChanged);
    const auto limitTouched = [this] {
        m_limitTouched = true;
        userChanged();
    };
    connect(m_limited, &QCheckBox::toggled, this, limitTouched);
    connect(m_limit, &TMinutesField::Changed, this, limitTouched);
    for (auto *minutes : {m_idle, m_deadline})
        connect(minutes, &QSpinBox::valueChanged, this, &TSettingsPage::userChanged);
    connect(m_priority, &QComboBox::currentIndexChanged, this, &TSettingsPage::userChanged);
}

QCheckBox *TSettingsPage::addFlag(std::uint32_t flag, const QString &name, const QString &text,
                                  const QString &help)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(name);
    box->setWhatsThis(help);
    m_flags.push_back({flag, box});
    return box;
}

QWidget *TSettingsPage::makeEnd()
{
    m_limited->setObjectName(u"limited"_s);
    auto *group = new QGroupBox(tr("Fin de la tâche"));
    auto *layout = new QVBoxLayout(group);
    auto *row = new QHBoxLayout;
    row->addWidget(m_limited);
    row->addWidget(m_limit);
    row->addStretch(1);
    layout->addLayout(row);
    layout->addWidget(addFlag(TaskFlag::DeleteWhenDone, u"deleteWhenDone"_s,
                              tr("&Supprimer la tâche quand plus aucune exécution n'est prévue"),
                              tr("La tâche disparaît de la liste après sa dernière exécution.")));
    return group;
}

QWidget *TSettingsPage::makeIdle()
{
    m_onlyIfIdle = addFlag(
        TaskFlag::StartOnlyIfIdle, u"onlyIfIdle"_s, tr("Ne démarrer que si l'ordinateur est &inactif depuis"),
        tr("L'ordinateur est inactif quand personne ne touche au clavier ni à la souris."));
    m_idle = makeMinutes(u"idle"_s, tr("Durée d'inactivité"));
    m_deadline = makeMinutes(u"deadline"_s, tr("Attente de cette inactivité"));
    auto *waiting = new QLabel(tr("Attendre cette inactivité pendant au p&lus"));
    waiting->setBuddy(m_deadline);
    auto *group = new QGroupBox(tr("Inactivité"));
    auto *layout = new QGridLayout(group);
    layout->addWidget(m_onlyIfIdle, 0, 0);
    layout->addWidget(m_idle, 0, 1);
    layout->addWidget(waiting, 1, 0);
    layout->addWidget(m_deadline, 1, 1);
    layout->addWidget(addFlag(TaskFlag::KillOnIdleEnd, u"killOnIdleEnd"_s,
                              tr("Arrêter la tâche quand l'ordinateur n'est plus i&nactif"), {}),
                      2, 0, 1, 2);
    layout->addWidget(addFlag(TaskFlag::RestartOnIdleResume, u"restartOnIdle"_s,
                              tr("La re&démarrer quand il l'est de nouveau"), {}),
                      3, 0, 1, 2);
    layout->setColumnStretch(2, 1);
    return group;
}

QWidget *TSettingsPage::makePower()
{
    auto *group = new QGroupBox(tr("Alimentation et connexion"));
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(addFlag(TaskFlag::DontStartIfOnBatteries, u"notOnBatteries"_s,
                              tr("Ne pas démarrer sur &batterie"), {}));
    layout->addWidget(addFlag(TaskFlag::KillIfGoingOnBatteries, u"killOnBatteries"_s,
                              tr("Arrêter la tâche quand l'ordinate&ur passe sur batterie"), {}));
    layout->addWidget(addFlag(TaskFlag::SystemRequired, u"wake"_s,
                              tr("Réveiller l'&ordinateur pour exécuter la tâche"), {}));
    layout->addWidget(addFlag(TaskFlag::RunIfConnectedToInternet, u"online"_s,
                              tr("Ne démarrer qu'avec une &connexion à Internet"), {}));
    return group;
}

QWidget *TSettingsPage::makeOthers()
{
    m_priority = new QComboBox;
    m_priority->setObjectName(u"priority"_s);
    m_priority->setAccessibleName(tr("Priorité"));
    m_priority->addItem(tr("basse"), PriorityClass::Idle);
    m_priority->addItem(tr("normale"), PriorityClass::Normal);
    m_priority->addItem(tr("haute"), PriorityClass::High);
    m_priority->addItem(tr("temps réel"), PriorityClass::RealTime);
    auto *caption = new QLabel(tr("Priorit&é :"));
    caption->setBuddy(m_priority);
    auto *group = new QGroupBox(tr("Exécution"));
    auto *layout = new QVBoxLayout(group);
    auto *row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(m_priority);
    row->addStretch(1);
    layout->addLayout(row);
    layout->addWidget(addFlag(TaskFlag::RunOnlyIfLoggedOn, u"loggedOn"_s,
                              tr("Seulement quand la session de l'utilisateur est ou&verte"), {}));
    layout->addWidget(
        addFlag(TaskFlag::Interactive, u"interactive"_s, tr("Visible sur l&e bureau de l'utilisateur"), {}));
    layout->addWidget(addFlag(TaskFlag::Hidden, u"hidden"_s, tr("Tâche cac&hée"), {}));
    return group;
}

void TSettingsPage::fill(const TTaskSettings &settings)
{
    for (const auto &flag : m_flags)
        flag.Box->setChecked(settings.Flags & flag.Flag);
    // Nothing and the two largest values mean no limit.
    const bool limited = settings.MaxRunTime > 0 && settings.MaxRunTime < UnlimitedRunTime - 1;
    m_limited->setChecked(limited);
    m_limit->SetMinutes(limited ? qMax(1U, settings.MaxRunTime / millisecondsAMinute) : defaultLimit);
    m_idle->setValue(settings.IdleTime.IdleMinutes);
    m_deadline->setValue(settings.IdleTime.DeadlineMinutes);
    const int priority = m_priority->findData(settings.Priority);
    m_priority->setCurrentIndex(priority >= 0 ? priority : m_priority->findData(PriorityClass::Normal));
    m_limitTouched = false;
    enableFields();
}

// A limit in seconds, and a priority that has no name, stay as they are until the user touches them.
void TSettingsPage::TakeSettings(TTaskSettings &settings) const
{
    for (const auto &flag : m_flags)
        settings.Flags = flag.Box->isChecked() ? settings.Flags | flag.Flag : settings.Flags & ~flag.Flag;
    if (m_limitTouched) {
        if (m_limited->isChecked() && m_limit->Minutes() > longestLimit)
            throw ERefusedValue(tr("Une tâche limitée peut durer 49 jours au plus."), m_limit);
        settings.MaxRunTime =
            m_limited->isChecked() ? m_limit->Minutes() * millisecondsAMinute : UnlimitedRunTime;
    }
    settings.IdleTime = {static_cast<std::uint16_t>(m_idle->value()),
                         static_cast<std::uint16_t>(m_deadline->value())};
    const auto priority = m_priority->currentData().toUInt();
    const bool named = m_priority->findData(settings.Priority) >= 0;
    if (named || priority != PriorityClass::Normal)
        settings.Priority = priority;
}

void TSettingsPage::userChanged()
{
    enableFields();
    fieldChanged();
}

void TSettingsPage::enableFields()
{
    m_limit->setEnabled(m_limited->isChecked());
    m_idle->setEnabled(m_onlyIfIdle->isChecked());
    m_deadline->setEnabled(m_onlyIfIdle->isChecked());
}

} // namespace Zelmar01
