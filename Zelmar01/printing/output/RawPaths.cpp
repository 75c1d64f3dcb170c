#include <Zelmar01/printing/output/RawPaths.h>

#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

std::string_view begin(TPrintOutcome &outcome, TPrintPath path, const std::string &printer,
                       std::string_view data, std::size_t limit)
{
    const auto sent = data.substr(0, limit);
    outcome = {path, printer, data.size(), data.size() - sent.size(), 0, false, false, {}};
    return sent;
}

void fail(const IPrintSystem &system, TPrintOutcome &outcome)
{
    outcome.Cause = system.LastCause();
    outcome.Unknown = system.OutcomeUnknown();
}

} // namespace

void SendToPort(IPrintSystem &system, const std::string &port, std::string_view data, TPrintOutcome &outcome)
{
    const auto sent = begin(outcome, TPrintPath::Port, port, data, PortLimit);
    auto oldMode = system.SetErrorMode(ErrorModeFailCriticalErrors);
    const auto handle = system.FileCreate(port);
    system.SetErrorMode(oldMode);
    if (handle < 0) {
        fail(system, outcome);
        throw EInOutError(MessageText(TMessage::PortNotFound), outcome.Cause);
    }

    TCommTimeouts saved;
    const bool hasTimeouts = system.GetCommTimeouts(handle, saved);
    system.SetCommTimeouts(handle, {0, 0, 0, 1, 1000});
    oldMode = system.SetErrorMode(ErrorModeFailCriticalErrors);
    outcome.Accepted = system.FileWrite(handle, sent);
    outcome.Success = outcome.Accepted == sent.size();
    if (!outcome.Success)
        fail(system, outcome);
    system.SetErrorMode(oldMode);
    if (hasTimeouts)
        system.SetCommTimeouts(handle, saved);
    system.FileClose(handle);
    if (!outcome.Success)
        throw EInOutError(MessageText(TMessage::PortWriteFailed), outcome.Cause);
}

void SendToSpooler(IPrintSystem &system, const std::string &printer, std::string_view data,
                   TPrintOutcome &outcome)
{
    const auto sent = begin(outcome, TPrintPath::Spooler, printer, data, SpoolerLimit);
    const auto handle = system.OpenPrinter(printer);
    if (handle < 0)
        return fail(system, outcome);

    // The cause of the first failure counts, not those of the calls that end what had begun.
    bool failed = false;
    const auto step = [&](bool succeeded) {
        if (!succeeded && !std::exchange(failed, true))
            fail(system, outcome);
        return succeeded;
    };
    bool done = step(system.StartDocPrinter(handle, {printer, "RAW"}));
    if (done) {
        done = step(system.StartPagePrinter(handle));
        if (done) {
            done = step(system.WritePrinter(handle, sent, outcome.Accepted));
            done = step(system.EndPagePrinter(handle)) && done;
        }
        done = step(system.EndDocPrinter(handle)) && done;
    }
    system.ClosePrinter(handle);
    outcome.Success = done && outcome.Accepted == sent.size();
    if (done && !outcome.Success)
        outcome.Cause = {
            0, printer + " : " + Translate("Zelmar01", "le spouleur n'a pris qu'une partie du ticket"), {}};
}

void SendThroughDriver(TPrinterObject &printer, std::string_view data, TPrintOutcome &outcome)
{
    const auto sent = begin(outcome, TPrintPath::PassThrough, {}, data, PassThroughLimit);
    try {
        outcome.Printer = printer.BeginDoc();
        std::string buffer{static_cast<char>(sent.size() & 0xFFU), static_cast<char>(sent.size() >> 8U)};
        buffer += sent;
        const int answer =
            printer.System().Escape(printer.Handle(), EscapePassThrough, 0, buffer.data(), nullptr);
        if (answer > 0)
            outcome.Accepted = sent.size();
        else if (answer < 0)
            fail(printer.System(), outcome);
        else
            outcome.Cause = {0,
                             outcome.Printer + " : " +
                                 Translate("Zelmar01", "le pilote ne prend pas d'octets tels quels"),
                             {}};
        printer.EndDoc();
        outcome.Success = true;
    } catch (const EInOutError &error) {
        fail(printer.System(), outcome);
        outcome.Accepted = 0;
        if (outcome.Cause.Text.empty())
            outcome.Cause.Text = error.what();
    } catch (const std::exception &error) {
        outcome.Cause = {0, error.what(), {}};
    } catch (...) {
        outcome.Cause = {0, outcome.Printer + " : " + Translate("Zelmar01", "erreur de nature inconnue"), {}};
    }
    printer.Abandon();
}

} // namespace Zelmar01
