#pragma once

#include <Zelmar01/data/Query.h>
#include <Zelmar01/descrtree/CodeRules.h>
#include <Zelmar01/descrtree/DescrTree.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace Zelmar01 {

/// The table descr_article as a tree of codes uses it: questions in queries of their own on the connection of
/// the host's query, and changes through the host's query itself, so that what is linked to it follows.
///
/// The host's query shows the six columns and the table's key. Errors are EDatabaseError.
class TDescrTable
{
public:
    /// `query` is the host's and must live longer.
    explicit TDescrTable(TQuery &query) : m_query(query) {}

    /// The number of levels, -1 when the database does not say.
    int Count() const;
    /// All levels in ascending order of their codes. A parent that is null reads as 0. Raises EConvertError
    /// for an identifier that is no 32-bit number, naming the code.
    TDescrRows Levels() const;
    /// The next free code below a level, 0 and no code for the departments; empty when there is none left.
    QString NextFreeCode(int id, const TParentCode &parent) const;
    /// Whether no row of the table has that code. It becomes part of the query: see MayBeQueried().
    bool IsFree(const QString &code) const;

    /// Runs changes in one transaction, a savepoint when the host has one open, and commits when `work` has
    /// come to its end. When anything fails the database is as it was, and so is the query: not in edit or
    /// insert state, closed if it cannot be read again. A record that the host was editing is posted first.
    void Change(const std::function<void()> &work);
    /// Whether the last change may have been made although it failed: it was the commit that failed.
    bool MayBeMade() const { return m_mayBeMade; }

    // The steps of a change.

    /// Writes a new level; the query stands on its row.
    void Insert(const TDescr &level);
    /// Writes code, label, short label and long label into the row that the query stands on.
    void Update(const TDescr &level);
    /// Deletes the row that the query stands on.
    void Delete();

    using TLongLabels = std::vector<std::pair<TDescrTree::TNode, QString>>;
    /// Writes the long labels below a node whose own is, or becomes, `libLong`; returns those written. A
    /// level that has no row is passed over with all below it.
    TLongLabels UpdateLongLabels(const TDescrTree &tree, TDescrTree::TNode node, const QString &libLong);

    /// Moves to the row of a level, opening the query if need be; false, without a move, when there is none.
    bool GoTo(int id);
    /// The level of the row that the query stands on.
    TDescr Current() const;
    /// A level that was just written, read back; none when it is no longer there.
    std::optional<TDescr> Posted(int id);

private:
    void undo(int place);

    TQuery &m_query;
    bool m_hasChanged = false; // rows that the query holds, since the transaction began
    bool m_mayBeMade = false;
};

/// The name of the column with the identifiers.
inline constexpr const char *DescrIdColumn = "DESCR_ART_ID";

} // namespace Zelmar01
