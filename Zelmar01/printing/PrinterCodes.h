#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// The kinds of printer for which codes are kept.
enum TPrinterType : std::uint8_t {
    ptHPPCL,  ///< page printer driven by PCL escapes
    ptEpson,  ///< receipt printer with station select, cutter and alignment
    ptIBM,    ///< receipt printer driven by the IBM-style escape set
    ptPlain,  ///< plain text, no codes; never saved
    ptUser1,  ///< a set left free for the user
    ptTiroir, ///< the cash drawer; only its Tiroir code is used
};

inline constexpr std::size_t PrinterTypeCount = 6;

/// One control code: up to 20 bytes of any value. Storing a longer value keeps its first 20 bytes.
class TPrinterCode
{
public:
    static constexpr std::size_t MaxLength = 20;

    constexpr TPrinterCode() = default;
    constexpr TPrinterCode(std::string_view bytes)
    {
        m_length = static_cast<std::uint8_t>(bytes.size() < MaxLength ? bytes.size() : MaxLength);
        for (std::size_t i = 0; i < m_length; ++i)
            m_bytes[i] = bytes[i];
    }

    constexpr std::string_view Bytes() const { return {m_bytes.data(), m_length}; }
    constexpr operator std::string_view() const { return Bytes(); }
    constexpr bool IsEmpty() const { return m_length == 0; }

    friend constexpr bool operator==(const TPrinterCode &a, const TPrinterCode &b)
    {
        return a.Bytes() == b.Bytes();
    }

private:
    std::uint8_t m_length = 0;
    std::array<char, MaxLength> m_bytes{};
};

/// The 23 control codes of one kind of printer. The library stores and sends them and gives them no further
/// meaning; a code that a printer does not have is empty.
struct TPrinterCodeSet
{
    TPrinterType Kind = ptPlain;
    TPrinterCode Ini;                 ///< initialise the printer
    TPrinterCode BoldOn, BoldOff;     ///< bold
    TPrinterCode ItalicOn, ItalicOff; ///< italic
    TPrinterCode UnderOn, UnderOff;   ///< underline
    TPrinterCode CarA, CarB;          ///< select character font A or B
    TPrinterCode Return;              ///< end of line
    TPrinterCode Eject;               ///< form feed
    TPrinterCode Reset;               ///< reset
    TPrinterCode SelTic;              ///< select the receipt station
    TPrinterCode SelJnl;              ///< select the journal station
    TPrinterCode SelFac;              ///< select the slip (invoice) station
    TPrinterCode Cutter;              ///< cut the paper
    TPrinterCode Tiroir;              ///< open the cash drawer
    TPrinterCode cBlack, cRed;        ///< ink
    TPrinterCode Left, Right, Centr;  ///< alignment
    TPrinterCode Back;                ///< feed the paper backwards

    bool operator==(const TPrinterCodeSet &) const = default;
};

/// The code sets, one a printer type, addressed as `Codes[ptEpson].BoldOn`.
using TPrinterCodes = std::array<TPrinterCodeSet, PrinterTypeCount>;

/// The name of a code and where a set keeps it.
struct TPrinterCodeField
{
    std::string_view Name;
    TPrinterCode TPrinterCodeSet::*Code;
};

inline constexpr std::size_t PrinterCodeCount = 23;

/// The codes in the order of the record.
const std::array<TPrinterCodeField, PrinterCodeCount> &PrinterCodeFields();

/// The code sets that a new component starts with. Two Epson codes end in ESC "!" without the parameter byte
/// on purpose, so that the printer takes the next byte sent as the parameter; cBlack and cRed there are one
/// space.
TPrinterCodes DefaultPrinterCodes();

} // namespace Zelmar01
