#include <Zelmar01/descrtree/DescrTree.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <utility>

namespace Zelmar01 {

TDescrTree::TDescrTree(QString rootText) : TDescrTree(std::move(rootText), {}) {}

TDescrTree::TDescrTree(QString rootText, TDescrRows rows)
    : m_rootText(std::move(rootText)), m_rows(std::move(rows)), m_links(m_rows.Count() + 1)
{
    m_rows.Squeeze();
    linkRows();
    buildIndex();
}

void TDescrTree::linkRows()
{
    std::vector<TNode> path{Root}; // the last node of each depth
    for (TNode node = 1; node < m_links.size(); ++node) {
        const auto depth = m_rows.Depth(node - 1);
        if (depth > path.size())
            throw EConvertError(Filled(Translate("Zelmar01", "Niveau sans parent au rang %1, code %2"),
                                       {std::to_string(node), Code(node).toStdString()}));
        path.resize(depth);
        m_links[node].Parent = path.back();
        m_links[node].Row = m_links[path.back()].ChildCount++;
        path.push_back(node);
    }
    std::uint32_t begin = 0;
    for (auto &links : m_links) {
        links.Children = begin;
        links.ChildRoom = links.ChildCount;
        begin += links.ChildCount;
    }
    m_children.resize(begin);
    for (TNode node = 1; node < m_links.size(); ++node)
        m_children[m_links[m_links[node].Parent].Children + m_links[node].Row] = node;
}

void TDescrTree::buildIndex()
{
    std::int32_t first = ID(Next(Root) == None ? Root : Next(Root)), last = first;
    for (auto node = Next(Root); node != None; node = Next(node)) {
        first = std::min(first, ID(node));
        last = std::max(last, ID(node));
    }
    m_index.Reset(first, last, Count());
    m_hasDuplicates = false;
    for (auto node = Next(Root); node != None; node = Next(node))
        m_hasDuplicates |= !m_index.Insert(ID(node), node);
}

TDescrTree::TNode TDescrTree::Next(TNode node) const
{
    if (m_isAsLoaded)
        return AtIndex(std::size_t{node} + 1);
    if (ChildCount(node) > 0)
        return Child(node, 0);
    for (auto parent = Parent(node); parent != None; node = parent, parent = Parent(node))
        if (Row(node) + 1 < ChildCount(parent))
            return Child(parent, Row(node) + 1);
    return None;
}

TDescrTree::TNode TDescrTree::AtIndex(std::size_t index) const
{
    if (index >= Count())
        return None;
    if (m_isAsLoaded)
        return static_cast<TNode>(index);
    auto node = Root;
    while (index-- > 0)
        node = Next(node);
    return node;
}

TDescr TDescrTree::Descr(TNode node) const
{
    return node == Root ? TDescr() : m_rows.Descr(node - 1);
}

QString TDescrTree::text(TNode node, TDescrText TDescrRecord::*field) const
{
    return node == Root ? QString() : m_rows.Text(node - 1, field);
}

QString TDescrTree::Text(TNode node, const TNodeTextRule &rule) const
{
    return node == Root ? m_rootText : rule.Text(Code(node), Libelle(node));
}

TDescrTree::TNode TDescrTree::AddChild(TNode parent, const TDescr &descr)
{
    const auto node = newNode(descr);
    makeRoom(m_links[parent]);
    auto &above = m_links[parent];
    m_children[above.Children + above.ChildCount] = node;
    m_links[node].Parent = parent;
    m_links[node].Row = above.ChildCount++;
    m_isAsLoaded = false;
    if (!m_index.Insert(descr.ID, node))
        buildIndex(); // the new one may stand before the one that was there
    return node;
}

TDescrTree::TNode TDescrTree::newNode(const TDescr &descr)
{
    if (m_free.empty()) {
        m_rows.Append(descr);
        m_links.emplace_back();
        return static_cast<TNode>(m_links.size() - 1);
    }
    const auto node = m_free.back();
    m_rows.Set(node - 1, descr);
    m_free.pop_back();
    return node;
}

void TDescrTree::makeRoom(TLinks &links)
{
    if (links.ChildCount < links.ChildRoom)
        return;
    const auto room = std::max<std::uint32_t>(links.ChildCount * 2, 4);
    const auto begin = m_children.size();
    m_children.resize(begin + room, None);
    std::copy_n(m_children.begin() + links.Children, links.ChildCount,
                m_children.begin() + static_cast<std::ptrdiff_t>(begin));
    links.Children = static_cast<std::uint32_t>(begin);
    links.ChildRoom = room;
}

void TDescrTree::RemoveLeaf(TNode node)
{
    if (node == Root || ChildCount(node) > 0)
        throw EInvalidOperation(
            Translate("Zelmar01", "Un niveau qui a des enfants ne peut pas être supprimé"));
    const auto id = ID(node);
    auto &above = m_links[Parent(node)];
    for (auto row = m_links[node].Row + 1; row < above.ChildCount; ++row) {
        const auto sibling = m_children[above.Children + row];
        m_children[above.Children + row - 1] = sibling;
        m_links[sibling].Row = row - 1;
    }
    --above.ChildCount;
    m_rows.Set(node - 1, {});
    m_free.push_back(node);
    m_isAsLoaded = false;
    if (m_hasDuplicates)
        buildIndex();
    else
        m_index.Remove(id);
}

void TDescrTree::SetLevel(TNode node, const QString &code, const QString &libelle, const QString &libCourt,
                          const QString &libLong)
{
    m_rows.Set(node - 1, TDescr(ID(node), IDPere(node), libLong, libelle, libCourt, code));
}

void TDescrTree::WalkLongLabels(TNode node, const QString &libLong, const TVisitLongLabel &visit) const
{
    std::vector<QString> path{libLong}; // of the parent at each depth below `node`
    auto parent = node;
    for (std::size_t row = 0;;) {
        if (row < ChildCount(parent)) {
            const auto child = Child(parent, row);
            auto chained = ChainedLabel(path.back(), Libelle(child));
            if (visit(child, chained) && ChildCount(child) > 0) {
                path.push_back(std::move(chained));
                parent = child;
                row = 0;
            } else {
                ++row;
            }
        } else if (parent == node) {
            return;
        } else {
            path.pop_back();
            row = Row(parent) + 1;
            parent = Parent(parent);
        }
    }
}

void TDescrTree::CascadeLongLabels(TNode node)
{
    WalkLongLabels(node, LibLong(node), [this](TNode child, const QString &libLong) {
        SetLibLong(child, libLong);
        return true;
    });
}

std::size_t TDescrTree::Memory() const
{
    return m_rows.Memory() + m_links.capacity() * sizeof(TLinks) +
           (m_children.capacity() + m_free.capacity()) * sizeof(TNode) + m_index.Memory();
}

} // namespace Zelmar01
