#pragma once

#include <QString>

namespace Shop {

class MainWindow;
class ShopDatabase;

/// Goes round the page of the lists by itself, as a user would: sorts the grid by its titles, changes a price
/// in it, finds the article in the combo box, gives it another metal, and checks articles. Returns what it
/// saw, a line each. Raises an exception when something does not come about.
QString GoRoundLists(MainWindow &window, ShopDatabase &database);

} // namespace Shop
