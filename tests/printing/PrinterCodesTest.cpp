#include <Zelmar01/printing/Notations.h>
#include <Zelmar01/printing/PrinterCodes.h>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Zelmar01;

namespace {

struct TDefaultCode
{
    TPrinterType Type;
    std::string_view Name;
    std::string_view Hex;
};

// What the printers' manuals ask for; every code that is not named here is empty.
const TDefaultCode defaultCodes[] = {
    {ptHPPCL, "BoldOn", "1B,28,73,33,42"},
    {ptHPPCL, "BoldOff", "1B,28,73,30,42"},
    {ptHPPCL, "ItalicOn", "1B,28,73,31,53"},
    {ptHPPCL, "ItalicOff", "1B,28,73,30,53"},
    {ptHPPCL, "UnderOn", "1B,26,64,31,44"},
    {ptHPPCL, "UnderOff", "1B,26,64,40"},
    {ptHPPCL, "Return", "0D,0A"},
    {ptHPPCL, "Eject", "0C"},
    {ptEpson, "Ini", "1B,40,1B,21"},
    {ptEpson, "BoldOn", "1B,21,20"},
    {ptEpson, "BoldOff", "1B,21"},
    {ptEpson, "CarA", "1B,4D,30"},
    {ptEpson, "CarB", "1B,4D,31"},
    {ptEpson, "Return", "0D,0A"},
    {ptEpson, "Eject", "0C"},
    {ptEpson, "Reset", "1B,40"},
    {ptEpson, "SelTic", "1B,63,30,02,1B,33,17"},
    {ptEpson, "SelJnl", "1B,63,30,01,1B,33,17"},
    {ptEpson, "SelFac", "1B,63,30,04,1B,33,17"},
    {ptEpson, "Cutter", "1B,69"},
    {ptEpson, "cBlack", "20"},
    {ptEpson, "cRed", "20"},
    {ptEpson, "Left", "1B,61,30"},
    {ptEpson, "Right", "1B,61,32"},
    {ptEpson, "Centr", "1B,61,31"},
    {ptEpson, "Back", "1B,65,05"},
    {ptIBM, "Ini", "1B,40,1B,52,01,1B,1D,74,05"},
    {ptIBM, "BoldOn", "0E"},
    {ptIBM, "BoldOff", "14"},
    {ptIBM, "ItalicOn", "1B,25,47"},
    {ptIBM, "ItalicOff", "1B,25,48"},
    {ptIBM, "UnderOn", "1B,2D,31"},
    {ptIBM, "UnderOff", "1B,2D,30"},
    {ptIBM, "Return", "0D,0A"},
    {ptIBM, "Eject", "0C"},
    {ptIBM, "Reset", "1B,1D,74,05"},
    {ptIBM, "Cutter", "1B,64,02"},
    {ptIBM, "Left", "1B,1D,61,30"},
    {ptIBM, "Right", "1B,1D,61,32"},
    {ptIBM, "Centr", "1B,1D,61,31"},
    {ptUser1, "Return", "0D,0A"},
    {ptUser1, "Eject", "0C"},
    {ptTiroir, "Tiroir", "07"},
};

std::string_view expectedHex(TPrinterType type, std::string_view name)
{
    const auto *found =
        std::find_if(std::begin(defaultCodes), std::end(defaultCodes),
                     [&](const TDefaultCode &code) { return code.Type == type && code.Name == name; });
    return found == std::end(defaultCodes) ? std::string_view() : found->Hex;
}

} // namespace

TEST(PrinterCodes, startWithTheDefaults)
{
    for (const auto &set : DefaultPrinterCodes())
        for (const auto &field : PrinterCodeFields())
            EXPECT_EQ(StrToAsciiH(set.*field.Code), expectedHex(set.Kind, field.Name))
                << int(set.Kind) << ' ' << field.Name;
}

TEST(PrinterCodes, keepTwentyBytesOfAnyValue)
{
    std::string bytes(25, '\0');
    bytes[19] = '\xff';
    const TPrinterCode code(bytes);
    EXPECT_EQ(code.Bytes(), std::string_view(bytes).substr(0, 20));
    EXPECT_FALSE(code == TPrinterCode(std::string_view(bytes).substr(0, 19)));
}
