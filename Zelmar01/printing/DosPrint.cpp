#include <Zelmar01/printing/DosPrint.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/printing/Conversions.h>
#include <Zelmar01/printing/PrnCodeDialog.h>
#include <Zelmar01/printing/Ticket.h>

#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace Zelmar01 {

namespace {

bool isDefaultPrinter(const QString &name)
{
    const auto defaultName = QString::fromStdString(MessageText(TMessage::DefaultPrinter));
    return name.compare(defaultName, Qt::CaseInsensitive) == 0;
}

std::filesystem::path codeFile(const QString &name)
{
    const auto utf8 = name.toUtf8();
    return CodeFilePath(std::u8string(utf8.begin(), utf8.end()));
}

} // namespace

TDosPrint::TDosPrint(QObject *owner, std::shared_ptr<IPrintSystem> system)
    : TComponent(owner),
      m_printer(std::make_shared<TPrinterObject>(system ? std::move(system) : PlatformPrintSystem()))
{
    ShowingExceptions([this] { LoadPrinterCodes(QStringLiteral("Corvantix")); });
}

void TDosPrint::setPrnFile(const QString &value)
{
    m_prnFile = value;
    if (IsLoading())
        ShowingExceptions([&] { LoadPrinterCodes(value); });
    else
        LoadPrinterCodes(value);
}

void TDosPrint::fPrnFile(const QString &value)
{
    Loaded();
    setPrnFile(value);
}

void TDosPrint::LoadPrinterCodes(const QString &fileName)
{
    LoadCodeFile(codeFile(fileName), Codes);
}

std::vector<TUnreadableCode> TDosPrint::SavePrinterCodes(const QString &fileName) const
{
    return SaveCodeFile(codeFile(fileName), Codes);
}

bool TDosPrint::WriteCode(int fileHandle, std::string_view keyName, std::string_view code)
{
    return WriteCodeLine(fileHandle, keyName, code);
}

bool TDosPrint::EditPrinterCodes()
{
    // While the dialog is open a timer of the host may free the component.
    const QPointer<TDosPrint> stillThere(this);
    const auto send = [stillThere](std::string_view code) {
        if (!stillThere)
            throw EInvalidOperation(tr("L'imprimante n'est plus liée à ce dialogue").toStdString());
        stillThere->sendCode(code);
    };
    auto edited = Codes;
    if (!ShowPrinterCodesDialog(edited, PrnType(), send) || !stillThere)
        return false;
    Codes = edited;
    return true;
}

// A port raises; the other ways only tell.
void TDosPrint::sendCode(std::string_view code)
{
    if (!PrintString(code, false))
        throw EInOutError((m_outcome.Unknown ? tr("L'imprimante a peut-être reçu le code")
                                             : tr("Le code n'est pas parti vers l'imprimante"))
                              .toStdString(),
                          m_outcome.Cause);
}

void TDosPrint::fPrnDosPort(const QString &value)
{
    m_prnName = value;
    if (!fPortIsLocal(value))
        m_printer->SelectPrinter(isDefaultPrinter(value) ? std::string() : value.toStdString());
}

bool TDosPrint::fPortIsLocal(const QString &name)
{
    m_portIsLocal = IsLocalPortName(name.toStdString());
    return m_portIsLocal;
}

void TDosPrint::SetPrinter(std::shared_ptr<TPrinterObject> printer)
{
    m_printer = printer ? std::move(printer) : std::make_shared<TPrinterObject>(PlatformPrintSystem());
    if (!m_prnName.isEmpty())
        fPrnDosPort(m_prnName);
}

bool TDosPrint::PrintString(std::string_view text, bool convert)
{
    return send(convert ? ConvertText(m_conversion, text) : std::string(text));
}

bool TDosPrint::PrintString(const QString &text, bool convert)
{
    const auto encoded = ToWindows1252(text);
    const auto report = qScopeGuard([&] { m_outcome.MissingCharacters = encoded.Missing; });
    return PrintString(encoded.Bytes, convert);
}

bool TDosPrint::send(const std::string &data)
{
    if (m_escPassThrough)
        return fPrintStringwPassTrough(m_prnName, data);
    if (m_portIsLocal)
        return fPrintStringwFileCreate(m_prnName, data);
    if (!isDefaultPrinter(m_prnName))
        return fPrintStringwOpenPrinter(m_prnName, data);
    const auto current = m_printer->CurrentPrinter();
    const auto whyNone = m_printer->System().LastCause();
    const bool sent = fPrintStringwOpenPrinter(QString::fromStdString(current), data);
    if (current.empty())
        m_outcome.Cause = whyNone;
    return sent;
}

bool TDosPrint::fPrintStringwPassTrough(const QString &, std::string_view data)
{
    m_outcome.MissingCharacters.clear();
    SendThroughDriver(*m_printer, data, m_outcome);
    return m_outcome.Success;
}

bool TDosPrint::fPrintStringwFileCreate(const QString &printerName, std::string_view data)
{
    m_outcome.MissingCharacters.clear();
    SendToPort(m_printer->System(), printerName.toStdString(), data, m_outcome);
    return m_outcome.Success;
}

bool TDosPrint::fPrintStringwOpenPrinter(const QString &printerName, std::string_view data)
{
    m_outcome.MissingCharacters.clear();
    SendToSpooler(m_printer->System(), printerName.toStdString(), data, m_outcome);
    return m_outcome.Success;
}

void TDosPrint::OuvreTiroirCaisse()
{
    PrintString(Codes[ptTiroir].Tiroir.Bytes(), false);
}

TDosPrint::TTicket TDosPrint::ComposeTicket(const QString &text, const TTicketOptions &options) const
{
    const auto &set = Codes[options.Type];
    auto encoded = ToWindows1252(text);
    TTicket ticket;
    ticket.MissingCharacters = std::move(encoded.Missing);
    if (options.Ini)
        ticket.Bytes += set.Ini.Bytes();
    ticket.Bytes += options.Convert ? ConvertText(m_conversion, encoded.Bytes) : encoded.Bytes;
    if (options.Eject)
        ticket.Tail += set.Eject.Bytes();
    if (options.Cut)
        ticket.Tail += set.Cutter.Bytes();
    if (options.OpenDrawer)
        ticket.Tail += Codes[ptTiroir].Tiroir.Bytes();
    return ticket;
}

bool TDosPrint::PrintTicket(const QString &text, const TTicketOptions &options)
{
    return PrintTicket(ComposeTicket(text, options));
}

bool TDosPrint::PrintTicket(const TTicket &ticket)
{
    const bool toPort = m_portIsLocal && !m_escPassThrough;
    std::size_t acceptedBefore = 0;
    m_outcome = {};
    const auto addUp = qScopeGuard([&] {
        m_outcome.Asked = ticket.Bytes.size() + ticket.Tail.size();
        m_outcome.Accepted += acceptedBefore;
        m_outcome.MissingCharacters = ticket.MissingCharacters;
    });
    for (const auto &piece : SplitTicket(ticket.Bytes, ticket.Tail, toPort ? PortLimit : SpoolerLimit)) {
        acceptedBefore += m_outcome.Accepted;
        if (!send(piece))
            return false;
    }
    return true;
}

} // namespace Zelmar01
