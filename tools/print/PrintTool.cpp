#include "PrintTool.h"

#include "TicketText.h"

#include <Zelmar01/printing/Notations.h>

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

void writeCause(QTextStream &err, const TSystemCause &cause)
{
    if (!cause.Text.empty())
        err << "  cause : " << QString::fromStdString(cause.Text) << '\n';
    if (!cause.Remedy.empty())
        err << u"  remède : "_s << QString::fromStdString(cause.Remedy) << '\n';
}

void loadCodes(TDosPrint &printer, const QString &file)
{
    // The library passes over a file that it cannot use; somebody who names one wants to know.
    QFile codes(QString::fromStdU16String(CodeFilePath(file.toStdU16String()).u16string()));
    if (!codes.open(QIODevice::ReadOnly))
        throw EInOutError("Fichier de codes illisible",
                          {0, (codes.fileName() + " : " + codes.errorString()).toStdString(), {}});
    if (!codes.read(75).startsWith("DosPrintControlCodes"))
        throw EConvertError((codes.fileName() + " : ce n'est pas un fichier de codes").toStdString());
    codes.close();
    printer.LoadPrinterCodes(file);
}

// What was asked for must not be left out in silence.
void requireCodes(const TDosPrint &printer, const TDosPrint::TTicketOptions &ticket)
{
    const auto require = [&](bool wanted, const char *option, TPrinterType type, const TPrinterCode &code) {
        if (wanted && code.IsEmpty())
            throw EUsage(u"--%1 : le jeu de codes %2 n'a pas ce code. Choisir un autre --type, ou lire des "
                         "codes par --codes."_s.arg(QLatin1StringView(option), TypeName(type))
                             .toStdString());
    };
    const auto &set = printer.Codes[ticket.Type];
    require(ticket.Ini, "ini", ticket.Type, set.Ini);
    require(ticket.Eject, "eject", ticket.Type, set.Eject);
    require(ticket.Cut, "cut", ticket.Type, set.Cutter);
    require(ticket.OpenDrawer, "drawer", ptTiroir, printer.Codes[ptTiroir].Tiroir);
}

TExit listPrintersAndPorts(const TDosPrint &printer, const TPortMap &ports, QTextStream &out,
                           QTextStream &err)
{
    auto &system = printer.Printer()->System();
    const auto printers = system.Printers();
    const auto cause = system.LastCause();
    const bool known = !printers.empty() || cause.Text.empty();
    if (!known) {
        err << u"La liste des imprimantes ne peut pas être lue\n"_s;
        writeCause(err, cause);
    } else {
        out << "Imprimantes :\n";
        if (printers.empty())
            out << "  aucune\n";
        const auto defaultPrinter = printers.empty() ? std::string() : system.DefaultPrinter();
        for (const auto &name : printers)
            out << "  " << QString::fromStdString(name)
                << (name == defaultPrinter ? u" (par défaut)"_s : QString()) << '\n';
    }

    out << "Ports :\n";
    QStringList remedies;
    for (const auto &port : LookAtPorts(ports)) {
        out << "  " << QString::fromStdString(port.Name) << "  "
            << (port.Usable ? u"utilisable    "_s + QString::fromStdString(port.Device)
                            : u"inutilisable  "_s + QString::fromStdString(port.Cause.Text))
            << '\n';
        remedies << QString::fromStdString(port.Cause.Remedy);
    }
    remedies.removeAll(QString());
    remedies.removeDuplicates();
    if (!remedies.isEmpty())
        out << u"Remèdes :\n  "_s << remedies.join("\n  "_L1) << '\n';
    return known ? TExit::Accepted : TExit::Failed;
}

void showCodes(const TPrinterCodes &codes, TNotation notation, QTextStream &out)
{
    constexpr int nameColumns = 11;
    for (const auto &set : codes) {
        const bool isEmpty = std::ranges::all_of(
            PrinterCodeFields(), [&](const TPrinterCodeField &field) { return (set.*field.Code).IsEmpty(); });
        out << TypeName(set.Kind) << (isEmpty ? u" : aucun code\n"_s : u" :\n"_s);
        if (isEmpty)
            continue;
        for (const auto &[name, code] : PrinterCodeFields()) {
            const auto bytes = (set.*code).Bytes();
            const auto list = notation == TNotation::Decimal ? StrToASCIIList(bytes) : StrToAsciiH(bytes);
            out << "  " << QString::fromLatin1(name.data(), qsizetype(name.size())).leftJustified(nameColumns)
                << (list.empty() ? u"—"_s : QString::fromStdString(list)) << '\n';
        }
    }
}

