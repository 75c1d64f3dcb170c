#include <Zelmar01/keylists/GridColumns.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataSet.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr QChar separator = u';';
const QString readOnlyWord = QStringLiteral("ReadOnly"), hiddenWord = QStringLiteral("Hidden");

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

TGridColumn::TGridColumn(TGridColumns &columns, QString fieldName)
    : m_columns(columns), m_fieldName(std::move(fieldName))
{
}

int TGridColumn::Index() const
{
    return m_columns.IndexOf(this);
}

TField *TGridColumn::Field() const
{
    const auto *dataSet = m_columns.DataSet();
    return dataSet && dataSet->Active() ? dataSet->FindField(m_fieldName) : nullptr;
}

bool TGridColumn::IsWritable() const
{
    const auto *field = Field();
    return !m_readOnly && field && !field->ReadOnly();
}

bool TGridColumn::IsShown() const
{
    const auto *field = Field();
    return m_visible && (!field || field->Visible());
}

QString TGridColumn::Title() const
{
    if (!m_title.isEmpty())
        return m_title;
    const auto *field = Field();
    return field ? field->DisplayLabel() : m_fieldName;
}

void TGridColumn::setFieldName(const QString &name)
{
    m_fieldName = name;
    emit m_columns.OnColumnChange(this);
}

void TGridColumn::setTitle(const QString &title)
{
    m_title = title;
    emit m_columns.OnColumnChange(this);
}

void TGridColumn::setWidth(int width)
{
    if (m_width == width)
        return;
    m_width = width;
    emit m_columns.OnColumnChange(this);
}

void TGridColumn::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    emit m_columns.OnColumnChange(this);
}

void TGridColumn::setVisible(bool visible)
{
    m_visible = visible;
    emit m_columns.OnColumnChange(this);
}

QString TGridColumn::ToLine() const
{
    QStringList words;
    if (m_readOnly)
        words << readOnlyWord;
    if (!m_visible)
        words << hiddenWord;
    QStringList parts{m_fieldName, m_width > 0 ? QString::number(m_width) : QString(), words.join(u' '),
                      m_title};
    while (parts.size() > 1 && parts.last().isEmpty())
        parts.removeLast();
    return parts.join(separator);
}

void TGridColumn::FromLine(const QString &line)
{
    m_fieldName = line.section(separator, 0, 0).trimmed();
    m_title = line.section(separator, 3).trimmed();
    QStringList unknown;
    const auto width = line.section(separator, 1, 1).trimmed();
    bool isNumber = true;
    m_width = width.isEmpty() ? 0 : width.toInt(&isNumber);
    if (!isNumber || m_width < 0) {
        m_width = 0;
        unknown << width;
    }
    m_readOnly = false;
    m_visible = true;
    for (const auto &word : line.section(separator, 2, 2).split(u' ', Qt::SkipEmptyParts)) {
        if (isSame(word, readOnlyWord))
            m_readOnly = true;
        else if (isSame(word, hiddenWord))
            m_visible = false;
        else
            unknown << word;
    }
    if (!unknown.isEmpty())
        throw EConvertError(Filled(Translate("Zelmar01", "« %1 » n'a pas de sens dans la colonne « %2 »"),
                                   {unknown.first().toStdString(), line.toStdString()}));
}

TGridColumn &TGridColumns::operator[](int index) const
{
    if (index < 0 || index >= Count())
        throw EInvalidOperation(
            Filled(Translate("Zelmar01", "Aucune colonne au rang %1"), {std::to_string(index)}));
    return *m_columns[static_cast<std::size_t>(index)];
}

int TGridColumns::IndexOf(const TGridColumn *column) const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
                                    [column](const auto &other) { return other.get() == column; });
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
}

TGridColumn &TGridColumns::ByFieldName(const QString &name) const
{
    for (const auto &column : m_columns)
        if (isSame(column->FieldName(), name))
            return *column;
    throw EInvalidOperation(
        Filled(Translate("Zelmar01", "Aucune colonne pour le champ « %1 »"), {name.toStdString()}));
}

TGridColumn &TGridColumns::Add(const QString &fieldName)
{
    emit OnAboutToReset();
    if (std::exchange(m_fromFields, false))
        m_columns.clear();
    m_columns.push_back(std::make_unique<TGridColumn>(*this, fieldName));
    auto &added = *m_columns.back();
    emit OnReset();
    return added;
}

void TGridColumns::Clear()
{
    emit OnAboutToReset();
    m_columns.clear();
    m_fromFields = true;
    for (const auto &name : fieldNames())
        m_columns.push_back(std::make_unique<TGridColumn>(*this, name));
    emit OnReset();
}

QStringList TGridColumns::ToLines() const
{
    QStringList lines;
    if (!m_fromFields)
        for (const auto &column : m_columns)
            lines << column->ToLine();
    return lines;
}

void TGridColumns::FromLines(const QStringList &lines)
{
    std::exception_ptr unread;
    emit OnAboutToReset();
    m_columns.clear();
    m_fromFields = false;
    for (const auto &line : lines) {
        if (line.trimmed().isEmpty())
            continue;
        m_columns.push_back(std::make_unique<TGridColumn>(*this));
        try {
            m_columns.back()->FromLine(line);
        } catch (const EConvertError &) {
            unread = unread ? unread : std::current_exception();
        }
    }
    emit OnReset();
    if (m_columns.empty())
        Clear();
    if (unread)
        std::rethrow_exception(unread);
}

QStringList TGridColumns::fieldNames() const
{
    QStringList names;
    for (int i = 0; m_dataSet && m_dataSet->Active() && i < m_dataSet->Fields().Count(); ++i)
        names << m_dataSet->Fields()[i].FieldName();
    return names;
}

void TGridColumns::Follow(const TDataSet *dataSet)
{
    const bool isOther = m_dataSet != dataSet;
    m_dataSet = dataSet;
    QStringList shown;
    for (const auto &column : m_columns)
        shown << column->FieldName();
    if (m_fromFields && (isOther || (dataSet && dataSet->Active())) && shown != fieldNames())
        Clear();
}

} // namespace Zelmar01
