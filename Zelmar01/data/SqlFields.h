#pragma once

#include <Zelmar01/data/FieldDefs.h>
#include <Zelmar01/data/Rows.h>

class QSqlDatabase;
class QSqlRecord;

namespace Zelmar01 {

/// The fields that the columns of a result are, as far as Qt's driver tells: exact decimals as such, sizes of
/// texts only where the column really has one.
TFieldDefs FieldDefsOf(const QSqlRecord &record, const QSqlDatabase &database);

/// Adds a value that came from a driver to the column of its field. Raises EConvertError for one that the
/// field's type cannot hold, such as a text in a number column of SQLite.
void AppendFromDriver(TColumn &column, const TFieldDef &def, QVariant &&value);

} // namespace Zelmar01
