#include "PrinterPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Messages.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSettings>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

const QString printerKey = u"Till/Printer"_s;
const QString typeKey = u"Till/Type"_s;
const QString conversionKey = u"Till/Conversion"_s;
const QString passThroughKey = u"Till/PassThrough"_s;

// The virtual printer is the entry without a name.
const QString virtualPrinter;

void select(QComboBox &box, const QVariant &data)
{
    if (const int found = box.findData(data); found >= 0)
        box.setCurrentIndex(found);
}

QString portState(const QString &name)
try {
    for (const auto &port : LookAtPorts())
        if (port.Name == name.toStdString())
            return port.Usable ? u"Périphérique %1."_s.arg(QString::fromStdString(port.Device))
                               : QString::fromStdString(port.Cause.Text);
    return {};
} catch (const EConvertError &error) {
    return QString::fromUtf8(error.what());
}

} // namespace

PrinterPanel::PrinterPanel(std::shared_ptr<TPrinterObject> printers, QWidget *parent)
    : QGroupBox(u"Imprimante"_s, parent), m_printers(std::move(printers)), m_printer(new QComboBox),
      m_type(new QComboBox), m_conversion(new QComboBox),
      m_passThrough(new QCheckBox(u"&Passer par le pilote"_s)), m_state(new QLabel)
{
    m_printer->setObjectName(u"printer"_s);
    m_printer->addItem(u"Imprimante virtuelle"_s, virtualPrinter);
    addPrinters({QString::fromStdString(MessageText(TMessage::DefaultPrinter))});
    for (const auto name : LocalPortNames)
        addPrinters({QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))});

    m_type->setObjectName(u"type"_s);
    m_type->addItem(u"Epson (ticket)"_s, ptEpson);
    m_type->addItem(u"IBM (ticket)"_s, ptIBM);
    m_type->addItem(u"HPPCL (page)"_s, ptHPPCL);
    m_type->addItem(u"Utilisateur"_s, ptUser1);
    m_type->addItem(u"Texte seul"_s, ptPlain);

    m_conversion->setObjectName(u"conversion"_s);
    m_conversion->addItem(u"Aucune"_s, 0);
    m_conversion->addItem(u"Page de codes DOS"_s, 1);
    m_conversion->addItem(u"Jeu national français"_s, 2);
    select(*m_conversion, TPrinterChoice().Conversion);

    auto *lookUp = new QPushButton(u"C&hercher les imprimantes"_s);
    lookUp->setObjectName(u"lookUp"_s);
    lookUp->setToolTip(u"Demande au serveur d'impression la liste de ses imprimantes"_s);
    m_passThrough->setToolTip(
        u"Le ticket part dans un document de l'imprimante courante, quel que soit le port"_s);
    m_state->setWordWrap(true);
    m_state->setForegroundRole(QPalette::PlaceholderText);

    auto *form = new QFormLayout(this);
    form->addRow(u"I&mprimante"_s, m_printer);
    form->addRow(QString(), m_state);
    form->addRow(QString(), lookUp);
    form->addRow(u"Typ&e"_s, m_type);
    form->addRow(u"Con&version"_s, m_conversion);
    form->addRow(QString(), m_passThrough);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);

    connect(m_printer, &QComboBox::currentIndexChanged, this, &PrinterPanel::showState);
    connect(m_passThrough, &QCheckBox::toggled, this, &PrinterPanel::showState);
    connect(lookUp, &QPushButton::clicked, this, [this] { ShowingExceptions([this] { lookUpPrinters(); }); });
    showState();
}

TPrinterChoice PrinterPanel::Choice() const
{
    TPrinterChoice choice;
    choice.Name = m_printer->currentData().toString();
    choice.IsVirtual = choice.Name == virtualPrinter;
    choice.Type = static_cast<TPrinterType>(m_type->currentData().toInt());
    choice.Conversion = m_conversion->currentData().toInt();
    choice.PassThrough = m_passThrough->isChecked() && !choice.IsVirtual;
    return choice;
}

void PrinterPanel::Restore(const QSettings &settings)
{
    const auto printer = settings.value(printerKey).toString();
    addPrinters({printer});
    select(*m_printer, printer);
    select(*m_type, settings.value(typeKey, m_type->currentData()).toInt());
    select(*m_conversion, settings.value(conversionKey, m_conversion->currentData()).toInt());
    m_passThrough->setChecked(settings.value(passThroughKey).toBool());
}

void PrinterPanel::Save(QSettings &settings) const
{
    settings.setValue(printerKey, m_printer->currentData());
    settings.setValue(typeKey, m_type->currentData());
    settings.setValue(conversionKey, m_conversion->currentData());
    settings.setValue(passThroughKey, m_passThrough->isChecked());
}

void PrinterPanel::addPrinters(const QStringList &names)
{
    for (const auto &name : names)
        if (m_printer->findData(name) < 0)
            m_printer->addItem(name, name);
}

void PrinterPanel::lookUpPrinters()
{
    m_state->setText(u"Le serveur d'impression est interrogé…"_s);
    m_state->repaint();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto restore = qScopeGuard([this] {
        QApplication::restoreOverrideCursor();
        showState();
    });
    const auto printers = m_printers->Printers();
    if (const auto &cause = m_printers->System().LastCause(); printers.empty() && !cause.Text.empty())
        throw EInOutError("La liste des imprimantes ne peut pas être lue", cause);
    QStringList names;
    for (const auto &name : printers)
        names << QString::fromStdString(name);
    addPrinters(names);
    restore.dismiss();
    QApplication::restoreOverrideCursor();
    m_state->setText(names.isEmpty() ? u"Le serveur d'impression n'a aucune imprimante."_s
                                     : u"Imprimantes trouvées : %1."_s.arg(names.join(u", "_s)));
}

void PrinterPanel::showState()
{
    const auto name = m_printer->currentData().toString();
    m_passThrough->setEnabled(name != virtualPrinter);
    if (name == virtualPrinter)
        m_state->setText(u"Rien ne quitte ce poste : le ticket s'affiche à droite."_s);
    else if (m_passThrough->isChecked())
        m_state->setText(u"Document de l'imprimante courante."_s);
    else if (IsLocalPortName(name.toStdString()))
        m_state->setText(portState(name));
    else
        m_state->setText(u"Travail brut du serveur d'impression."_s);
}

} // namespace Shop
