#include "Bench.h"

#include <Zelmar01/data/Query.h>

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlQueryModel>

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

constexpr std::size_t largest = 1'000'000;

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile qint64 sink;

const auto selection = QStringLiteral("select ID, CODE, LIBELLE, PRIX, ENTREE from VENTE order by ID");

void makeSales(TConnection &connection, std::size_t count)
{
    connection.Execute(QStringLiteral("create table VENTE (ID integer primary key, CODE varchar(8), LIBELLE "
                                      "varchar(40), PRIX decimal(12,2), ENTREE integer)"));
    connection.Execute(QStringLiteral("with recursive N(I) as (select 1 union all select I + 1 from N where "
                                      "I < %1) insert into VENTE select I, printf('%X', I), 'Alliance or "
                                      "jaune n° ' || I, (I * 7919 % 1000000) / 100.0, 20000 + I % 9000 "
                                      "from N")
                           .arg(count));
}

QSqlQuery run(TConnection &connection)
{
    QSqlQuery query(connection.Database());
    query.setForwardOnly(true);
    if (!query.exec(selection))
        std::abort();
    return query;
}

using TVariantRows = std::vector<std::vector<QVariant>>;

TVariantRows rowsOfVariants(TConnection &connection)
{
    TVariantRows rows;
    for (auto query = run(connection); query.next();)
        rows.push_back({query.value(0), query.value(1), query.value(2), query.value(3), query.value(4)});
    return rows;
}

/// The least that loading does: SQLite makes the values, and someone looks at their bytes.
class TSqliteRows
{
public:
    explicit TSqliteRows(const QString &file)
    {
        sqlite3_open(file.toUtf8().constData(), &m_database);
        const auto text = selection.toUtf8();
        if (sqlite3_prepare_v2(m_database, text.constData(), -1, &m_statement, nullptr) != SQLITE_OK)
            std::abort();
    }
    ~TSqliteRows()
    {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_database);
    }
    TSqliteRows(const TSqliteRows &) = delete;
    TSqliteRows &operator=(const TSqliteRows &) = delete;

    void Step()
    {
        qint64 sum = 0;
        while (sqlite3_step(m_statement) == SQLITE_ROW) {
            sum += sqlite3_column_int64(m_statement, 0) + sqlite3_column_int64(m_statement, 4);
            for (const int column : {1, 2, 3})
                sum += *sqlite3_column_text(m_statement, column);
        }
        sqlite3_reset(m_statement);
        sink = sum;
    }

private:
    sqlite3 *m_database = nullptr;
    sqlite3_stmt *m_statement = nullptr;
};

void benchLoading(TConnection &connection, std::size_t count, int rounds)
{
    TQuery sales(nullptr, &connection);
    sales.setCommandText(selection);
    const auto open = [&] {
        sales.Close();
        sales.Open();
        sink = sales.RecordCount();
    };
    const auto fetchAll = [&] {
        QSqlQueryModel model;
        model.setQuery(selection, connection.Database());
        while (model.canFetchMore())
            model.fetchMore();
        sink = model.rowCount();
    };
    TSqliteRows sqlite(connection.DatabaseName());
    Row("TQuery, open, rows", count)
        .Rounds(rounds)
        .Ours(open)
        .Peer("QSqlQueryModel, fetch all", fetchAll)
        .Limit("step in SQLite", [&] { sqlite.Step(); })
        .PeerTarget(count == largest ? 1.3 : 0)
        .Print();
    Row("TQuery, open, rows", count)
        .Rounds(rounds)
        .Ours(open)
        .Peer("rows of variants", [&] { sink = static_cast<qint64>(rowsOfVariants(connection).size()); })
        .Print();
}

void benchWalking(TConnection &connection, std::size_t count, int rounds)
{
    TQuery sales(nullptr, &connection);
    sales.setCommandText(selection);
    sales.Open();
    const auto variants = rowsOfVariants(connection);
    for (const auto &[first, second, what] :
         {std::tuple(1U, 2U, "two texts"), {0U, 2U, "a number and a text"}}) {
        const auto &a = sales.Fields()[static_cast<int>(first)],
                   &b = sales.Fields()[static_cast<int>(second)];
        std::vector<std::pair<QString, QString>> texts;
        for (const auto &row : variants)
            texts.emplace_back(row[first].toString(), row[second].toString());
        Row(std::string("TQuery, walk, ") + what + ", rows", count)
            .Rounds(rounds)
            .Ours([&] {
                qsizetype size = 0;
                for (sales.First(); !sales.Eof(); sales.Next())
                    size += a.AsString().size() + b.AsString().size();
                sink = size;
            })
            .Peer("rows of variants",
                  [&, one = first, two = second] {
                      qsizetype size = 0;
                      for (const auto &row : variants)
                          size += row[one].toString().size() + row[two].toString().size();
                      sink = size;
                  })
            .Limit("texts side by side",
                   [&] {
                       qsizetype size = 0;
                       for (const auto &[one, two] : texts)
                           size += one.size() + two.size();
                       sink = size;
                   })
            .PeerTarget(count == largest ? 1.5 : 0)
            .Print();
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    for (const std::size_t count : {std::size_t{10'000}, std::size_t{100'000}, largest}) {
        TConnection connection;
        connection.setDatabaseName(QString::fromStdString(folder / (std::to_string(count) + ".db")));
        makeSales(connection, count);
        const int rounds = count == largest ? 5 : 15;
        benchLoading(connection, count, rounds);
        benchWalking(connection, count, rounds);
    }
    std::filesystem::remove_all(folder);
}
