#include <Zelmar01/tasks/ProgramPage.h>

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

// A text that can be selected, and is scrolled where it is too long, but not changed.
QLineEdit *makeFact(const QString &name, const QString &label)
{
    auto *fact = new QLineEdit;
    fact->setObjectName(name);
    fact->setAccessibleName(label);
    fact->setReadOnly(true);
    fact->setFrame(false);
    auto palette = fact->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    fact->setPalette(palette);
    return fact;
}

QLineEdit *makeField(const QString &name, const QString &help)
{
    auto *field = new QLineEdit;
    field->setObjectName(name);
    field->setWhatsThis(help);
    return field;
}

} // namespace

TProgramPage::TProgramPage()
    : m_file(makeFact(u"file"_s, tr("Fichier"))), m_account(makeFact(u"account"_s, tr("Compte"))),
      m_program(makeField(u"program"_s, tr("Le programme que la tâche démarre."))),
      m_parameters(makeField(u"parameters"_s,
                             tr("Ce que le programme reçoit sur sa ligne de commande. Un paramètre qui "
                                "contient des espaces s'écrit entre guillemets."))),
      m_directory(makeField(u"directory"_s, tr("Le dossier dans lequel le programme démarre."))),
      m_comment(new QPlainTextEdit),
      m_enabled(new QCheckBox(tr("Tâche acti&vée : elle s'exécute aux heures prévues")))
{
    setObjectName(u"taskPage"_s);
    setWhatsThis(
        tr("Le programme de la tâche : ce qui est exécuté, avec quels paramètres, dans quel dossier et "
           "sous quel compte."));
    m_comment->setObjectName(u"comment"_s);
    m_comment->setTabChangesFocus(true);
    m_comment->setWhatsThis(tr("Une note libre sur la tâche."));
    m_enabled->setObjectName(u"enabled"_s);
    m_enabled->setWhatsThis(tr("Une tâche désactivée reste dans la liste et ne démarre pas."));

    auto *layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    layout->addRow(tr("Fichier :"), m_file);
    layout->addRow(tr("&Exécuter :"),
                   withButton(m_program, u"programBrowse"_s, &TProgramPage::browseProgram));
    layout->addRow(tr("P&aramètres :"), m_parameters);
    layout->addRow(tr("&Démarrer dans :"),
                   withButton(m_directory, u"directoryBrowse"_s, &TProgramPage::browseDirectory));
    layout->addRow(tr("Co&mmentaire :"), m_comment);
    layout->addRow(tr("Compte :"), m_account);
    layout->addRow(m_enabled);
    // A row that is a field and a button is labelled for the field.
    for (auto *field : {m_program, m_directory})
        qobject_cast<QLabel *>(layout->labelForField(field->parentWidget()))->setBuddy(field);
    m_program->setAccessibleName(tr("Programme à exécuter"));
    m_parameters->setAccessibleName(tr("Paramètres du programme"));
    m_directory->setAccessibleName(tr("Dossier de démarrage"));
    m_comment->setAccessibleName(tr("Commentaire"));

    for (auto *field : {m_program, m_parameters, m_directory})
        connect(field, &QLineEdit::textChanged, this, &TProgramPage::fieldChanged);
    connect(m_comment, &QPlainTextEdit::textChanged, this, &TProgramPage::fieldChanged);
    connect(m_enabled, &QCheckBox::toggled, this, &TProgramPage::fieldChanged);
    connect(m_enabled, &QCheckBox::toggled, this, &TProgramPage::EnabledChanged);
}

QWidget *TProgramPage::withButton(QLineEdit *field, const QString &name, void (TProgramPage::*browse)())
{
    auto *button = new QPushButton(u"…"_s);
    button->setObjectName(name);
    button->setAccessibleName(tr("Parcourir"));
    button->setToolTip(tr("Parcourir"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, browse);
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(field, 1);
    layout->addWidget(button);
    return row;
}

void TProgramPage::browseProgram()
{
    put(m_program, QFileDialog::getOpenFileName(this, tr("Programme à exécuter"), m_program->text()));
}

void TProgramPage::browseDirectory()
{
    put(m_directory,
        QFileDialog::getExistingDirectory(this, tr("Dossier de démarrage"), m_directory->text()));
}

void TProgramPage::put(QLineEdit *field, const QString &path)
{
    if (path.isEmpty())
        return;
    field->setText(QDir::toNativeSeparators(path));
    field->setModified(true);
}

void TProgramPage::fill(const TTaskSettings &settings)
{
    m_file->setText(settings.File);
    m_account->setText(settings.Account.isEmpty() ? tr("aucun compte n'est indiqué") : settings.Account);
    m_file->setCursorPosition(0);
    m_program->setText(settings.ApplicationName);
    m_parameters->setText(settings.Parameters);
    m_directory->setText(settings.WorkingDirectory);
    m_comment->setPlainText(settings.Comment);
    m_comment->document()->setModified(false);
    m_enabled->setChecked(!(settings.Flags & TaskFlag::Disabled));
}

// A field that nobody touched keeps what it cannot show, such as line ends.
void TProgramPage::TakeSettings(TTaskSettings &settings) const
{
    if (m_program->isModified()) {
        const auto program = m_program->text().trimmed();
        if (program.isEmpty())
            throw ERefusedValue(tr("Indiquez le programme que la tâche doit exécuter."), m_program);
        settings.ApplicationName = program;
    }
    if (m_parameters->isModified())
        settings.Parameters = m_parameters->text();
    if (m_directory->isModified())
        settings.WorkingDirectory = m_directory->text().trimmed();
    if (m_comment->document()->isModified())
        settings.Comment = m_comment->toPlainText();
    settings.Flags =
        m_enabled->isChecked() ? settings.Flags & ~TaskFlag::Disabled : settings.Flags | TaskFlag::Disabled;
}

} // namespace Zelmar01
