#include <Zelmar01/descrtree/DescrTable.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/descrtree/DescrQueries.h>

#include <QSqlQuery>

#include <limits>
#include <unordered_map>

namespace Zelmar01 {

namespace {

constexpr const char *parentColumn = "DESCR_ART_ID_PERE", *codeColumn = "DESCR_ART_CODE",
                     *labelColumn = "DESCR_ART_LIBELLE", *longColumn = "DESCR_ART_LIB_LONG",
                     *shortColumn = "DESCR_ART_LIB_COURT";

int identifier(qint64 value, const QString &code)
{
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        throw EConvertError(Filled(Translate("Zelmar01", "Identifiant hors limites : %1, code %2"),
                                   {std::to_string(value), code.toStdString()}));
    return static_cast<int>(value);
}

int identifier(const QVariant &value, const QString &code)
{
    bool isNumber = true;
    const auto number = value.isNull() ? 0 : value.toLongLong(&isNumber);
    if (!isNumber)
        throw EConvertError(Filled(Translate("Zelmar01", "Identifiant invalide : %1, code %2"),
                                   {value.toString().toStdString(), code.toStdString()}));
    return identifier(number, code);
}

} // namespace

int TDescrTable::Count() const
{
    int count = -1;
    m_query.RequireConnection().ReadRows(CountQuery(),
                                         [&](const QSqlQuery &row) { count = row.value(0).toInt(); });
    return count;
}

// The columns are those of the query text, in its order.
TDescrRows TDescrTable::Levels() const
{
    TDescrRows rows;
    m_query.RequireConnection().ReadRows(LevelsQuery(), [&](const QSqlQuery &row) {
        const auto text = [&](int column) { return row.value(column).toString(); };
        const auto code = text(2);
        rows.Append(identifier(row.value(0), code), identifier(row.value(1), code), text(4), text(3), text(5),
                    code);
    });
    return rows;
}

QString TDescrTable::NextFreeCode(int id, const TParentCode &parent) const
{
    QStringList codes;
    m_query.RequireConnection().ReadRows(ChildCodesQuery(id),
                                         [&](const QSqlQuery &row) { codes << row.value(0).toString(); });
    return Zelmar01::NextFreeCode(parent, codes);
}

bool TDescrTable::IsFree(const QString &code) const
{
    bool isFree = true;
    m_query.RequireConnection().ReadRows(CodeQuery(code), [&](const QSqlQuery &) { isFree = false; });
    return isFree;
}

void TDescrTable::Change(const std::function<void()> &work)
{
    m_hasChanged = m_mayBeMade = false;
    m_query.Open();
    m_query.MoveBy(0); // what the host is editing is posted apart from this
    const int place = m_query.RecNo();
    try {
        TTransaction transaction(m_query.RequireConnection());
        work();
        m_mayBeMade = true;
        transaction.Commit();
    } catch (...) {
        undo(place);
        throw;
    }
}

// The error that led here is the one to be told, not that the rows cannot be read again.
void TDescrTable::undo(int place)
try {
    if (!m_query.Active())
        return;
    m_query.Cancel();
    if (!m_hasChanged)
        return;
    m_query.Close();
    m_query.Open();
    if (place > 0 && place <= m_query.RecordCount())
        m_query.setRecNo(place);
} catch (const EDatabaseError &) {
    m_query.Close();
}

void TDescrTable::Insert(const TDescr &level)
{
    m_query.Insert();
    m_query.FieldByName(DescrIdColumn).setAsInteger(level.ID);
    m_query.FieldByName(parentColumn).setAsInteger(level.IDPere);
    m_query.FieldByName(codeColumn).setAsString(level.Code);
    m_query.FieldByName(labelColumn).setAsString(level.Libelle);
    m_query.FieldByName(longColumn).setAsString(level.LibLong);
    m_query.FieldByName(shortColumn).setAsString(level.LibCourt);
    m_query.Post();
    m_hasChanged = true;
}

void TDescrTable::Update(const TDescr &level)
{
    m_query.Edit();
    m_query.FieldByName(codeColumn).setAsString(level.Code);
    m_query.FieldByName(labelColumn).setAsString(level.Libelle);
    m_query.FieldByName(shortColumn).setAsString(level.LibCourt);
    m_query.FieldByName(longColumn).setAsString(level.LibLong);
    m_query.Post();
    m_hasChanged = true;
}

void TDescrTable::Delete()
{
    m_query.Delete();
    m_hasChanged = true;
}

TDescrTable::TLongLabels TDescrTable::UpdateLongLabels(const TDescrTree &tree, TDescrTree::TNode node,
                                                       const QString &libLong)
{
    TLongLabels written;
    if (tree.ChildCount(node) == 0)
        return written;
    // Of several rows with one identifier the first, as Locate would have it.
    std::unordered_map<qint64, int> places;
    const int idField = m_query.FieldByName(DescrIdColumn).Index();
    const int count = m_query.RecordCount();
    places.reserve(static_cast<std::size_t>(count));
    for (int place = 0; place < count; ++place)
        places.try_emplace(m_query.ValueAt(place, idField).toLongLong(), place);

    auto &field = m_query.FieldByName(longColumn);
    tree.WalkLongLabels(node, libLong, [&](TDescrTree::TNode child, const QString &label) {
        const auto place = places.find(tree.ID(child));
        if (place == places.end())
            return false;
        m_query.setRecNo(place->second + 1);
        m_query.Edit();
        field.setAsString(label);
        m_query.Post();
        m_hasChanged = true;
        written.emplace_back(child, label);
        return true;
    });
    return written;
}

bool TDescrTable::GoTo(int id)
{
    m_query.Open();
    return m_query.Locate(QString::fromLatin1(DescrIdColumn), id);
}

TDescr TDescrTable::Current() const
{
    const auto text = [this](const char *column) { return m_query.FieldByName(column).AsString(); };
    const auto code = text(codeColumn);
    return {identifier(m_query.FieldByName(DescrIdColumn).AsInteger(), code),
            identifier(m_query.FieldByName(parentColumn).AsInteger(), code),
            text(longColumn),
            text(labelColumn),
            text(shortColumn),
            code};
}

// The row is the current one unless somebody has moved the query in the meantime; by its identifier alone
// another row with the same one might be found.
std::optional<TDescr> TDescrTable::Posted(int id)
{
    if (m_query.Active() && m_query.RecNo() > 0 && Current().ID == id)
        return Current();
    return GoTo(id) ? std::optional(Current()) : std::nullopt;
}

} // namespace Zelmar01
