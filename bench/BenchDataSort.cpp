#include "Bench.h"
#include "PricedArticles.h"

#include <Zelmar01/data/DataSetModel.h>

#include <QCoreApplication>

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile qint64 sink;

/// The rows of a client dataset; sorts them by label, and by price the other way round.
class TDataSetSort
{
public:
    explicit TDataSetSort(const TPricedArticles &articles)
    {
        articles.Fill(m_source);
        m_rows.AddIndex(QStringLiteral("UP"), QStringLiteral("LIBELLE;PRIX"),
                        ixCaseInsensitive | ixDescending, QStringLiteral("PRIX"));
        m_rows.AddIndex(QStringLiteral("DOWN"), QStringLiteral("LIBELLE;PRIX"),
                        ixCaseInsensitive | ixDescending, QStringLiteral("LIBELLE"));
    }

    TClientDataSet &Source() { return m_source; }
    void Load() { m_rows.LoadFrom(m_source); }
    void Sort() { use("UP"); }
    void Flip() { use(m_rows.IndexName() == u"UP" ? "DOWN" : "UP"); }

    /// What a grid does for a click on the title of the second field: it comes first, the other way round,
    /// and letter case counts or not.
    void Click()
    {
        m_clicked = !m_clicked;
        m_rows.setIndexFieldNames({});
        m_rows.setIndexName({});
        if (m_rows.IndexDefs().IndexOf(temporary) >= 0)
            m_rows.DeleteIndex(temporary);
        m_rows.AddIndex(temporary, QStringLiteral("PRIX;LIBELLE"),
                        m_clicked ? ixDescending : ixCaseInsensitive,
                        m_clicked ? QStringLiteral("PRIX") : QString());
        use("IDTEMP");
    }

private:
    void use(const char *index)
    {
        m_rows.setIndexName(QString::fromLatin1(index));
        sink = m_rows.RecordCount();
    }

    const QString temporary = QStringLiteral("IDTEMP");
    TClientDataSet m_source, m_rows;
    bool m_clicked = false;
};

/// The same rows, as a model behind a sorting proxy.
class TProxySort
{
public:
    explicit TProxySort(TClientDataSet &rows)
    {
        m_model.setDataSet(&rows);
        m_proxy.setSourceModel(&m_model);
    }

    void Unsort()
    {
        m_proxy.sort(-1);
        sink = m_proxy.mapToSource(m_proxy.index(0, 0)).row();
    }
    void Sort(Qt::SortOrder order)
    {
        m_proxy.sort(1, order);
        sink = m_proxy.mapToSource(m_proxy.index(0, 0)).row();
    }

private:
    TDataSetModel m_model;
    TLabelAndPriceProxy m_proxy;
};

int compareFolded(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    return QStringView(static_cast<const char16_t *>(a), sizeA / 2)
        .compare(QStringView(static_cast<const char16_t *>(b), sizeB / 2), Qt::CaseInsensitive);
}

/// The same rows in SQLite's memory, in the encoding that its collation takes.
class TSqliteSort
{
public:
    explicit TSqliteSort(const TPricedArticles &articles)
    {
        sqlite3_open(":memory:", &m_database);
        run("pragma encoding = 'UTF-16'");
        sqlite3_create_collation(m_database, "FOLDED", SQLITE_UTF16_ALIGNED, nullptr, compareFolded);
        run("create table T (ID integer primary key, LIBELLE text, PRIX integer)");
        run("begin");
        sqlite3_stmt *insert = prepared("insert into T values (?, ?, ?)");
        for (int i = 0; i < articles.Count(); ++i) {
            const auto &label = articles.Labels[i];
            sqlite3_bind_int(insert, 1, i);
            sqlite3_bind_text16(insert, 2, label.utf16(), static_cast<int>(label.size() * 2), SQLITE_STATIC);
            sqlite3_bind_int64(insert, 3, articles.Prices[static_cast<std::size_t>(i)]);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        run("commit");
    }
    ~TSqliteSort() { sqlite3_close(m_database); }
    TSqliteSort(const TSqliteSort &) = delete;
    TSqliteSort &operator=(const TSqliteSort &) = delete;

    void Sort() { run("select ID from T order by LIBELLE collate FOLDED, PRIX desc"); }

private:
    sqlite3_stmt *prepared(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr) != SQLITE_OK)
            std::abort();
        return statement;
    }
    void run(const char *sql)
    {
        auto *statement = prepared(sql);
        qint64 sum = 0;
        while (sqlite3_step(statement) == SQLITE_ROW)
            sum += sqlite3_column_int64(statement, 0);
        sqlite3_finalize(statement);
        sink = sum;
    }

    sqlite3 *m_database = nullptr;
};

