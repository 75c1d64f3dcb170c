#include <Zelmar01/data/DataSet.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataErrors.h>

#include <QStringList>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Zelmar01 {

namespace {

// What one field must be equal to for Locate to stop.
struct TCondition
{
    const TColumn *Column;
    TFieldType Type;
    QVariant Value;
    QString Text;

    bool Holds(std::size_t row, TLocateOptions options) const
    {
        if (Column->IsNull(row) || !Value.isValid())
            return Column->IsNull(row) && !Value.isValid();
        if (Type == ftInteger)
            return Column->Integer(row) == Value.toLongLong();
        if (Type != ftString)
            return Column->Value(row) == Value;
        const auto sensitivity =
            options.testFlag(loCaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
        const QString &text = Column->Text(row);
        return options.testFlag(loPartialKey) ? text.startsWith(Text, sensitivity)
                                              : text.compare(Text, sensitivity) == 0;
    }
};

} // namespace

TField &TFields::operator[](int index) const
{
    if (index < 0 || index >= Count())
        throw EDatabaseError(
            Filled(Translate("Zelmar01", "Aucun champ au rang %1"), {std::to_string(index)}));
    return *m_fields[static_cast<std::size_t>(index)];
}

TDataSet::TDataSet(QObject *owner) : TComponent(owner) {}

TDataSet::~TDataSet() = default;

void TDataSet::Open()
{
    if (Active())
        return;
    std::unique_ptr<TRows> rows;
    const auto defs = readRows(rows);
    for (const auto &def : defs)
        m_fields.m_fields.push_back(std::make_unique<TField>(*this, m_fields.Count(), def));
    m_rows = std::move(rows);
    m_order.resize(m_rows->Count());
    std::iota(m_order.begin(), m_order.end(), 0U);
    m_place = 0;
    m_bof = true;
    m_eof = m_order.empty();
    m_state = dsBrowse;
    emit RowsReset();
    emit StateChanged();
    emit AfterOpen(this);
    emit AfterScroll(this);
}

void TDataSet::Close()
{
    if (!Active())
        return;
    if (m_state != dsBrowse)
        Cancel();
    m_state = dsInactive;
    m_order.clear();
    m_rows.reset();
    m_bof = m_eof = true;
    m_place = 0;
    emit RowsReset();
    // Receivers have let go of the fields by now.
    m_fields.m_fields.clear();
    emit StateChanged();
    emit AfterClose(this);
}

void TDataSet::setActive(bool active)
{
    if (IsLoading())
        m_openWhenLoaded = active;
    else
        active ? Open() : Close();
}

void TDataSet::Loaded()
{
    TComponent::Loaded();
    if (std::exchange(m_openWhenLoaded, false))
        Open();
}

void TDataSet::requireOpen() const
{
    if (!Active())
        throw EDatabaseError(tr("L'ensemble de données « %1 » est fermé").arg(objectName()).toStdString());
}

const TFields &TDataSet::Fields() const
{
    requireOpen();
    return m_fields;
}

TField *TDataSet::FindField(const QString &name) const
{
    for (const auto &field : m_fields.m_fields)
        if (field->FieldName().compare(name, Qt::CaseInsensitive) == 0)
            return field.get();
    return nullptr;
}

TField &TDataSet::FieldByName(const QString &name) const
{
    requireOpen();
    if (auto *field = FindField(name))
        return *field;
    throw EDatabaseError(tr("Champ « %1 » introuvable").arg(name).toStdString());
}

void TDataSet::First()
{
    leaveRecord();
    m_bof = true;
    m_eof = m_order.empty();
    moveTo(0);
}

void TDataSet::Last()
{
    leaveRecord();
    m_eof = true;
    m_bof = m_order.empty();
    moveTo(static_cast<int>(m_order.size()) - 1);
}

void TDataSet::Next()
{
    MoveBy(1);
}

void TDataSet::Prior()
{
    MoveBy(-1);
}

int TDataSet::MoveBy(int rows)
{
    leaveRecord();
    if (m_order.empty() || rows == 0)
        return 0;
    const int last = static_cast<int>(m_order.size()) - 1;
    const int target = std::clamp(m_place + rows, 0, last);
    const int moved = target - m_place;
    m_bof = moved > rows;
    m_eof = moved < rows;
    if (moved != 0)
        moveTo(target);
    return moved;
}

bool TDataSet::Bof() const
{
    requireOpen();
    return m_bof;
}

bool TDataSet::Eof() const
{
    requireOpen();
    return m_eof;
}

int TDataSet::RecordCount() const
{
    requireOpen();
    return static_cast<int>(m_order.size());
}

int TDataSet::RecNo() const
{
    requireOpen();
    return m_order.empty() || isInserting() ? 0 : m_place + 1;
}

void TDataSet::setRecNo(int place)
{
    leaveRecord();
    if (place < 1 || static_cast<std::size_t>(place) > m_order.size())
        throw EDatabaseError(tr("Aucune ligne au rang %1").arg(place).toStdString());
    m_bof = m_eof = false;
    moveTo(place - 1);
}

TDataSet::TBookmark TDataSet::GetBookmark() const
{
    requireOpen();
    return currentRow();
}

TDataSet::TBookmark TDataSet::BookmarkAt(int place) const
{
    requireOpen();
    if (place < 0 || place >= ShownCount() || (isInserting() && place == m_place))
        return std::nullopt;
    return m_order[static_cast<std::size_t>(isInserting() && place > m_place ? place - 1 : place)];
}

bool TDataSet::GotoBookmark(const TBookmark &bookmark)
{
    leaveRecord();
    const auto found = bookmark ? std::find(m_order.begin(), m_order.end(), *bookmark) : m_order.end();
    if (found == m_order.end())
        return false;
    m_bof = m_eof = false;
    moveTo(static_cast<int>(found - m_order.begin()));
    return true;
}

bool TDataSet::Locate(const QString &fields, const QVariant &values, TLocateOptions options)
{
    leaveRecord();
    const auto names = fields.split(u';');
    const auto wanted = names.size() > 1 ? values.toList() : QVariantList{values};
    if (wanted.size() != names.size())
        throw EDatabaseError(tr("Recherche : autant de valeurs que de champs sont attendues").toStdString());
    std::vector<TCondition> conditions;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const auto &field = FieldByName(names[i].trimmed());
        try {
            const auto value = ConvertValue(wanted[i], field.DataType(), field.FieldName());
            conditions.push_back({&m_rows->Column(static_cast<std::size_t>(field.Index())), field.DataType(),
                                  value, TextOfValue(value)});
        } catch (const EConvertError &) {
            return false; // no row can hold it
        }
    }
    const auto found = std::find_if(m_order.begin(), m_order.end(), [&](std::size_t row) {
        return std::all_of(conditions.begin(), conditions.end(),
                           [&](const TCondition &condition) { return condition.Holds(row, options); });
    });
    if (found == m_order.end())
        return false;
    m_bof = m_eof = false;
    moveTo(static_cast<int>(found - m_order.begin()));
    return true;
}

