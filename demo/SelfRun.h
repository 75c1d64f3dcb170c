#pragma once

#include <QString>

namespace Shop {

/// Does one whole sale at the till and one round of the back office by itself, through the windows that a
/// user would use, and writes into `folder` (made when it is missing) the bytes that the virtual printer
/// received (ticket.bin), the text of the ticket (ticket.txt), what was seen of the printer codes
/// (impression.txt), what became of a statistical code (codes.txt), what the lists showed (listes.txt), how
/// the scheduled jobs went (taches.txt) and a picture of every page and of the dialog of the printer codes in
/// light and in dark (till-light.png, till-dark.png and so on). The shop's database is a new one, gone at the
/// end. Returns the exit code of the process: 0, or 1 with the reason on standard error.
int RunBySelf(const QString &folder);

} // namespace Shop