/// The least that sorting does: each text and price is read once, each row number put in its place.
class TPlacedRows
{
public:
    explicit TPlacedRows(const TPricedArticles &articles)
        : m_articles(articles), m_rows(articles.Prices.size())
    {
        std::vector<std::uint32_t> order(m_rows.size());
        std::iota(order.begin(), order.end(), 0U);
        std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            const int labels = articles.Labels[a].compare(articles.Labels[b], Qt::CaseInsensitive);
            return labels != 0 ? labels < 0 : articles.Prices[a] > articles.Prices[b];
        });
        m_ranks.resize(order.size());
        for (std::uint32_t rank = 0; rank < order.size(); ++rank)
            m_ranks[order[rank]] = rank;
    }

    void Place() const
    {
        qint64 sum = 0;
        for (std::size_t row = 0; row < m_rows.size(); ++row) {
            for (const auto character : m_articles.Labels[static_cast<qsizetype>(row)])
                sum += character.unicode();
            sum += m_articles.Prices[row];
            m_rows[m_ranks[row]] = static_cast<std::uint32_t>(row);
        }
        sink = sum;
    }
    void Turn() const
    {
        std::reverse(m_rows.begin(), m_rows.end());
        sink = m_rows.front();
    }

private:
    const TPricedArticles &m_articles;
    std::vector<std::uint32_t> m_ranks;
    mutable std::vector<std::uint32_t> m_rows;
};

void benchSorts(int count, bool isNumbered, int rounds)
{
    const TPricedArticles articles(count, isNumbered);
    TDataSetSort ours(articles);
    TProxySort proxy(ours.Source());
    TSqliteSort sqlite(articles);
    const std::string labels = isNumbered ? ", texts all different" : ", texts repeated";
    const auto size = static_cast<std::size_t>(count);

    const double atSize = size == 100'000 ? 1 : 0;
    const TPlacedRows placed(articles);
    TPrepared cold{[&] { ours.Load(); }, [&] { ours.Sort(); }};
    TPrepared proxyCold{[&] { proxy.Unsort(); }, [&] { proxy.Sort(Qt::AscendingOrder); }};
    Row("sort" + labels, size)
        .Rounds(rounds)
        .Ours(cold)
        .Peer("QSortFilterProxyModel", proxyCold)
        .Limit("read the texts, place by known ranks", [&] { placed.Place(); })
        .PeerTarget(atSize / 8)
        .GrowthTarget(size == 1'000'000 ? 1.5 : 0)
        .Print();
    Row("sort" + labels, size)
        .Rounds(rounds)
        .Ours(cold)
        .Peer("SQLite, order by", [&] { sqlite.Sort(); })
        .PeerTarget(atSize)
        .Print();

    const auto flip = [&] { ours.Flip(); };
    auto order = Qt::AscendingOrder;
    const auto proxyFlip = [&] {
        order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        proxy.Sort(order);
    };
    ours.Sort();
    Row("flip" + labels, size)
        .Rounds(rounds)
        .Ours(flip)
        .Peer("QSortFilterProxyModel", proxyFlip)
        .Limit("turn the row numbers round", [&] { placed.Turn(); })
        .PeerTarget(atSize / 8)
        .Print();
    // Each flip finds what the sort before it has kept.
    Row("flip" + labels, size)
        .Rounds(rounds)
        .Ours(flip)
        .Peer("first sort", cold)
        .PeerTarget(atSize / 20)
        .Print();
    Row("other field first" + labels, size)
        .Rounds(rounds)
        .Ours([&] { ours.Click(); })
        .Peer("first sort", cold)
        .Print();
}

} // namespace

// bench_data_sort [ROWS [ROUNDS]]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const std::vector<int> sizes =
        argc > 1 ? std::vector{std::atoi(argv[1])} : std::vector{10'000, 100'000, 1'000'000};
    for (const bool isNumbered : {false, true})
        for (const int size : sizes)
            benchSorts(size, isNumbered, argc > 2 ? std::atoi(argv[2]) : size < 1'000'000 ? 7 : 3);
}
