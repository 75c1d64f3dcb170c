#pragma once

#include <QStyledItemDelegate>

namespace Zelmar01 {

/// Draws items with check boxes that stand clear of one another and whose edge can be seen on any ground;
/// that of some styles is lost on a dark one.
class TCheckBoxDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace Zelmar01
