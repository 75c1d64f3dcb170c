// Any bytes as a code file, as a notation, as a port setting or as a ticket: no crash, no hang, and no code
// changed that the input does not name.

#include "Fuzz.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/CodeFile.h>
#include <Zelmar01/printing/Notations.h>
#include <Zelmar01/printing/Ticket.h>
#include <Zelmar01/printing/output/PortMap.h>

#include <support/TempFolder.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

using namespace Zelmar01;

namespace {

constexpr std::size_t lineLength = 75;

void require(bool promise)
{
    if (!promise)
        std::abort();
}

std::string lower(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return result;
}

// The codes that a code file names, by type and name in lower case, read in the plainest way.
std::set<std::pair<std::size_t, std::string>> namedIn(const std::string &input)
{
    std::set<std::pair<std::size_t, std::string>> named;
    const std::map<std::string, std::size_t> types{
        {"HPPCL", ptHPPCL}, {"Epson", ptEpson}, {"IBM", ptIBM}, {"Tiroir", ptTiroir}};
    std::size_t type = ptTiroir;
    for (std::size_t at = lineLength; at + lineLength <= input.size(); at += lineLength) {
        std::istringstream label(input.substr(at + 1, 15)), name(input.substr(at + 49, 15));
        std::string word;
        if (input[at] == '#') {
            std::getline(label >> std::ws, word, '\0');
            word.erase(word.find_last_not_of(' ') + 1);
            type = types.contains(word) ? types.at(word) : std::size_t{ptUser1};
        } else if (name >> word) {
            named.insert({type, lower(word)});
        }
    }
    return named;
}

void asCodeFile(const std::string &input)
{
    static const TempFolder folder;
    static const auto file = folder / "x.PCC";
    std::ofstream(file, std::ios::binary | std::ios::trunc) << input;

    const auto before = DefaultPrinterCodes();
    auto codes = before;
    try {
        LoadCodeFile(file, codes);
    } catch (const EConvertError &) {
    }
    const auto named = namedIn(input);
    for (std::size_t type = 0; type < codes.size(); ++type)
        for (const auto &field : PrinterCodeFields())
            if (codes[type].*field.Code != before[type].*field.Code)
                require(named.contains({type, lower(field.Name)}));
    require(std::equal(codes.begin(), codes.end(), before.begin(),
                       [](const auto &a, const auto &b) { return a.Kind == b.Kind; }));
}

void asNotation(const std::string &input)
{
    using TConvert = std::string (*)(std::string_view);
    const std::pair<TConvert, TConvert> notations[] = {{ASCIIListToStr, StrToASCIIList},
                                                       {AsciiHToStr, StrToAsciiH}};
    for (const auto &[read, write] : notations) {
        try {
            const auto bytes = read(input);
            require(read(write(bytes)) == bytes);
        } catch (const EConvertError &error) {
            require(std::string_view(error.what()).starts_with("Code invalide : "));
        }
        require(read(write(input)) == input);
    }
}

void asPortSetting(const std::string &input)
{
    TPortMap map;
    try {
        map.Set(input, "fuzz");
        require(map.Ports().size() == 1);
    } catch (const EConvertError &) {
        require(map.Ports().empty());
    }
}

void asTicket(const std::string &input)
{
    const auto limit = 1 + input.size() % 97;
    const auto tail = input.substr(0, input.size() % 5);
    std::string joined;
    for (const auto &piece : SplitTicket(input, tail, limit)) {
        require(piece.size() <= limit);
        joined += piece;
    }
    require(joined == input + tail);
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const auto seeds = [] {
        const TempFolder folder;
        SaveCodeFile(folder / "x.PCC", DefaultPrinterCodes());
        std::ifstream file(folder / "x.PCC", std::ios::binary);
        const std::string whole((std::istreambuf_iterator<char>(file)), {});
        return std::vector<std::string>{whole,
                                        whole.substr(0, lineLength * 8),
                                        whole.substr(0, lineLength) +
                                            whole.substr(lineLength * 26, lineLength * 4),
                                        "27,64,27,33",
                                        "1B,40,FF",
                                        " $1B , 0 ,, 255,",
                                        "COM1: = /dev/ttyUSB0, speed=9600, parity=even, flow=rtscts",
                                        "Bague\nCollier\r\n\x1b@"};
    }();
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char *>(data), size);
    asCodeFile(input);
    asNotation(input);
    asPortSetting(input);
    asTicket(input);
    return 0;
}
