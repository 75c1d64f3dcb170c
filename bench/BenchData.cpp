#include "Bench.h"

#include <Zelmar01/data/Query.h>

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlQueryModel>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile qsizetype sink;

const auto selection = QStringLiteral("select ID, CODE, LIBELLE, PRIX, ENTREE from VENTE order by ID");

void makeSales(TConnection &connection, int count)
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

void benchLoading(TConnection &connection, const std::string &rows, int rounds)
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
    Comparison::Print("TQuery, open " + rows, "QSqlQueryModel, fetch all", 1.3, open, fetchAll, rounds);
    const auto fill = [&] { sink = static_cast<qsizetype>(rowsOfVariants(connection).size()); };
    Comparison::Print("TQuery, open " + rows, "rows of variants", 0, open, fill, rounds);
}

void benchWalking(TConnection &connection, const std::string &rows, int rounds)
{
    TQuery sales(nullptr, &connection);
    sales.setCommandText(selection);
    sales.Open();
    const auto variants = rowsOfVariants(connection);
    for (const auto &[first, second, what] :
         {std::tuple(1U, 2U, "two texts"), {0U, 2U, "a number and a text"}}) {
        const auto &a = sales.Fields()[static_cast<int>(first)],
                   &b = sales.Fields()[static_cast<int>(second)];
        Comparison::Print(
            "TQuery, walk " + rows + ", " + what, "rows of variants", 1.5,
            [&] {
                qsizetype size = 0;
                for (sales.First(); !sales.Eof(); sales.Next())
                    size += a.AsString().size() + b.AsString().size();
                sink = size;
            },
            [&, one = first, two = second] {
                qsizetype size = 0;
                for (const auto &row : variants)
                    size += row[one].toString().size() + row[two].toString().size();
                sink = size;
            },
            rounds);
    }
}

} // namespace

// bench_data [ROWS [ROUNDS]]
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const int count = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    {
        TConnection connection;
        connection.setDatabaseName(QString::fromStdString(folder / "sales.db"));
        makeSales(connection, count);
        Comparison::PrintHeader();
        const auto rows = std::to_string(count) + " rows";
        benchLoading(connection, rows, rounds);
        benchWalking(connection, rows, rounds);
    }
    std::filesystem::remove_all(folder);
}
