#pragma once

#include <QString>

#include <vector>

namespace Zelmar01 {

/// What a field holds, and the type of the QVariant in which it is read and written. Any field may be null.
enum TFieldType {
    ftString,   ///< QString
    ftInteger,  ///< qlonglong, 64 bits
    ftFloat,    ///< double
    ftBCD,      ///< TDecimal, exact
    ftBoolean,  ///< bool
    ftDate,     ///< QDate
    ftTime,     ///< QTime
    ftDateTime, ///< QDateTime
    ftBytes,    ///< QByteArray
};

/// The definition of a field.
struct TFieldDef
{
    QString Name;
    TFieldType DataType = ftString;
    /// The most characters of a text, 0 for no limit; the decimals of an exact decimal, -1 for as they come.
    int Size = 0;
    bool Required = false;
    bool ReadOnly = false;
};

using TFieldDefs = std::vector<TFieldDef>;

} // namespace Zelmar01