void saveCodes(const TDosPrint &printer, const QString &file, QTextStream &err)
{
    for (const auto &code : printer.SavePrinterCodes(file)) {
        err << u"Attention : %1, %2 : la liste de %3 caractères est trop longue pour être relue"_s.arg(
            TypeName(code.Type), QLatin1StringView(code.Name.data(), qsizetype(code.Name.size())),
            QString::number(code.ListLength));
        err << (code.LosesRest ? u", et les lignes qui la suivent sont perdues\n"_s : u"\n"_s);
    }
}

TDosPrint::TTicket composeTicket(const TDosPrint &printer, const TPrintToolOptions &options)
{
    const bool mayBeDrawerOnly = options.Ticket.OpenDrawer && options.TextFile.isEmpty();
    const auto text = mayBeDrawerOnly && StandardInputIsTerminal()
                          ? QString()
                          : ReadTicketText(options.TextFile, options.IsWindows1252);
    if (!mayBeDrawerOnly || !text.isEmpty())
        return printer.ComposeTicket(text, options.Ticket);
    TDosPrint::TTicketOptions drawerOnly;
    drawerOnly.OpenDrawer = true;
    return printer.ComposeTicket({}, drawerOnly);
}

QString countOf(const TPrintOutcome &outcome)
{
    return (outcome.Accepted < 2 ? u"%1 octet sur %2"_s : u"%1 octets sur %2"_s)
        .arg(outcome.Accepted)
        .arg(outcome.Asked);
}

TExit print(TDosPrint &printer, const TPrintToolOptions &options, QTextStream &out, QTextStream &err)
{
    printer.setConversion(options.Conversion);
    printer.setEscPassThrough(options.PassThrough);
    printer.setPrnName(options.Printer);
    requireCodes(printer, options.Ticket);
    const auto ticket = composeTicket(printer, options);
    if (!ticket.MissingCharacters.isEmpty())
        err << u"Attention : caractères absents de Windows-1252, imprimés « ? » : "_s
            << ticket.MissingCharacters << '\n';

    const auto &outcome = printer.Outcome();
    try {
        printer.PrintTicket(ticket);
    } catch (const EInOutError &failure) {
        ReportFailure(err, failure);
        err << u"  envoyés : "_s << countOf(outcome) << '\n';
        return outcome.Unknown ? TExit::OutcomeUnknown : TExit::Failed;
    }
    const auto name = outcome.Printer.empty() ? options.Printer : QString::fromStdString(outcome.Printer);
    if (outcome.Success && outcome.Accepted == outcome.Asked) {
        out << name << u" : "_s << countOf(outcome) << '\n';
        return TExit::Accepted;
    }
    err << (outcome.Unknown
                ? u"« %1 » : résultat inconnu, le ticket a peut-être été imprimé ; vérifier avant de "
                  "recommencer\n"_s.arg(name)
                : u"« %1 » : le ticket n'a pas été accepté\n"_s.arg(name));
    writeCause(err, outcome.Cause);
    err << u"  envoyés : "_s << countOf(outcome) << '\n';
    return outcome.Unknown ? TExit::OutcomeUnknown : TExit::Failed;
}

} // namespace

void ReportFailure(QTextStream &err, const std::exception &failure)
{
    err << QString::fromUtf8(failure.what()).trimmed() << '\n';
    if (const auto *cause = CauseOf(failure))
        writeCause(err, *cause);
}

TExit RunPrintTool(const TPrintToolOptions &options, QTextStream &out, QTextStream &err)
{
    TPrintSystemOptions system;
    system.Ports = options.Ports;
    TDosPrint printer(nullptr, PlatformPrintSystem(std::move(system)));
    if (!options.LoadCodes.isEmpty())
        loadCodes(printer, options.LoadCodes);
    if (!options.PrintsNothing())
        return print(printer, options, out, err);

    const auto result =
        options.List ? listPrintersAndPorts(printer, options.Ports, out, err) : TExit::Accepted;
    if (options.ShowCodes)
        showCodes(printer.Codes, *options.ShowCodes, out);
    if (!options.SaveCodes.isEmpty())
        saveCodes(printer, options.SaveCodes, err);
    return result;
}

} // namespace Zelmar01
