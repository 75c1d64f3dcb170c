#include <Zelmar01/keylists/GridOrder.h>

#include <Zelmar01/keylists/FieldLists.h>

namespace Zelmar01 {

TIndexOrder OrderAfterClick(TIndexOrder order, const QString &field)
{
    if (const int position = ChercherChamp(field, order.IndexFields); position > 0) {
        MettreEnTete(position, order.IndexFields);
        if (const int backwards = ChercherChamp(field, order.DescFields); backwards > 0)
            SupprimerChampAtPos(backwards, order.DescFields);
        else
            AjouterChamp(field, order.DescFields);
    } else if (!AjouterChamp(field, order.IndexFields)) {
        const auto last = order.IndexFields.section(u';', -1);
        SupprimerChamp(order.IndexFields);
        SupprimerChampAtPos(ChercherChamp(last, order.DescFields), order.DescFields);
    }
    return order;
}

QString TSortKeys::OnServer(const QString &field) const
{
    return field.compare(SortField, Qt::CaseInsensitive) == 0 ? SortExpression : field;
}

QString TSortKeys::OnClient(const QString &field) const
{
    return field.compare(SortField, Qt::CaseInsensitive) == 0 ? field : SortExpression;
}

int NextSortState(int state)
{
    return state < 1 ? state + 1 : -1;
}

QString SortedQuery(const QString &baseSql, const QString &key, int state)
{
    if (state == 0)
        return baseSql;
    return baseSql + QStringLiteral(" order by ") + key + (state < 0 ? QStringLiteral(" desc") : QString());
}

QString SortedCaption(const QString &label, int state)
{
    return state == 0 ? label : label + (state < 0 ? QStringLiteral(" <") : QStringLiteral(" >"));
}

} // namespace Zelmar01
