#include "ShopLevels.h"

#include <Zelmar01/descrtree/Labels.h>

#include <QList>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

struct TSection;
using TSections = QList<TSection>;

struct TSection
{
    QString Label, ShortLabel;
    TSections Below;
};

// Sections from "label:short label|...", each with the same ones below it.
TSections sections(const QString &words, const TSections &below = {})
{
    TSections result;
    for (const auto &word : words.split(u'|'))
        result << TSection{word.section(u':', 0, 0), word.section(u':', 1, 1), below};
    return result;
}

TSections inEachMetal(const QString &words)
{
    const auto kinds = sections(words);
    const auto gold = sections(u"750 millièmes (18 carats):750|585 millièmes (14 carats):585|"
                               "375 millièmes (9 carats):375"_s,
                               kinds);
    return sections(u"Or jaune:OJ|Or gris:OG|Or rose:ORS"_s, gold) +
           sections(u"Platine:PLAT"_s, sections(u"950 millièmes:950"_s, kinds)) +
           sections(u"Argent:ARG"_s, sections(u"925 millièmes:925"_s, kinds));
}

TSections watches()
{
    const auto straps = sections(u"Bracelet cuir:CUIR|Bracelet acier:ACIER|Bracelet titane:TITANE|"
                                 "Bracelet silicone:SILIC"_s);
    return sections(u"Homme:H|Femme:F|Enfant:E"_s,
                    sections(u"Quartz:QTZ|Automatique:AUTO|Mécanique:MECA|Solaire:SOL"_s, straps));
}

TSections departments()
{
    return {
        {u"BAGUES"_s, u"BAG"_s,
         inEachMetal(u"Diamant:DIAM|Saphir:SAPH|Rubis:RUBI|Émeraude:EMER|Perle de culture:PERL|"
                     "Pierre fine:FINE|Sans pierre:SANS"_s)},
        {u"ALLIANCES"_s, u"ALL"_s,
         inEachMetal(u"Demi-jonc:DJ|Ruban:RUB|Bicolore:BIC|Ciselée:CIS|Sertie de diamants:SERT"_s)},
        {u"COLLIERS ET CHAÎNES"_s, u"COL"_s,
         inEachMetal(u"Forçat:FORC|Gourmette:GOUR|Maille serpent:SERP|Rivière:RIV|Sautoir:SAUT|"
                     "Rang de perles:RANG"_s)},
        {u"BRACELETS"_s, u"BRA"_s,
         inEachMetal(u"Jonc:JONC|Gourmette:GOUR|Rivière:RIV|Manchette:MANC|Identité bébé:BEBE"_s)},
        {u"BOUCLES D'OREILLES"_s, u"BO"_s,
         inEachMetal(u"Puces:PUCE|Créoles:CREO|Dormeuses:DORM|Pendantes:PEND|Clips:CLIP"_s)},
        {u"PENDENTIFS ET MÉDAILLES"_s, u"PEN"_s,
         inEachMetal(u"Croix:CROIX|Médaille de baptême:BAPT|Cœur:COEUR|Initiale:INIT|Zodiaque:ZODI"_s)},
        {u"MONTRES"_s, u"MON"_s, watches()},
        {u"SERVICES"_s, u"SER"_s,
         sections(u"Réparation:REP|Mise à taille:TAIL|Gravure:GRAV|Polissage:POLI|Rhodiage:RHOD|"
                  "Renfilage de collier:RENF|Changement de pile:PILE|Estimation:ESTI"_s)},
    };
}

QChar codeCharacter(qsizetype place)
{
    return place < 10 ? QChar(u'0' + static_cast<char16_t>(place))
                      : QChar(u'A' + static_cast<char16_t>(place - 10));
}

void append(TLevels &levels, const TSection &section, const TDescr &parent, QChar last)
{
    const auto libLong = parent.ID == 0 ? section.Label : ChainedLabel(parent.LibLong, section.Label);
    const TDescr level(static_cast<int>(levels.size()) + 1, parent.ID, libLong, section.Label,
                       section.ShortLabel, parent.Code + last);
    levels.push_back(level);
    for (qsizetype place = 0; place < section.Below.size(); ++place)
        append(levels, section.Below[place], level, codeCharacter(place));
}

} // namespace

TLevels ShopLevels()
{
    TLevels levels;
    const auto all = departments();
    for (qsizetype place = 0; place < all.size(); ++place)
        append(levels, all[place], {}, codeCharacter(place + 1));
    return levels;
}

// The decimal numbers are such a hierarchy: 123 is below 12, and that below 1.
TLevels ManyLevels()
{
    TLevels levels(1); // what the departments are below
    levels.reserve(ManyLevelsCount + 1);
    for (int number = 1; number <= ManyLevelsCount; ++number) {
        const auto code = QString::number(number);
        const auto label = number < 10 ? u"RAYON "_s + code : u"Rubrique "_s + code;
        const auto &parent = levels[static_cast<std::size_t>(number) / 10];
        levels.emplace_back(number, parent.ID, parent.ID == 0 ? label : ChainedLabel(parent.LibLong, label),
                            label, code, code);
    }
    levels.erase(levels.begin());
    return levels;
}

} // namespace Shop
