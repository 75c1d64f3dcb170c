#pragma once

#include <QString>

namespace Zelmar01 {

/// What a title click does to the order of a grid's rows: rules on values, without a window.

/// The fields of the index that sorts a client dataset, and those among them that run backwards: lists of
/// names (see FieldLists.h), the field that was clicked last in front.
struct TIndexOrder
{
    QString IndexFields;
    QString DescFields;

    bool operator==(const TIndexOrder &) const = default;
};

/// The order after a click that stands for a field. A field of the index comes to its front and changes its
/// direction. A new one is added behind, ascending; there are never more than two, and a third is left out.
TIndexOrder OrderAfterClick(TIndexOrder order, const QString &field);

/// What a click stands for: on a server the field `sortField` means `expression`, and any other field itself;
/// on a client dataset `sortField` means itself, and any other field `expression`.
struct TSortKeys
{
    QString SortField, SortExpression;

    QString OnServer(const QString &field) const;
    QString OnClient(const QString &field) const;
};

/// The states of a server's order, shared by all columns: 0 unsorted, 1 ascending, -1 descending, and round
/// again.
int NextSortState(int state);
/// The text of a query in a state, ordered by `key`.
QString SortedQuery(const QString &baseSql, const QString &key, int state);
/// A field's label with the mark of a state.
QString SortedCaption(const QString &label, int state);

} // namespace Zelmar01
