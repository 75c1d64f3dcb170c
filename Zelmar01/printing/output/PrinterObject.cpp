#include <Zelmar01/printing/output/PrinterObject.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <utility>

namespace Zelmar01 {

TPrinterObject::TPrinterObject(std::shared_ptr<IPrintSystem> system) : m_system(std::move(system)) {}

TPrinterObject::~TPrinterObject()
{
    Abandon();
}

void TPrinterObject::Abandon() noexcept
{
    if (m_context < 0)
        return;
    try {
        m_system->EndDoc(std::exchange(m_context, -1));
    } catch (...) {
        return; // the document is lost either way
    }
}

std::vector<std::string> TPrinterObject::Printers() const
{
    return m_system->Printers();
}

int TPrinterObject::PrinterIndex() const
{
    const auto printers = Printers();
    auto found = std::find(printers.begin(), printers.end(), m_chosen);
    if (found == printers.end())
        found = std::find(printers.begin(), printers.end(), m_system->DefaultPrinter());
    return found == printers.end() ? -1 : static_cast<int>(found - printers.begin());
}

void TPrinterObject::SetPrinterIndex(int index)
{
    const auto printers = index < 0 ? std::vector<std::string>{} : Printers();
    if (index >= 0 && static_cast<std::size_t>(index) >= printers.size())
        throw EInvalidOperation(
            Filled(Translate("Zelmar01", "Aucune imprimante au rang %1"), {std::to_string(index)}));
    m_chosen = index < 0 ? std::string{} : printers[static_cast<std::size_t>(index)];
}

void TPrinterObject::SelectPrinter(std::string name)
{
    m_chosen = std::move(name);
}

std::string TPrinterObject::CurrentPrinter() const
{
    if (m_chosen.empty())
        return m_system->DefaultPrinter();
    const auto printers = Printers();
    const bool isListed = std::find(printers.begin(), printers.end(), m_chosen) != printers.end();
    return isListed || printers.empty() ? m_chosen : m_system->DefaultPrinter();
}

std::string TPrinterObject::BeginDoc()
{
    if (m_context >= 0)
        throw EInvalidOperation(Translate("Zelmar01", "Un document est déjà ouvert sur l'imprimante"));
    auto printer = CurrentPrinter();
    if (printer.empty())
        throw EInOutError(Translate("Zelmar01", "Aucune imprimante par défaut"), m_system->LastCause());
    m_context = m_system->BeginDoc(printer, {});
    if (m_context < 0)
        throw EInOutError(Filled(Translate("Zelmar01", "Imprimante « %1 » inaccessible"), {printer}),
                          m_system->LastCause());
    return printer;
}

void TPrinterObject::EndDoc()
{
    if (m_context < 0)
        throw EInvalidOperation(Translate("Zelmar01", "Aucun document n'est ouvert sur l'imprimante"));
    if (!m_system->EndDoc(std::exchange(m_context, -1)))
        throw EInOutError(Translate("Zelmar01", "Document refusé par l'imprimante"), m_system->LastCause());
}

} // namespace Zelmar01
