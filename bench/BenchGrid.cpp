#include "Bench.h"
#include "PricedArticles.h"

#include <Zelmar01/data/DataSetModel.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QApplication>
#include <QHeaderView>
#include <QTableView>

#include <cstdlib>
#include <memory>

using namespace Zelmar01;

namespace {

constexpr QSize tableSize(700, 500);
constexpr int visibleRows = 30;

void showPainted(QWidget &table)
{
    table.resize(tableSize);
    table.show();
    table.grab();
}

/// A grid over a client dataset, sorted by its titles: by LIBELLE, and by every other title as by PRIX.
class TSortedGrid
{
public:
    explicit TSortedGrid(TClientDataSet &rows)
    {
        m_source.setDataSet(&rows);
        Grid.setDataSource(&m_source);
        Grid.InitGrid(QStringLiteral("PRIX"), QStringLiteral("LIBELLE"), {}, true);
    }
    void Click(const char *field)
    {
        Grid.TitleClick(Grid.ColumnByFieldName(QString::fromLatin1(field)));
        Grid.grab();
    }

private:
    TDataSource m_source;

public:
    TzmGrid Grid;
};

/// A stock table view over the same rows behind a sorting proxy.
class TStockTable
{
public:
    explicit TStockTable(TClientDataSet &rows)
    {
        m_model.setDataSet(&rows);
        m_proxy.setSourceModel(&m_model);
        View.setModel(&m_proxy);
    }
    void Sort(Qt::SortOrder order)
    {
        m_proxy.sort(1, order);
        View.grab();
    }
    void Unsort() { m_proxy.sort(-1); }

private:
    TDataSetModel m_model;
    TLabelAndPriceProxy m_proxy;

public:
    QTableView View;
};

void benchFirstPaint(TClientDataSet &rows, std::size_t size, int rounds)
{
    const auto shownTable = [](TClientDataSet &ofRows) {
        auto table = std::make_unique<TStockTable>(ofRows);
        showPainted(table->View);
        return table;
    };
    TClientDataSet fewRows;
    TPricedArticles(visibleRows, true).Fill(fewRows);
    Row("grid, make and first paint, rows", size)
        .Rounds(rounds)
        .Ours([&] {
            auto grid = std::make_unique<TSortedGrid>(rows);
            showPainted(grid->Grid);
            return grid;
        })
        .Peer("QTableView", [&] { return shownTable(rows); })
        .Limit("QTableView of 30 rows", [&] { return shownTable(fewRows); })
        .GrowthTarget(0.2) // ten times the rows, the same time
        .Print();
}

void benchTitles(TClientDataSet &source, std::size_t size, int rounds)
{
    const double atSize = size >= 100'000 ? 1 : 0;
    TClientDataSet rows;
    auto grid = std::make_unique<TSortedGrid>(rows);
    const auto reload = [&] {
        if (rows.IndexDefs().Count() > 0)
            rows.DeleteIndex(QStringLiteral("IDTEMP"));
        rows.LoadFrom(source);
        grid = std::make_unique<TSortedGrid>(rows);
        showPainted(grid->Grid);
    };
    reload();
    TStockTable stock(source);
    showPainted(stock.View);
    TPrepared cold{reload, [&] { grid->Click("LIBELLE"); }};
    TPrepared stockCold{[&] { stock.Unsort(); }, [&] { stock.Sort(Qt::AscendingOrder); }};
    TPrepared coldTwo{reload, [&] {
                          grid->Click("LIBELLE");
                          grid->Click("PRIX");
                          grid->Click("PRIX"); // the other way round
                      }};
    Row("title, first click, repaint, rows", size)
        .Rounds(rounds)
        .Ours(cold)
        .Peer("QTableView, sorting proxy", stockCold)
        .PeerTarget(atSize / 8)
        .Print();
    Row("titles of two fields, three clicks, rows", size)
        .Rounds(rounds)
        .Ours(coldTwo)
        .Peer("QTableView, sorting proxy", stockCold)
        .PeerTarget(atSize / 8)
        .Print();
    auto order = Qt::AscendingOrder;
    Row("title, next click, repaint, rows", size)
        .Rounds(rounds)
        .Ours([&] { grid->Click("PRIX"); })
        .Peer("QTableView, sorting proxy",
              [&] {
                  order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
                  stock.Sort(order);
              })
        .Limit("repaint alone", [&] { grid->Grid.grab(); })
        .PeerTarget(atSize / 8)
        .Print();
    Row("grid, repaint alone, rows", size)
        .Rounds(rounds)
        .Ours([&] { grid->Grid.grab(); })
        .Peer("QTableView", [&] { stock.View.grab(); })
        .Print();
}

} // namespace

// bench_grid [ROUNDS]
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    for (const int size : {10'000, 100'000, 1'000'000}) {
        TClientDataSet rows;
        TPricedArticles(size, true).Fill(rows);
        const int rounds = argc > 1 ? std::atoi(argv[1]) : size < 1'000'000 ? 7 : 3;
        benchFirstPaint(rows, static_cast<std::size_t>(size), rounds);
        benchTitles(rows, static_cast<std::size_t>(size), rounds);
    }
}
