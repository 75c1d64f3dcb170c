#pragma once

#include <QStyledItemDelegate>

#include <functional>

namespace Zelmar01 {

/// Edits the label of a level in place. What was typed goes to a function and not to the model.
class TLabelDelegate : public QStyledItemDelegate
{
public:
    using TTakeLabel = std::function<void(const QModelIndex &index, const QString &label)>;
    using TLongestLabel = std::function<int()>;

    /// `longest` gives the number of characters that may be typed; 0 for any.
    TLabelDelegate(QObject *parent, TTakeLabel take, TLongestLabel longest);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    const TTakeLabel m_take;
    const TLongestLabel m_longest;
};

} // namespace Zelmar01
