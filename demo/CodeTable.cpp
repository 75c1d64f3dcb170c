#include "CodeTable.h"

#include <QSqlQuery>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// One command for some hundred rows takes a third of the time of one for each.
constexpr std::size_t rowsAtOnce = 200;

void insertLevels(TConnection &connection, const TLevels &levels)
{
    for (std::size_t begin = 0; begin < levels.size(); begin += rowsAtOnce) {
        const auto end = std::min(begin + rowsAtOnce, levels.size());
        QVariantList values;
        for (auto row = begin; row < end; ++row) {
            const auto &level = levels[row];
            values << level.ID << level.IDPere << level.Code << level.Libelle << level.LibLong
                   << level.LibCourt;
        }
        const QStringList rows(static_cast<qsizetype>(end - begin), u"(?, ?, ?, ?, ?, ?)"_s);
        connection.Execute(u"insert into descr_article (DESCR_ART_ID, DESCR_ART_ID_PERE, DESCR_ART_CODE, "
                           "DESCR_ART_LIBELLE, DESCR_ART_LIB_LONG, DESCR_ART_LIB_COURT) values "_s +
                               rows.join(u", "_s),
                           values);
    }
}

} // namespace

TShopTable CodeTable(std::function<TLevels()> levels)
{
    return {u"descr_article"_s,
            u"create table descr_article ("
            "DESCR_ART_ID integer not null primary key, "
            "DESCR_ART_ID_PERE integer not null, "
            "DESCR_ART_CODE varchar(%1) collate nocase not null unique, "
            "DESCR_ART_LIBELLE varchar(%2) not null, "
            "DESCR_ART_LIB_LONG varchar(%3) not null, "
            "DESCR_ART_LIB_COURT varchar(%4) not null)"_s.arg(CodeSize)
                .arg(LabelSize)
                .arg(LongLabelSize)
                .arg(ShortLabelSize),
            [levels = std::move(levels)](TConnection &connection) { insertLevels(connection, levels()); }};
}

QString CodeTableQuery()
{
    return u"select DESCR_ART_CODE, DESCR_ART_LIBELLE, DESCR_ART_LIB_LONG, DESCR_ART_LIB_COURT, "
           "DESCR_ART_ID, DESCR_ART_ID_PERE from descr_article"_s;
}

int NextIdentifier(TConnection &connection)
{
    int last = 0;
    connection.ReadRows(u"select max(DESCR_ART_ID) from descr_article"_s,
                        [&](const QSqlQuery &row) { last = row.value(0).toInt(); });
    return last + 1;
}

} // namespace Shop
