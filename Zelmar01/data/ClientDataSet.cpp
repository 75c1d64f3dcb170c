#include <Zelmar01/data/ClientDataSet.h>

#include "RowOrder.h"

#include <QStringList>

#include <algorithm>

namespace Zelmar01 {

TClientDataSet::TClientDataSet(QObject *owner) : TDataSet(owner), m_rowOrder(std::make_unique<TRowOrder>())
{
    connect(this, &TDataSet::AfterClose, this, [this] { m_rowOrder->Clear(); });
}

TClientDataSet::~TClientDataSet() = default;

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
    m_sortFields.clear();
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
    sortBy(name.isEmpty() ? TIndexDef() : m_indexDefs.Find(name), name, {});
}

void TClientDataSet::setIndexFieldNames(const QString &fields)
{
    sortBy({{}, fields, {}, {}}, {}, fields);
}

std::vector<TSortField> TClientDataSet::sortFieldsOf(const TIndexDef &def) const
{
    const auto sensitivity =
        def.Options.testFlag(ixCaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
    std::vector<TSortField> fields;
    for (const auto &name : def.Fields.split(u';', Qt::SkipEmptyParts)) {
        const auto &field = FieldByName(name.trimmed());
        fields.push_back(
            {static_cast<std::size_t>(field.Index()), def.IsDescending(field.FieldName()), sensitivity});
    }
    return fields;
}

void TClientDataSet::sortBy(const TIndexDef &def, const QString &indexName, const QString &indexFieldNames)
{
    leaveRecord();
    auto fields = sortFieldsOf(def);
    const bool isSorted = !fields.empty() || !m_sortFields.empty();
    const auto current = currentRow();
    if (isSorted)
        m_rowOrder->Sort(rows(), order(), fields);
    // Receivers of what follows may ask for the index.
    m_indexName = indexName;
    m_indexFieldNames = indexFieldNames;
    if (!isSorted)
        return;
    m_sortFields = std::move(fields);
    orderChanged(current);
}

void TClientDataSet::writeUpdate(const TRecord &, TRecord &)
{
    m_rowOrder->RowChanges(*currentRow());
}

int TClientDataSet::placeOf(std::size_t row) const
{
    const auto &places = order();
    const auto place =
        std::lower_bound(places.begin(), places.end(), row, [this](std::size_t a, std::size_t b) {
            return IsBefore(rows(), m_sortFields, a, b);
        });
    return static_cast<int>(place - places.begin());
}

} // namespace Zelmar01
