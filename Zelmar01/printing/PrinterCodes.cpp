#include <Zelmar01/printing/PrinterCodes.h>

namespace Zelmar01 {

static_assert(sizeof(TPrinterCode) == 21 && sizeof(TPrinterCodeSet) == 1 + PrinterCodeCount * 21);

const std::array<TPrinterCodeField, PrinterCodeCount> &PrinterCodeFields()
{
    using S = TPrinterCodeSet;
    static constexpr std::array<TPrinterCodeField, PrinterCodeCount> fields{{
        {"Ini", &S::Ini},           {"BoldOn", &S::BoldOn},       {"BoldOff", &S::BoldOff},
        {"ItalicOn", &S::ItalicOn}, {"ItalicOff", &S::ItalicOff}, {"UnderOn", &S::UnderOn},
        {"UnderOff", &S::UnderOff}, {"CarA", &S::CarA},           {"CarB", &S::CarB},
        {"Return", &S::Return},     {"Eject", &S::Eject},         {"Reset", &S::Reset},
        {"SelTic", &S::SelTic},     {"SelJnl", &S::SelJnl},       {"SelFac", &S::SelFac},
        {"Cutter", &S::Cutter},     {"Tiroir", &S::Tiroir},       {"cBlack", &S::cBlack},
        {"cRed", &S::cRed},         {"Left", &S::Left},           {"Right", &S::Right},
        {"Centr", &S::Centr},       {"Back", &S::Back},
    }};
    return fields;
}

TPrinterCodes DefaultPrinterCodes()
{
    using namespace std::string_view_literals;
    TPrinterCodes codes;
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i].Kind = static_cast<TPrinterType>(i);

    // A string literal takes as many hexadecimal digits as follow: hence the breaks behind "\x1b".
    auto &pcl = codes[ptHPPCL];
    pcl.BoldOn = "\x1b(s3B"sv;
    pcl.BoldOff = "\x1b(s0B"sv;
    pcl.ItalicOn = "\x1b(s1S"sv;
    pcl.ItalicOff = "\x1b(s0S"sv;
    pcl.UnderOn = "\x1b&d1D"sv;
    pcl.UnderOff = "\x1b&d@"sv;
    pcl.Return = "\r\n"sv;
    pcl.Eject = "\f"sv;

    auto &epson = codes[ptEpson];
    epson.Ini = "\x1b@\x1b!"sv;
    epson.BoldOn = "\x1b! "sv;
    epson.BoldOff = "\x1b!"sv;
    epson.CarA = "\x1bM0"sv;
    epson.CarB = "\x1bM1"sv;
    epson.Return = "\r\n"sv;
    epson.Eject = "\f"sv;
    epson.Reset = "\x1b@"sv;
    epson.SelTic = "\x1b"
                   "c0\x02\x1b"
                   "3\x17"sv;
    epson.SelJnl = "\x1b"
                   "c0\x01\x1b"
                   "3\x17"sv;
    epson.SelFac = "\x1b"
                   "c0\x04\x1b"
                   "3\x17"sv;
    epson.Cutter = "\x1bi"sv;
    epson.cBlack = " "sv;
    epson.cRed = " "sv;
    epson.Left = "\x1b"
                 "a0"sv;
    epson.Right = "\x1b"
                  "a2"sv;
    epson.Centr = "\x1b"
                  "a1"sv;
    epson.Back = "\x1b"
                 "e\x05"sv;

    auto &ibm = codes[ptIBM];
    ibm.Ini = "\x1b@\x1bR\x01\x1b\x1dt\x05"sv;
    ibm.BoldOn = "\x0e"sv;
    ibm.BoldOff = "\x14"sv;
    ibm.ItalicOn = "\x1b%G"sv;
    ibm.ItalicOff = "\x1b%H"sv;
    ibm.UnderOn = "\x1b-1"sv;
    ibm.UnderOff = "\x1b-0"sv;
    ibm.Return = "\r\n"sv;
    ibm.Eject = "\f"sv;
    ibm.Reset = "\x1b\x1dt\x05"sv;
    ibm.Cutter = "\x1b"
                 "d\x02"sv;
    ibm.Left = "\x1b\x1d"
               "a0"sv;
    ibm.Right = "\x1b\x1d"
                "a2"sv;
    ibm.Centr = "\x1b\x1d"
                "a1"sv;

    codes[ptUser1].Return = "\r\n"sv;
    codes[ptUser1].Eject = "\f"sv;
    codes[ptTiroir].Tiroir = "\x07"sv;
    return codes;
}

} // namespace Zelmar01
