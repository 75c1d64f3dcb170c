#pragma once

#include <Zelmar01/printing/output/PrintSystem.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// The platform's printer object: the list of printers, the current one, and a document on it. Nothing is
/// looked up before it is needed.
class TPrinterObject
{
public:
    explicit TPrinterObject(std::shared_ptr<IPrintSystem> system);
    ~TPrinterObject();
    TPrinterObject(const TPrinterObject &) = delete;
    TPrinterObject &operator=(const TPrinterObject &) = delete;

    IPrintSystem &System() const { return *m_system; }

    /// The printers, as the system lists them now.
    std::vector<std::string> Printers() const;

    /// The place of the current printer in Printers(). Where none was chosen, or the chosen one is absent, it
    /// is the default printer's place, and -1 when there is no default printer either.
    int PrinterIndex() const;
    /// Makes the printer at that place current; -1 stands for the default printer.
    void SetPrinterIndex(int index);

    /// Makes the printer of that name current, or the default printer when the list does not hold it. The
    /// list is asked when the current printer is next needed.
    void SelectPrinter(std::string name);

    /// The name of the current printer; empty when none was chosen and there is no default. A chosen printer
    /// stays current while the list cannot be had, so that a server that does not answer is asked once and
    /// not again for a default.
    std::string CurrentPrinter() const;

    /// Opens a document on the current printer and returns that printer's name. The document is titled as the
    /// platform titles documents without a name. Raises EInvalidOperation when one is open, and EInOutError
    /// when there is no printer or it cannot be reached.
    std::string BeginDoc();
    /// The device context of the open document, -1 without one.
    TPrintHandle Handle() const { return m_context; }
    /// Sends the open document off. Raises EInOutError.
    void EndDoc();
    /// Lets go of the open document, if there is one, whatever has been sent of it.
    void Abandon() noexcept;

private:
    std::shared_ptr<IPrintSystem> m_system;
    std::string m_chosen; // empty: the default printer
    TPrintHandle m_context = -1;
};

} // namespace Zelmar01
