#include <Zelmar01/descrtree/DescrModel.h>

#include <utility>

namespace Zelmar01 {

void TDescrModel::SetTree(std::optional<TDescrTree> tree)
{
    beginResetModel();
    m_tree = std::move(tree);
    m_bare = TDescrTree::None;
    endResetModel();
}

QModelIndex TDescrModel::IndexOf(TNode node) const
{
    if (!m_tree || node == TDescrTree::None)
        return {};
    return createIndex(static_cast<int>(m_tree->Row(node)), 0, static_cast<quintptr>(node));
}

TDescrModel::TNode TDescrModel::NodeOf(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<TNode>(index.internalId()) : TDescrTree::None;
}

void TDescrModel::SetRule(const TNodeTextRule &rule)
{
    m_rule = rule;
    allChanged();
}

void TDescrModel::SetImages(const QList<QIcon> &images)
{
    m_images = images;
    allChanged();
}

int TDescrModel::ImageIndex(TNode node) const
{
    if (node == TDescrTree::Root)
        return m_rootImage;
    return m_images.size() > 1 ? 1 : 0;
}

void TDescrModel::SetRootImage(int index)
{
    m_rootImage = index;
    changed(TDescrTree::Root);
}

void TDescrModel::SetBareNode(TNode node)
{
    const auto before = std::exchange(m_bare, node);
    changed(before);
    changed(node);
}

TDescrModel::TNode TDescrModel::AddChild(TNode parent, const TDescr &descr)
{
    const auto row = static_cast<int>(m_tree->ChildCount(parent));
    beginInsertRows(IndexOf(parent), row, row);
    const auto node = m_tree->AddChild(parent, descr);
    endInsertRows();
    return node;
}

void TDescrModel::RemoveLeaf(TNode node)
{
    const auto index = IndexOf(node);
    beginRemoveRows(index.parent(), index.row(), index.row());
    if (m_bare == node)
        m_bare = TDescrTree::None;
    m_tree->RemoveLeaf(node);
    endRemoveRows();
}

void TDescrModel::SetLevel(TNode node, const QString &code, const QString &libelle, const QString &libCourt,
                           const QString &libLong)
{
    m_tree->SetLevel(node, code, libelle, libCourt, libLong);
    changed(node);
}

void TDescrModel::SetLibLong(TNode node, const QString &libLong)
{
    m_tree->SetLibLong(node, libLong);
    changed(node);
}

QModelIndex TDescrModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return IndexOf(TDescrTree::Root);
    return IndexOf(m_tree->Child(NodeOf(parent), static_cast<std::size_t>(row)));
}

QModelIndex TDescrModel::parent(const QModelIndex &index) const
{
    return index.isValid() ? IndexOf(m_tree->Parent(NodeOf(index))) : QModelIndex();
}

int TDescrModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return m_tree ? 1 : 0;
    return parent.column() == 0 ? static_cast<int>(m_tree->ChildCount(NodeOf(parent))) : 0;
}

int TDescrModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant TDescrModel::data(const QModelIndex &index, int role) const
{
    const auto node = NodeOf(index);
    if (node == TDescrTree::None)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return shownText(node);
    case Qt::EditRole:
        return node == TDescrTree::Root ? m_tree->RootText() : m_tree->Libelle(node);
    case Qt::DecorationRole: {
        const auto image = m_images.value(ImageIndex(node)); // an empty one would take up room
        return image.isNull() ? QVariant() : image;
    }
    case Qt::AccessibleDescriptionRole:
        return m_tree->LibLong(node);
    default:
        return {};
    }
}

Qt::ItemFlags TDescrModel::flags(const QModelIndex &index) const
{
    auto flags = QAbstractItemModel::flags(index);
    if (index.isValid() && NodeOf(index) != TDescrTree::Root)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QString TDescrModel::shownText(TNode node) const
{
    return node == m_bare && node != TDescrTree::Root ? m_tree->Libelle(node) : m_tree->Text(node, m_rule);
}

void TDescrModel::changed(TNode node)
{
    if (const auto index = IndexOf(node); index.isValid())
        emit dataChanged(index, index);
}

// Texts and images of all nodes, but not what is below what.
void TDescrModel::allChanged()
{
    emit layoutAboutToBeChanged();
    emit layoutChanged();
}

} // namespace Zelmar01
