#pragma once

#include <QString>

namespace Shop {

class MainWindow;
class ShopDatabase;

/// One round on the page of statistical codes, through its keys and windows: a section is added, renamed and
/// deleted, and after each step the table is read to see that it holds what the page shows. Returns what the
/// table held. The page is left with codes shown and a level selected.
QString GoRoundCodes(MainWindow &window, const ShopDatabase &database);

} // namespace Shop
