#include <Zelmar01/printing/DosPrint.h>

using namespace Zelmar01;

int main()
{
    TPrintSystemOptions options;
    options.Ports.Set("COM1:", {{"/dev/null"}, {}, {}});
    TDosPrint printer(nullptr, PlatformPrintSystem(options));
    printer.setPrnName(QStringLiteral("COM1:"));
    printer.setConversion(1);
    return printer.PrintTicket(QStringLiteral("Été\r\n"), {.Type = ptEpson, .Cut = true}) &&
                   printer.Outcome().Accepted == 7
               ? 0
               : 1;
}
