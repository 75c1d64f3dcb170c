#pragma once

#include <QIcon>

namespace Shop {

enum class TShopIcon { Gem, Tag, AddDepartment, AddSection, Rename, Delete, Reload, Rebuild, Levels, Back };

/// An icon that is drawn with lines, at any size and in the colours of the desktop.
QIcon ShopIcon(TShopIcon which);

} // namespace Shop
