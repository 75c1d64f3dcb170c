#pragma once

#include <Zelmar01/data/ClientDataSet.h>

#include <QStringList>

/// The articles of a very small shop, in memory: ID, LIBELLE, PRIX (two decimals), and a null here and there.
inline void fillWithArticles(Zelmar01::TClientDataSet &articles)
{
    using namespace Zelmar01;
    articles.CreateDataSet({{QStringLiteral("ID"), ftInteger, 0, true, false},
                            {QStringLiteral("LIBELLE"), ftString, 12, false, false},
                            {QStringLiteral("PRIX"), ftBCD, 2, false, false}});
    struct TArticle
    {
        int Id;
        const char *Label;
        const char *Price;
    };
    for (const auto &article : {TArticle{1, "Bague", "1250.00"},
                                {12, "bague", "80.50"},
                                {2, "Collier", nullptr},
                                {3, nullptr, "80.50"},
                                {20, "Étui", "9.90"}}) {
        articles.Append();
        articles.FieldByName(QStringLiteral("ID")).setAsInteger(article.Id);
        if (article.Label)
            articles.FieldByName(QStringLiteral("LIBELLE")).setAsString(QString::fromUtf8(article.Label));
        if (article.Price)
            articles.FieldByName(QStringLiteral("PRIX")).setAsString(QString::fromUtf8(article.Price));
        articles.Post();
    }
    articles.First();
}

/// The values of one field over all rows, from the first to the last, null as "-".
inline QString column(Zelmar01::TDataSet &dataSet, const char *name)
{
    QStringList values;
    for (dataSet.First(); !dataSet.Eof(); dataSet.Next()) {
        const auto &field = dataSet.FieldByName(QString::fromLatin1(name));
        values << (field.IsNull() ? QStringLiteral("-") : field.AsString());
    }
    return values.join(u' ');
}
