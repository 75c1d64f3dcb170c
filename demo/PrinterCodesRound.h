#pragma once

#include <QString>

namespace Shop {

class MainWindow;

/// One round in the dialog of the printer codes, opened from the till: looks at a code in another notation,
/// changes the drawer's and sends it, and cancels. Returns what it saw. The virtual printer must be chosen.
QString GoRoundPrinterCodes(MainWindow &window);

/// Opens the dialog of the printer codes and writes a picture of it.
void TakePictureOfPrinterCodes(MainWindow &window, const QString &file);

} // namespace Shop
