#pragma once

#include "CodeTable.h"

namespace Shop {

/// The departments of a jeweller and what is below them, some hundred levels. One department is left free.
TLevels ShopLevels();

/// The number of levels of ManyLevels().
inline constexpr int ManyLevelsCount = 100'000;

/// Levels to try how the tree bears many of them.
TLevels ManyLevels();

} // namespace Shop
