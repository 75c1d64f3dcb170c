#pragma once

#include <Zelmar01/descrtree/DescrTree.h>

#include <QAbstractItemModel>
#include <QIcon>
#include <QList>

#include <optional>

namespace Zelmar01 {

/// The hierarchy of statistical codes as a Qt item model: one column, the root as the only row at the top,
/// the levels below it. It owns the tree and shows it without a copy.
///
/// Qt::DisplayRole is the node's text by the rule, Qt::EditRole the bare label, Qt::DecorationRole the image,
/// Qt::AccessibleDescriptionRole the long label. The labels of levels are marked as editable; setData()
/// refuses all the same, since a label goes to the database first.
class TDescrModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    using TNode = TDescrTree::TNode;

    using QAbstractItemModel::QAbstractItemModel;

    /// Null when there are no nodes at all, not even the root.
    const TDescrTree *Tree() const { return m_tree ? &*m_tree : nullptr; }
    /// Shows another tree, or none.
    void SetTree(std::optional<TDescrTree> tree);

    /// Invalid for TDescrTree::None, and TDescrTree::None for an invalid index.
    QModelIndex IndexOf(TNode node) const;
    TNode NodeOf(const QModelIndex &index) const;

    const TNodeTextRule &Rule() const { return m_rule; }
    void SetRule(const TNodeTextRule &rule);

    const QList<QIcon> &Images() const { return m_images; }
    void SetImages(const QList<QIcon> &images);
    /// The place of a node's image among the images, also when there is none at that place; -1 for none.
    int ImageIndex(TNode node) const;
    void SetRootImage(int index);

    /// The node that shows its bare label whatever the rule, while it is edited; TDescrTree::None for none.
    TNode BareNode() const { return m_bare; }
    void SetBareNode(TNode node);

    // The changes of TDescrTree, told to the views.
    TNode AddChild(TNode parent, const TDescr &descr);
    void RemoveLeaf(TNode node);
    void SetLevel(TNode node, const QString &code, const QString &libelle, const QString &libCourt,
                  const QString &libLong);
    void SetLibLong(TNode node, const QString &libLong);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QString shownText(TNode node) const;
    void changed(TNode node);
    void allChanged();

    std::optional<TDescrTree> m_tree;
    TNodeTextRule m_rule;
    QList<QIcon> m_images;
    int m_rootImage = 2;
    TNode m_bare = TDescrTree::None;
};

} // namespace Zelmar01
