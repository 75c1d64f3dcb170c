#include "PrinterPanel.h"

#include "ui_PrinterPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Messages.h>

#include <QApplication>
#include <QScopeGuard>
#include <QSettings>

#include <array>

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

// In the order of the form.
constexpr std::array types{ptEpson, ptIBM, ptHPPCL, ptUser1, ptPlain};

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

PrinterPanel::PrinterPanel(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::PrinterPanel>())
{
    m_ui->setupUi(this);
    m_ui->state->setForegroundRole(QPalette::PlaceholderText);
    m_ui->printer->setItemData(0, virtualPrinter);
    addPrinters({QString::fromStdString(MessageText(TMessage::DefaultPrinter))});
    for (const auto name : LocalPortNames)
        addPrinters({QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))});
    for (std::size_t i = 0; i < types.size(); ++i)
        m_ui->type->setItemData(static_cast<int>(i), types[i]);
    for (int i = 0; i < m_ui->conversion->count(); ++i)
        m_ui->conversion->setItemData(i, i);
    select(*m_ui->conversion, TPrinterChoice().Conversion);

    connect(m_ui->printer, &QComboBox::currentIndexChanged, this, &PrinterPanel::showState);
    connect(m_ui->passThrough, &QCheckBox::toggled, this, &PrinterPanel::showState);
    connect(m_ui->lookUp, &QPushButton::clicked, this,
            [this] { ShowingExceptions([this] { lookUpPrinters(); }); });
    connect(m_ui->editCodes, &QPushButton::clicked, this, &PrinterPanel::CodesWanted);
    showState();
}

PrinterPanel::~PrinterPanel() = default;

TPrinterChoice PrinterPanel::Choice() const
{
    TPrinterChoice choice;
    choice.Name = m_ui->printer->currentData().toString();
    choice.IsVirtual = choice.Name == virtualPrinter;
    choice.Type = static_cast<TPrinterType>(m_ui->type->currentData().toInt());
    choice.Conversion = m_ui->conversion->currentData().toInt();
    choice.PassThrough = m_ui->passThrough->isChecked() && !choice.IsVirtual;
    return choice;
}

void PrinterPanel::Restore(const QSettings &settings)
{
    const auto printer = settings.value(printerKey).toString();
    addPrinters({printer});
    select(*m_ui->printer, printer);
    select(*m_ui->type, settings.value(typeKey, m_ui->type->currentData()).toInt());
    select(*m_ui->conversion, settings.value(conversionKey, m_ui->conversion->currentData()).toInt());
    m_ui->passThrough->setChecked(settings.value(passThroughKey).toBool());
}

void PrinterPanel::Save(QSettings &settings) const
{
    settings.setValue(printerKey, m_ui->printer->currentData());
    settings.setValue(typeKey, m_ui->type->currentData());
    settings.setValue(conversionKey, m_ui->conversion->currentData());
    settings.setValue(passThroughKey, m_ui->passThrough->isChecked());
}

void PrinterPanel::addPrinters(const QStringList &names)
{
    for (const auto &name : names)
        if (m_ui->printer->findData(name) < 0)
            m_ui->printer->addItem(name, name);
}

void PrinterPanel::lookUpPrinters()
{
    m_ui->state->setText(u"Le serveur d'impression est interrogé…"_s);
    m_ui->state->repaint();
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
    m_ui->state->setText(names.isEmpty() ? u"Le serveur d'impression n'a aucune imprimante."_s
                                         : u"Imprimantes trouvées : %1."_s.arg(names.join(u", "_s)));
}

void PrinterPanel::showState()
{
    const auto name = m_ui->printer->currentData().toString();
    m_ui->passThrough->setEnabled(name != virtualPrinter);
    if (name == virtualPrinter)
        m_ui->state->setText(u"Rien ne quitte ce poste : le ticket s'affiche à droite."_s);
    else if (m_ui->passThrough->isChecked())
        m_ui->state->setText(u"Document de l'imprimante courante."_s);
    else if (IsLocalPortName(name.toStdString()))
        m_ui->state->setText(portState(name));
    else
        m_ui->state->setText(u"Travail brut du serveur d'impression."_s);
}

} // namespace Shop
