#include "Articles.h"

using namespace Qt::StringLiterals;

namespace Shop {

const QList<TArticle> &Articles()
{
    static const QList<TArticle> articles{
        {u"BG-101"_s, u"Bague or 750, trois saphirs"_s, 1'250'00},
        {u"BG-114"_s, u"Alliance « Éternité », platine"_s, 1'890'00},
        {u"BO-310"_s, u"Boucles d'oreilles « Étoile »"_s, 189'90},
        {u"BR-422"_s, u"Bracelet jonc, argent doré"_s, 95'50},
        {u"CH-508"_s, u"Chaîne forçat or 375, 45 cm"_s, 279'00},
        {u"CO-203"_s, u"Collier perles d'eau douce"_s, 640'00},
        {u"MO-615"_s, u"Montre à quartz, cadran nacré"_s, 325'00},
        {u"PE-702"_s, u"Pendentif goutte, émeraude"_s, 412'00},
        {u"SE-801"_s, u"Mise à taille d'une bague"_s, 48'00},
        {u"SE-802"_s, u"Gravure, vingt caractères"_s, 35'00},
    };
    return articles;
}

} // namespace Shop
