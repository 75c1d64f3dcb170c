#include "CheckBoxDelegate.h"

#include <Zelmar01/core/Colors.h>

#include <QApplication>
#include <QPainter>

namespace Zelmar01 {

namespace {

constexpr double lineContrast = 3;
constexpr int rowGap = 4;

} // namespace

void TCheckBoxDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    auto item = option;
    initStyleOption(&item, index);
    const auto *style = option.widget ? option.widget->style() : QApplication::style();
    const auto box = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, option.widget);
    const auto &palette = option.palette;
    painter->setPen(WithContrast(palette.color(QPalette::Mid), palette.color(QPalette::Base), lineContrast));
    painter->drawRect(box.adjusted(0, 0, -1, -1));
}

QSize TCheckBoxDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, rowGap);
}

} // namespace Zelmar01
