#pragma once

#include <Zelmar01/data/Decimal.h>
#include <Zelmar01/data/FieldDefs.h>

#include <QByteArray>
#include <QDateTime>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <type_traits>
#include <variant>
#include <vector>

namespace Zelmar01 {

/// Numbers of rows (see TRows) in some order.
using TRowNumbers = std::vector<std::uint32_t>;

/// The values of one field for all rows, side by side in memory.
class TColumn
{
public:
    explicit TColumn(TFieldType type);

    /// A column of these values, none of them null: a QStringList, or a vector of the C++ type of another
    /// field type.
    template<class Values>
    static TColumn Of(Values values)
    {
        TColumn column;
        column.m_nulls.assign(static_cast<std::size_t>(values.size()), false);
        column.m_values = std::move(values);
        return column;
    }

    TFieldType Type() const { return static_cast<TFieldType>(m_values.index()); }
    std::size_t Count() const { return m_nulls.size(); }
    bool IsNull(std::size_t row) const { return m_nulls[row]; }

    /// A value of the column's own type (see TFieldType), or an invalid one for null.
    QVariant Value(std::size_t row) const;
    void Append(const QVariant &value);
    /// For a reader that has values of the column's own type at hand.
    template<class T>
    void Add(T value)
    {
        m_nulls.push_back(false);
        std::get<TValuesOf<T>>(m_values).push_back(std::move(value));
    }
    void Set(std::size_t row, const QVariant &value);

    /// A value as text, in the form that TField describes; empty for null.
    QString AsText(std::size_t row) const;
    /// The text of a row without a copy; for columns of texts only.
    const QString &Text(std::size_t row) const
    {
        return std::get<QStringList>(m_values)[static_cast<qsizetype>(row)];
    }
    /// The number of a row; for columns of integers only.
    qint64 Integer(std::size_t row) const { return std::get<std::vector<qint64>>(m_values)[row]; }

    /// The values of these rows, in this order.
    TColumn Taken(const TRowNumbers &rows) const;

    /// Calls `work` with all values, those of nulls among them: a QStringList, or a vector of the C++ type of
    /// another field type.
    template<class Work>
    decltype(auto) Visit(Work work) const
    {
        return std::visit(work, m_values);
    }

private:
    // Texts are shared between copies of a column until one of them is changed.
    template<class T>
    using TValuesOf = std::conditional_t<std::is_same_v<T, QString>, QStringList, std::vector<T>>;
    using TValues = std::variant<QStringList, std::vector<qint64>, std::vector<double>, std::vector<TDecimal>,
                                 std::vector<bool>, std::vector<QDate>, std::vector<QTime>,
                                 std::vector<QDateTime>, std::vector<QByteArray>>;

    TColumn() = default;

    std::vector<bool> m_nulls;
    TValues m_values; // the alternative at the place of the field type
};

/// The rows of a dataset. A row keeps its number for as long as the dataset is open, whatever is added,
/// deleted or sorted; numbers are not used again.
class TRows
{
public:
    explicit TRows(const TFieldDefs &defs);

    std::size_t Count() const { return m_count; }
    const TColumn &Column(std::size_t field) const { return m_columns[field]; }

    /// Adds a row and returns its number. `values` has one value a field.
    std::size_t Append(const std::vector<QVariant> &values);
    void Set(std::size_t row, const std::vector<QVariant> &values);
    std::vector<QVariant> Record(std::size_t row) const;

    /// For a reader that fills column by column: appends to one column; RowDone() ends the row.
    TColumn &MutableColumn(std::size_t field) { return m_columns[field]; }
    void RowDone() { ++m_count; }

private:
    std::vector<TColumn> m_columns;
    std::size_t m_count = 0;
};

} // namespace Zelmar01