void TDataSet::Insert()
{
    leaveRecord();
    beginInsert(m_order.empty() ? 0 : m_place);
}

void TDataSet::Append()
{
    leaveRecord();
    beginInsert(static_cast<int>(m_order.size()));
}

void TDataSet::beginInsert(int place)
{
    if (!CanModify())
        throw EDatabaseError(
            tr("L'ensemble de données « %1 » ne peut pas être modifié").arg(objectName()).toStdString());
    emit RowAboutToBeInserted(place);
    m_place = place;
    m_record.assign(static_cast<std::size_t>(m_fields.Count()), {});
    m_modified = false;
    m_state = dsInsert;
    emit RowInserted(place);
    emit StateChanged();
    emit CursorMoved();
    emit OnNewRecord(this);
    m_modified = false; // what the host fills in by itself is nothing that must be kept
}

void TDataSet::Edit()
{
    requireOpen();
    if (m_state != dsBrowse)
        return;
    if (m_order.empty())
        return Insert();
    if (!CanModify())
        throw EDatabaseError(
            tr("L'ensemble de données « %1 » ne peut pas être modifié").arg(objectName()).toStdString());
    m_record = m_rows->Record(*currentRow());
    m_modified = false;
    m_state = dsEdit;
    emit StateChanged();
}

void TDataSet::Post()
{
    requireOpen();
    if (m_state == dsBrowse)
        throw EDatabaseError(
            tr("L'ensemble de données n'est ni en modification ni en insertion").toStdString());
    updateRecord();
    if (m_state == dsBrowse)
        return; // a receiver has posted it
    QString refusal;
    emit BeforePost(this, refusal);
    if (!refusal.isEmpty())
        throw EDatabaseError(refusal.toStdString());
    checkRequired();
    isInserting() ? storeInserted() : storeUpdated();
    emit AfterPost(this);
    emit AfterScroll(this);
}

void TDataSet::updateRecord()
{
    QString refusal;
    emit UpdateRecord(this, refusal);
    if (!refusal.isEmpty())
        throw EDatabaseError(refusal.toStdString());
}

void TDataSet::checkRequired() const
{
    for (const auto &field : m_fields.m_fields)
        if (field->Required() && field->IsNull())
            throw EDatabaseError(
                tr("Le champ « %1 » doit être renseigné").arg(field->DisplayLabel()).toStdString());
}

void TDataSet::storeInserted()
{
    auto record = m_record;
    writeInsert(record);
    placeRow(m_rows->Append(record));
}

void TDataSet::storeUpdated()
{
    const auto row = *currentRow();
    auto record = m_record;
    writeUpdate(m_rows->Record(row), record);
    m_rows->Set(row, record);
    if (keepsOrder()) {
        m_order.erase(m_order.begin() + m_place);
        placeRow(row);
    } else {
        endRecord();
        emit RowChanged(m_place);
        emit StateChanged();
        emit CursorMoved();
    }
}

