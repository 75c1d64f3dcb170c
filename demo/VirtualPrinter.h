#pragma once

#include <Zelmar01/printing/output/PrinterObject.h>

#include <QTemporaryDir>

#include <memory>
#include <string>

namespace Shop {

/// A printer that does not exist: a FIFO in the place of the device behind the port LPT1:, of which this
/// object holds the reading end. It keeps up to 64 KiB until Received() is called.
class VirtualPrinter
{
public:
    static constexpr const char *PortName = "LPT1:";

    /// Raises EInOutError when the FIFO cannot be made.
    VirtualPrinter();
    ~VirtualPrinter();
    VirtualPrinter(const VirtualPrinter &) = delete;
    VirtualPrinter &operator=(const VirtualPrinter &) = delete;

    /// The printer object through which LPT1: is this printer.
    const std::shared_ptr<Zelmar01::TPrinterObject> &Printer() const { return m_printer; }

    /// The bytes that have arrived since the last call.
    std::string Received();

private:
    QTemporaryDir m_folder;
    int m_reader = -1;
    std::shared_ptr<Zelmar01::TPrinterObject> m_printer;
};

} // namespace Shop
