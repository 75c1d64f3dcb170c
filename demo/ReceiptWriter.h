#pragma once

#include "SaleModel.h"

#include <Zelmar01/printing/DosPrint.h>

#include <QDateTime>

namespace Shop {

/// What a ticket is written for.
struct TReceiptForm
{
    Zelmar01::TPrinterType Type = Zelmar01::ptPlain;
    int Conversion = 0;
    bool OpenDrawer = false;
};

/// A ticket for the printer, and its text as one reads it.
struct TReceipt
{
    Zelmar01::TDosPrint::TTicket Ticket;
    QString Text;
};

/// Writes the ticket of a sale with the codes of one printer type. Texts are converted, codes never are.
TReceipt WriteReceipt(const TSale &sale, const QDateTime &moment, const Zelmar01::TPrinterCodes &codes,
                      const TReceiptForm &form);

} // namespace Shop
