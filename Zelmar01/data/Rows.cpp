#include <Zelmar01/data/Rows.h>

#include <Zelmar01/data/Field.h>

#include <algorithm>
#include <type_traits>

namespace Zelmar01 {

namespace {

template<class Values>
using TValueOf = typename std::decay_t<Values>::value_type;

template<class Values>
decltype(auto) at(Values &values, std::size_t row)
{
    return values[static_cast<typename std::decay_t<Values>::size_type>(row)];
}

} // namespace

TColumn::TColumn(TFieldType type)
{
    switch (type) {
    case ftString:
        m_values = QStringList();
        break;
    case ftInteger:
        m_values = std::vector<qint64>();
        break;
    case ftFloat:
        m_values = std::vector<double>();
        break;
    case ftBCD:
        m_values = std::vector<TDecimal>();
        break;
    case ftBoolean:
        m_values = std::vector<bool>();
        break;
    case ftDate:
        m_values = std::vector<QDate>();
        break;
    case ftTime:
        m_values = std::vector<QTime>();
        break;
    case ftDateTime:
        m_values = std::vector<QDateTime>();
        break;
    case ftBytes:
        m_values = std::vector<QByteArray>();
        break;
    }
}

QVariant TColumn::Value(std::size_t row) const
{
    if (m_nulls[row])
        return {};
    return std::visit(
        [row](const auto &values) {
            return QVariant::fromValue<TValueOf<decltype(values)>>(at(values, row));
        },
        m_values);
}

void TColumn::Append(const QVariant &value)
{
    m_nulls.push_back(!value.isValid());
    std::visit([&](auto &values) { values.push_back(value.value<TValueOf<decltype(values)>>()); }, m_values);
}

QString TColumn::AsText(std::size_t row) const
{
    if (Type() == ftString)
        return Text(row); // a null is kept as an empty one
    if (const auto *numbers = std::get_if<std::vector<qint64>>(&m_values); numbers && !m_nulls[row])
        return QString::number((*numbers)[row]);
    return TextOfValue(Value(row));
}

void TColumn::Set(std::size_t row, const QVariant &value)
{
    m_nulls[row] = !value.isValid();
    std::visit([&](auto &values) { at(values, row) = value.value<TValueOf<decltype(values)>>(); }, m_values);
}

TColumn TColumn::Taken(const TRowNumbers &rows) const
{
    std::size_t place = 0;
    const auto isNext = [&](std::size_t row) { return row == place++; };
    if (rows.size() == Count() && std::all_of(rows.begin(), rows.end(), isNext))
        return *this;
    TColumn taken(Type());
    taken.m_nulls.reserve(rows.size());
    for (const auto row : rows)
        taken.m_nulls.push_back(m_nulls[row]);
    std::visit(
        [&](const auto &values) {
            auto &chosen = std::get<std::decay_t<decltype(values)>>(taken.m_values);
            chosen.reserve(static_cast<typename std::decay_t<decltype(values)>::size_type>(rows.size()));
            for (const auto row : rows)
                chosen.push_back(at(values, row));
        },
        m_values);
    return taken;
}

TRows::TRows(const TFieldDefs &defs)
{
    for (const auto &def : defs)
        m_columns.emplace_back(def.DataType);
}

std::size_t TRows::Append(const std::vector<QVariant> &values)
{
    for (std::size_t field = 0; field < m_columns.size(); ++field)
        m_columns[field].Append(values[field]);
    return m_count++;
}

void TRows::Set(std::size_t row, const std::vector<QVariant> &values)
{
    for (std::size_t field = 0; field < m_columns.size(); ++field)
        m_columns[field].Set(row, values[field]);
}

std::vector<QVariant> TRows::Record(std::size_t row) const
{
    std::vector<QVariant> values;
    for (const auto &column : m_columns)
        values.push_back(column.Value(row));
    return values;
}

} // namespace Zelmar01
