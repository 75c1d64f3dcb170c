#include "Bench.h"

#include <Zelmar01/printing/Conversions.h>
#include <Zelmar01/printing/DosPrint.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace Zelmar01;

namespace {

std::string ticket(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += "Alliance or jaune 18 ct, gravée \xE0 l'int\xE9rieur   1 250,00 \x80\r\n";
    text.resize(size);
    return text;
}

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile char sink;
void use(const std::string &text)
{
    sink = text.empty() ? '\0' : text[text.size() / 2];
}

void benchConversions()
{
    for (const std::size_t size : {40U, 4096U, 65536U}) {
        const auto text = ticket(size);
        for (const auto &[name, convert] :
             {std::pair("fWinToPrn, bytes", &fWinToPrn), {"fWinToCitizen, bytes", &fWinToCitizen}})
            Row(name, size)
                .Ours([&, convert = convert] { use(convert(text)); })
                .Limit("plain copy", [&] { use(std::string(text)); })
                .Print();
    }
}

void benchCodeFile(const std::filesystem::path &folder)
{
    const auto file = folder / "bench.PCC";
    auto codes = DefaultPrinterCodes();
    SaveCodeFile(file, codes);
    std::array<char, 16384> bytes;
    const auto readBytes = [&] {
        const int handle = open(file.c_str(), O_RDONLY);
        while (read(handle, bytes.data(), bytes.size()) > 0) {
        }
        close(handle);
    };
    Row("code file, load")
        .Ours([&] { LoadCodeFile(file, codes); })
        .Limit("read its bytes", readBytes)
        .LimitTarget(5)
        .Print();

    const auto writeBytes = [&] {
        const int handle = open((folder / "copy.PCC").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        if (write(handle, bytes.data(), 9075) != 9075)
            std::abort();
        fsync(handle);
        close(handle);
    };
    Row("code file, save")
        .WallTime()
        .Ours([&] { SaveCodeFile(file, codes); })
        .Limit("write its bytes, fsync", writeBytes)
        .Print();
}

void benchPort(const std::filesystem::path &folder)
{
    const auto fifo = folder / "port";
    mkfifo(fifo.c_str(), 0600);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    std::array<char, 65536> bytes;
    const auto drain = [&] {
        while (read(reader, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size())) {
        }
    };

    TPrintSystemOptions options;
    for (const auto &[port, device] :
         {std::pair("LPT1:", std::string("/dev/null")), {"LPT2:", fifo.string()}}) {
        options.Ports.Set(port, {{device}, {}, {}});
        TDosPrint printer(nullptr, PlatformPrintSystem(options));
        printer.setPrnName(QString::fromLatin1(port));
        for (const std::size_t size : {1U, 400U, 4086U}) {
            const auto text = ticket(size);
            const auto byHand = [&] {
                const int handle = open(device.c_str(), O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
                if (write(handle, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
                    std::abort();
                close(handle);
                drain();
            };
            Row("PrintString, bytes to " + (device == "/dev/null" ? device : "a FIFO"), size)
                .Ours([&] {
                    printer.PrintString(text, false);
                    drain();
                })
                .Limit("open, write, close", byHand)
                .LimitTarget(2)
                .Print();
        }
    }
    close(reader);
}

} // namespace

int main()
{
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    benchConversions();
    benchCodeFile(folder);
    benchPort(folder);
    std::filesystem::remove_all(folder);
}
