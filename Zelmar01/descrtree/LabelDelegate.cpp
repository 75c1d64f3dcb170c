#include "LabelDelegate.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace Zelmar01 {

TLabelDelegate::TLabelDelegate(QObject *parent, TTakeLabel take, TLongestLabel longest)
    : QStyledItemDelegate(parent), m_take(std::move(take)), m_longest(std::move(longest))
{
}

QWidget *TLabelDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                      const QModelIndex &index) const
{
    auto *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        if (const int longest = m_longest(); longest > 0)
            line->setMaxLength(longest);
        line->setAccessibleName(QCoreApplication::translate("Zelmar01", "Libellé"));
    }
    return editor;
}

void TLabelDelegate::setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const
{
    if (const auto *line = qobject_cast<QLineEdit *>(editor))
        m_take(index, line->text());
}

} // namespace Zelmar01
