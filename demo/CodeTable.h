#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/descrtree/Descr.h>

#include <functional>
#include <vector>

namespace Shop {

using TLevels = std::vector<Zelmar01::TDescr>;

/// The sizes of the texts of a level.
inline constexpr int CodeSize = 12, LabelSize = 60, ShortLabelSize = 20, LongLabelSize = 400;

/// The table of statistical codes; a new one begins with the levels that `levels` returns.
TShopTable CodeTable(std::function<TLevels()> levels);

/// The query that the tree of codes reads and changes.
QString CodeTableQuery();

/// An identifier that no level has.
int NextIdentifier(Zelmar01::TConnection &connection);

} // namespace Shop
