#pragma once

#include <QString>

#include <vector>

namespace Zelmar01 {

/// Reading SQL texts without understanding them: what stands in quotes, brackets and comments is left alone.

/// Takes out the table hints that SQL Server alone knows: "with (nolock)", "WITH ( NOLOCK, ROWLOCK )" and the
/// like, only where the list holds nothing but known hint words. Everything else stays as it is.
QString WithoutTableHints(const QString &sql);

/// The table of a query that reads just one: "select ... from TABLE [alias] [where|order by ...]", as it is
/// written there, with its schema, quotes and brackets. Empty for a query whose rows are not rows of one
/// table: a join, a union, a grouping, a distinct, a function or a nested selection.
QString SingleTableOf(const QString &sql);

/// A part of a name such as dbo."Mes articles", without its quotes or brackets.
struct TNamePart
{
    QString Text;
    bool Quoted; ///< letter case counts, on engines where it does not otherwise
};
std::vector<TNamePart> PartsOfName(const QString &name);

} // namespace Zelmar01
