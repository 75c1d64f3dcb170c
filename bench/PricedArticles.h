#pragma once

#include <Zelmar01/data/ClientDataSet.h>

#include <QSortFilterProxyModel>

#include <algorithm>
#include <cstdint>
#include <vector>

/// What the articles of a shop are called and cost.
struct TPricedArticles
{
    QStringList Labels;
    std::vector<qint64> Prices;

    /// With `isNumbered` no label comes twice, else each some 20 times.
    TPricedArticles(int count, bool isNumbered)
    {
        const QStringList kinds{QStringLiteral("Alliance"), QStringLiteral("bague"),
                                QStringLiteral("COLLIER"), QStringLiteral("Étui"),
                                QStringLiteral("médaille")};
        const QStringList metals{QStringLiteral("or jaune"), QStringLiteral("Or gris"),
                                 QStringLiteral("argent"), QStringLiteral("plaqué or")};
        std::uint32_t random = 1;
        const auto next = [&random](int limit) {
            random = random * 1664525 + 1013904223;
            return static_cast<int>((random >> 8) % static_cast<std::uint32_t>(limit));
        };
        for (int i = 0; i < count; ++i) {
            Labels << QStringLiteral("%1 %2 n° %3")
                          .arg(kinds[next(5)], metals[next(4)])
                          .arg(isNumbered ? 1'000'000 + int(i * 7919LL % count)
                                          : next(std::max(count / 400, 1)));
            Prices.push_back(next(5000));
        }
    }
    /// Opens a client dataset with them: ID, LIBELLE, PRIX.
    void Fill(Zelmar01::TClientDataSet &rows) const
    {
        using namespace Zelmar01;
        rows.CreateDataSet({{QStringLiteral("ID"), ftInteger, 0, false, false},
                            {QStringLiteral("LIBELLE"), ftString, 0, false, false},
                            {QStringLiteral("PRIX"), ftInteger, 0, false, false}});
        for (int i = 0; i < Count(); ++i) {
            rows.Append();
            rows.Fields()[0].setAsInteger(i);
            rows.Fields()[1].setAsString(Labels[i]);
            rows.Fields()[2].setAsInteger(Prices[static_cast<std::size_t>(i)]);
            rows.Post();
        }
    }
    int Count() const { return static_cast<int>(Labels.size()); }
};

/// A proxy that compares two columns, as one writes it.
class TLabelAndPriceProxy : public QSortFilterProxyModel
{
protected:
    bool lessThan(const QModelIndex &a, const QModelIndex &b) const override
    {
        const auto value = [](const QModelIndex &index, int column) {
            return index.siblingAtColumn(column).data(Qt::EditRole);
        };
        const int order = value(a, 1).toString().compare(value(b, 1).toString(), Qt::CaseInsensitive);
        return order != 0 ? order < 0 : value(b, 2).toLongLong() < value(a, 2).toLongLong();
    }
};
