#include "ArticleTable.h"

#include "Articles.h"

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

struct TMetal
{
    int Id;
    QString Label;
    QStringList Words; // in the names of articles
};

const QList<TMetal> &metals()
{
    static const QList<TMetal> metals{
        {3, u"Or jaune 750"_s, {u"or 750"_s}},  {8, u"Argent 925"_s, {u"argent"_s}},
        {10, u"Platine 950"_s, {u"platine"_s}}, {14, u"Or jaune 375"_s, {u"or 375"_s}},
        {15, u"Or gris 750"_s, {u"Étoile"_s}},  {21, u"Acier"_s, {u"Montre"_s}},
    };
    return metals;
}

QVariant metalOf(const QString &article)
{
    for (const auto &metal : metals())
        for (const auto &word : metal.Words)
            if (article.contains(word, Qt::CaseInsensitive))
                return metal.Id;
    return {};
}

} // namespace

TShopTable MetalTable()
{
    return {u"metal"_s, u"create table metal (METAL_ID integer primary key, LIBELLE varchar(30) not null)"_s,
            [](TConnection &connection) {
                for (const auto &metal : metals())
                    connection.Execute(u"insert into metal values (?, ?)"_s, {metal.Id, metal.Label});
            }};
}

TShopTable ArticleTable()
{
    return {u"article"_s,
            u"create table article (ARTICLE_ID integer primary key, REFERENCE varchar(10) not null unique, "
            "NOM varchar(60) not null, PRIX decimal(10,2) not null, METAL_ID integer)"_s,
            [](TConnection &connection) {
                int id = 0;
                for (const auto &article : Articles())
                    connection.Execute(u"insert into article values (?, ?, ?, ?, ?)"_s,
                                       {++id, article.Reference, article.Name,
                                        static_cast<double>(article.Price) / 100, metalOf(article.Name)});
            }};
}

} // namespace Shop
