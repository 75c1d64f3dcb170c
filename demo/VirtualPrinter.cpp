#include "VirtualPrinter.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Shop {

VirtualPrinter::VirtualPrinter()
{
    const auto device = m_folder.filePath(QStringLiteral("imprimante")).toStdString();
    if (m_folder.isValid() && mkfifo(device.c_str(), S_IRUSR | S_IWUSR) == 0)
        m_reader = open(device.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (m_reader < 0)
        throw Zelmar01::EInOutError("L'imprimante virtuelle ne peut pas être créée",
                                    Zelmar01::CauseFromErrno(errno, device));
    Zelmar01::TPrintSystemOptions options;
    options.Ports.Set(PortName, {{device}, {}, {}});
    m_printer = std::make_shared<Zelmar01::TPrinterObject>(Zelmar01::PlatformPrintSystem(std::move(options)));
}

VirtualPrinter::~VirtualPrinter()
{
    close(m_reader);
}

std::string VirtualPrinter::Received()
{
    std::string bytes;
    std::array<char, 4096> block;
    for (ssize_t count; (count = read(m_reader, block.data(), block.size())) > 0;)
        bytes.append(block.data(), static_cast<std::size_t>(count));
    return bytes;
}

} // namespace Shop
