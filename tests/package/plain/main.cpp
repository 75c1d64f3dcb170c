#include <Zelmar01/printing/Conversions.h>
#include <Zelmar01/printing/output/RawPaths.h>

int main()
{
    Zelmar01::TPrintSystemOptions options;
    options.Ports.Set("LPT1:", {{"/dev/null"}, {}, {}});
    Zelmar01::TPrintOutcome outcome;
    Zelmar01::SendToPort(*Zelmar01::PlatformPrintSystem(options), "LPT1:", Zelmar01::fWinToPrn("\xE9"),
                         outcome);
    return outcome.Success && outcome.Accepted == 1 ? 0 : 1;
}
