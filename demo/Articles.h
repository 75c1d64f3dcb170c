#pragma once

#include "Money.h"

#include <QList>

namespace Shop {

/// What the shop sells.
struct TArticle
{
    QString Reference;
    QString Name;
    TCents Price = 0; ///< with VAT
};

const QList<TArticle> &Articles();

} // namespace Shop
