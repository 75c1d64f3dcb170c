#include <Zelmar01/package/DosPrintHolder.h>

namespace Zelmar01 {

TDosPrintHolder::TDosPrintHolder(QWidget *parent) : TComponentHolder(parent), m_printer(new TDosPrint(this))
{
    hold(m_printer);
}

void TDosPrintHolder::setPrnName(const QString &value)
{
    doing([&] { m_printer->setPrnName(value); });
}

void TDosPrintHolder::setPrnFile(const QString &value)
{
    doing([&] { m_printer->setPrnFile(value); });
}

void TDosPrintHolder::OuvreTiroirCaisse()
{
    ShowingExceptions([&] { m_printer->OuvreTiroirCaisse(); });
}

void TDosPrintHolder::EditPrinterCodes()
{
    ShowingExceptions([&] { m_printer->EditPrinterCodes(); });
}

} // namespace Zelmar01