void TDataSet::endRecord()
{
    m_record.clear();
    m_modified = false;
    m_bof = m_eof = m_order.empty();
    m_state = dsBrowse;
}

// Brings the row of a posted record to its place, and tells.
void TDataSet::placeRow(std::size_t row)
{
    const int shown = m_place;
    if (keepsOrder())
        m_place = placeOf(row);
    m_order.insert(m_order.begin() + m_place, static_cast<std::uint32_t>(row));
    endRecord();
    if (shown == m_place)
        emit RowChanged(m_place);
    else
        emit RowsReset();
    emit StateChanged();
    emit CursorMoved();
}

void TDataSet::Cancel()
{
    requireOpen();
    if (m_state == dsBrowse)
        return;
    if (isInserting()) {
        const int place = m_place;
        emit RowAboutToBeRemoved(place);
        m_place = std::min(place, std::max(static_cast<int>(m_order.size()) - 1, 0));
        endRecord();
        emit RowRemoved(place);
    } else {
        endRecord();
        emit RowChanged(m_place);
    }
    emit StateChanged();
    emit CursorMoved();
    emit AfterCancel(this);
}

void TDataSet::Delete()
{
    requireOpen();
    if (m_state != dsBrowse) {
        const bool wasNew = isInserting();
        Cancel();
        if (wasNew)
            return;
    }
    if (m_order.empty() || !CanModify())
        throw EDatabaseError(tr("Aucune ligne ne peut être supprimée").toStdString());
    QString refusal;
    emit BeforeDelete(this, refusal);
    if (!refusal.isEmpty())
        throw EDatabaseError(refusal.toStdString());
    writeDelete(m_rows->Record(*currentRow()));
    const int place = m_place;
    emit RowAboutToBeRemoved(place);
    m_order.erase(m_order.begin() + place);
    m_eof = m_order.empty();
    m_bof = m_order.empty();
    if (static_cast<std::size_t>(m_place) == m_order.size() && m_place > 0) {
        --m_place;
        m_eof = true;
    }
    emit RowRemoved(place);
    emit CursorMoved();
    emit AfterDelete(this);
    emit AfterScroll(this);
}

QVariant TDataSet::ValueAt(int place, int field) const
{
    requireOpen();
    if (m_state != dsBrowse && place == m_place)
        return m_record[static_cast<std::size_t>(field)];
    if (isInserting() && place > m_place)
        --place;
    return m_rows->Column(static_cast<std::size_t>(field)).Value(m_order[static_cast<std::size_t>(place)]);
}

int TDataSet::ShownCount() const
{
    return static_cast<int>(m_order.size()) + (isInserting() ? 1 : 0);
}

int TDataSet::ShownPlace() const
{
    return ShownCount() == 0 ? -1 : m_place;
}

TColumn TDataSet::ColumnOf(const TField &field) const
{
    requireOpen();
    return m_rows->Column(static_cast<std::size_t>(field.Index())).Taken(m_order);
}

void TDataSet::orderChanged(std::optional<std::size_t> current)
{
    const auto found = current ? std::find(m_order.begin(), m_order.end(), *current) : m_order.end();
    m_place = found == m_order.end() ? 0 : static_cast<int>(found - m_order.begin());
    m_bof = m_eof = m_order.empty();
    emit RowsReset();
    emit CursorMoved();
}

std::optional<std::size_t> TDataSet::currentRow() const
{
    if (m_order.empty() || isInserting())
        return std::nullopt;
    return m_order[static_cast<std::size_t>(m_place)];
}

QVariant TDataSet::fieldValue(int field) const
{
    requireOpen();
    if (m_state != dsBrowse)
        return m_record[static_cast<std::size_t>(field)];
    const auto row = currentRow();
    return row ? m_rows->Column(static_cast<std::size_t>(field)).Value(*row) : QVariant();
}

QString TDataSet::fieldText(int field) const
{
    if (m_state != dsBrowse || m_order.empty())
        return TextOfValue(fieldValue(field));
    const auto row = m_order[static_cast<std::size_t>(m_place)];
    return m_rows->Column(static_cast<std::size_t>(field)).AsText(row);
}

void TDataSet::setFieldValue(TField &field, const QVariant &value)
{
    requireOpen();
    if (m_state == dsBrowse)
        throw EDatabaseError(
            tr("L'ensemble de données n'est ni en modification ni en insertion").toStdString());
    m_record[static_cast<std::size_t>(field.Index())] = value;
    m_modified = true;
    emit FieldChanged(&field);
}

void TDataSet::leaveRecord()
{
    requireOpen();
    if (m_state == dsBrowse)
        return;
    updateRecord();
    if (m_state != dsBrowse)
        m_modified ? Post() : Cancel();
}

void TDataSet::moveTo(int place)
{
    m_place = std::max(place, 0);
    emit CursorMoved();
    emit AfterScroll(this);
}

} // namespace Zelmar01
