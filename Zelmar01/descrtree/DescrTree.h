#pragma once

#include <Zelmar01/descrtree/DescrRows.h>
#include <Zelmar01/descrtree/IdIndex.h>
#include <Zelmar01/descrtree/Labels.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace Zelmar01 {

/// The hierarchy of statistical codes in memory: one root without a record and the levels below it.
///
/// A node is a number that stays the same as long as the node is there; a number that was given back may be
/// used for a later node. Right after loading, the numbers are the absolute indices: the root is 0 and the
/// levels follow in the order of the rows. All operations take constant time but for those that say
/// otherwise.
class TDescrTree
{
public:
    using TNode = std::uint32_t;
    static constexpr TNode Root = 0;
    static constexpr TNode None = TIdIndex::None;

    /// Only the root.
    explicit TDescrTree(QString rootText = {});

    /// The rows become levels at the depth that their codes give them, each below the nearest row before it
    /// that is one level shallower, whatever its code or identifier. Raises EConvertError for a row without
    /// such a parent, naming its code and its place among the rows.
    TDescrTree(QString rootText, TDescrRows rows);

    const QString &RootText() const { return m_rootText; }

    /// The number of nodes, with the root.
    std::size_t Count() const { return m_links.size() - m_free.size(); }

    TNode Parent(TNode node) const { return m_links[node].Parent; } ///< None for the root
    std::size_t Row(TNode node) const { return m_links[node].Row; } ///< place among its siblings, from 0
    std::size_t ChildCount(TNode node) const { return m_links[node].ChildCount; }
    TNode Child(TNode node, std::size_t row) const { return m_children[m_links[node].Children + row]; }

    /// The node after this one when all are visited, parents before their children; None after the last.
    TNode Next(TNode node) const;
    /// The node at an absolute index, 0 being the root; None behind the last. Takes time in proportion to the
    /// index once levels were added or removed: visit many nodes with Next().
    TNode AtIndex(std::size_t index) const;

    /// The first node in the order of visiting whose level has this identifier; None for 0 and when there is
    /// none.
    TNode Find(int id) const { return id == 0 ? None : m_index.Find(id); }

    /// The records of the nodes 1, 2 and so on: right after loading, the rows that were loaded.
    const TDescrRows &Rows() const { return m_rows; }

    /// The records. The root has none: ID() and IDPere() are 0 for it and the texts are empty.
    TDescr Descr(TNode node) const;
    int ID(TNode node) const { return node == Root ? 0 : m_rows.Record(node - 1).ID; }
    int IDPere(TNode node) const { return node == Root ? 0 : m_rows.Record(node - 1).IDPere; }
    QString Libelle(TNode node) const { return text(node, &TDescrRecord::Libelle); }
    QString LibLong(TNode node) const { return text(node, &TDescrRecord::LibLong); }
    QString LibCourt(TNode node) const { return text(node, &TDescrRecord::LibCourt); }
    QString Code(TNode node) const { return text(node, &TDescrRecord::Code); }
    /// What the node shows: the root's text, or the level's by the rule.
    QString Text(TNode node, const TNodeTextRule &rule) const;

    /// Adds a level as the last child of a node. An identifier that is there already costs a walk through the
    /// tree.
    TNode AddChild(TNode parent, const TDescr &descr);

    /// Removes a level and renumbers the siblings behind it. Raises EInvalidOperation for the root and for a
    /// level with children.
    void RemoveLeaf(TNode node);

    /// Changes a level's own texts; those of its children are left alone.
    void SetLevel(TNode node, const QString &code, const QString &libelle, const QString &libCourt,
                  const QString &libLong);
    void SetLibLong(TNode node, const QString &libLong)
    {
        m_rows.Set(node - 1, &TDescrRecord::LibLong, libLong);
    }

    /// Is told of a level and its new long label; false passes over the level and all below it.
    using TVisitLongLabel = std::function<bool(TNode node, const QString &libLong)>;

    /// Goes through the levels below `node`, parents first and siblings in order, with the long labels that
    /// they get when that of `node` becomes `libLong`. The tree itself is not changed; `visit` may call
    /// SetLibLong().
    void WalkLongLabels(TNode node, const QString &libLong, const TVisitLongLabel &visit) const;
    /// Rebuilds the long labels of all levels below a node from its own.
    void CascadeLongLabels(TNode node);

    /// The bytes taken, about.
    std::size_t Memory() const;

private:
    struct TLinks
    {
        TNode Parent = None;
        std::uint32_t Row = 0;
        // The children are a stretch of m_children, with room for some more behind them.
        std::uint32_t Children = 0, ChildCount = 0, ChildRoom = 0;
    };

    QString text(TNode node, TDescrText TDescrRecord::*field) const;
    void linkRows();
    void buildIndex();
    TNode newNode(const TDescr &descr);
    void makeRoom(TLinks &links);

    QString m_rootText;
    TDescrRows m_rows; // of node 1, 2 and so on
    std::vector<TLinks> m_links;
    std::vector<TNode> m_children;
    std::vector<TNode> m_free;
    TIdIndex m_index;
    bool m_hasDuplicates = false;
    bool m_isAsLoaded = true;
};

} // namespace Zelmar01
