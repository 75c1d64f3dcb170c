#pragma once

#include "ShopDatabase.h"

namespace Shop {

/// The metals of the shop: METAL_ID and LIBELLE.
TShopTable MetalTable();

/// The articles of the shop: ARTICLE_ID, REFERENCE, NOM, PRIX and METAL_ID, which is null where there is no
/// metal.
TShopTable ArticleTable();

} // namespace Shop
