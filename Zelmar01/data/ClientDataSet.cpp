#include <Zelmar01/data/ClientDataSet.h>

#include <QStringList>

#include <algorithm>

namespace Zelmar01 {

TClientDataSet::TClientDataSet(QObject *owner) : TDataSet(owner) {}

void TClientDataSet::CreateDataSet(const TFieldDefs &defs)
{
    Close();
    m_defs = defs;
    m_loaded.reset();
    Open();
}

void TClientDataSet::LoadFrom(const TDataSet &source)
{
    const auto &fields = source.Fields();
    TFieldDefs defs;
    for (int field = 0; field < fields.Count(); ++field)
        defs.push_back({fields[field].FieldName(), fields[field].DataType(), fields[field].Size(),
                        fields[field].Required(), fields[field].ReadOnly()});
    auto loaded = std::make_unique<TRows>(defs);
    for (int place = 0; place < source.ShownCount(); ++place) {
        for (int field = 0; field < fields.Count(); ++field)
            loaded->MutableColumn(static_cast<std::size_t>(field)).Append(source.ValueAt(place, field));
        loaded->RowDone();
    }
    Close();
    m_defs = std::move(defs);
    m_loaded = std::move(loaded);
    Open();
}

TFieldDefs TClientDataSet::readRows(std::unique_ptr<TRows> &rows)
{
    rows = m_loaded ? std::move(m_loaded) : std::make_unique<TRows>(m_defs);
    m_indexName.clear();
    m_indexFieldNames.clear();
    m_keys.clear();
    return m_defs;
}

void TClientDataSet::AddIndex(const QString &name, const QString &fields, TIndexOptions options,
                              const QString &descFields)
{
    m_indexDefs.Add({name, fields, options, descFields});
}

void TClientDataSet::DeleteIndex(const QString &name)
{
    m_indexDefs.Delete(name);
    if (m_indexName.compare(name, Qt::CaseInsensitive) == 0)
        setIndexName({});
}

void TClientDataSet::setIndexName(const QString &name)
{
    sortBy(name.isEmpty() ? TIndexDef() : m_indexDefs.Find(name));
    m_indexName = name;
    m_indexFieldNames.clear();
}

void TClientDataSet::setIndexFieldNames(const QString &fields)
{
    sortBy({{}, fields, {}, {}});
    m_indexFieldNames = fields;
    m_indexName.clear();
}

std::vector<TClientDataSet::TKey> TClientDataSet::keysOf(const TIndexDef &def) const
{
    const auto sensitivity =
        def.Options.testFlag(ixCaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    std::vector<TKey> keys;
    for (const auto &name : def.Fields.split(u';', Qt::SkipEmptyParts)) {
        const auto &field = FieldByName(name.trimmed());
        keys.push_back(
            {static_cast<std::size_t>(field.Index()), def.IsDescending(field.FieldName()), sensitivity});
    }
    return keys;
}

void TClientDataSet::sortBy(const TIndexDef &def)
{
    leaveRecord();
    m_keys = keysOf(def);
    const auto current = currentRow();
    std::sort(order().begin(), order().end(),
              [this](std::size_t a, std::size_t b) { return isBefore(a, b); });
    orderChanged(current);
}

int TClientDataSet::placeOf(std::size_t row) const
{
    const auto &places = order();
    const auto place = std::lower_bound(places.begin(), places.end(), row,
                                        [this](std::size_t a, std::size_t b) { return isBefore(a, b); });
    return static_cast<int>(place - places.begin());
}

// Row numbers grow in the order in which rows came: they settle what the keys leave open.
bool TClientDataSet::isBefore(std::size_t a, std::size_t b) const
{
    for (const auto &key : m_keys)
        if (const int order = rows().Column(key.Field).Compare(a, b, key.Sensitivity); order != 0)
            return key.Descending ? order > 0 : order < 0;
    return a < b;
}

} // namespace Zelmar01
