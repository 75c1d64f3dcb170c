#include "Bench.h"
#include "PricedArticles.h"

#include <Zelmar01/data/DataSetModel.h>

#include <QCoreApplication>

#include <sqlite3.h>

#include <cstdlib>
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

void benchSorts(Series &series, int count, bool isNumbered, int rounds)
{
    const TPricedArticles articles(count, isNumbered);
    TDataSetSort ours(articles);
    TProxySort proxy(ours.Source());
    TSqliteSort sqlite(articles);
    const std::string labels = isNumbered ? ", texts all different" : ", texts repeated";
    const auto size = static_cast<std::size_t>(count);

    TColdSort cold{[&] { ours.Load(); }, [&] { ours.Sort(); }};
    TColdSort proxyCold{[&] { proxy.Unsort(); }, [&] { proxy.Sort(Qt::AscendingOrder); }};
    const auto sqliteSort = [&] { sqlite.Sort(); };
    series.Print("sort" + labels, size, "QSortFilterProxyModel", 1.0 / 8, cold, proxyCold, rounds);
    series.Print("sort" + labels, size, "SQLite, order by", 1, cold, sqliteSort, rounds);

    const auto flip = [&] { ours.Flip(); };
    auto order = Qt::AscendingOrder;
    const auto proxyFlip = [&] {
        order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        proxy.Sort(order);
    };
    ours.Sort();
    series.Print("flip" + labels, size, "QSortFilterProxyModel", 1.0 / 8, flip, proxyFlip, rounds);
    // Each flip finds what the sort before it has kept.
    series.Print("flip" + labels, size, "first sort", 1.0 / 20, flip, cold, rounds);
    const auto click = [&] { ours.Click(); };
    series.Print("other field first" + labels, size, "first sort", 1.0 / 20, click, cold, rounds);
}

} // namespace

// bench_data_sort [ROWS [ROUNDS]]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const std::vector<int> sizes =
        argc > 1 ? std::vector{std::atoi(argv[1])} : std::vector{10'000, 100'000, 1'000'000};
    Comparison::PrintHeader();
    Series series;
    for (const bool isNumbered : {false, true})
        for (const int size : sizes)
            benchSorts(series, size, isNumbered, argc > 2 ? std::atoi(argv[2]) : size < 1'000'000 ? 7 : 3);
}
