#include <Zelmar01/keylists/CheckListBoxFK.h>

#include "CheckBoxDelegate.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <QScopeGuard>

#include <algorithm>
#include <limits>

namespace Zelmar01 {

namespace {

using TKeyLimits = std::numeric_limits<int>;

// The keys as numbers without nulls, which count as 0.
TColumn keysOf(const TDataSet &dataSet, const TField &field)
{
    const auto values = dataSet.ColumnOf(field);
    std::vector<qint64> keys(values.Count());
    for (std::size_t row = 0; row < keys.size(); ++row) {
        const auto key = field.DataType() == ftInteger
                             ? values.Integer(row)
                             : ConvertValue(values.Value(row), ftInteger, field.FieldName()).toLongLong();
        if (key < TKeyLimits::min() || key > TKeyLimits::max())
            throw EConvertError(Filled(Translate("Zelmar01", "La clé %1 du champ « %2 » dépasse 32 bits"),
                                       {std::to_string(key), field.FieldName().toStdString()}));
        keys[row] = key;
    }
    return TColumn::Of(std::move(keys));
}

} // namespace

TCheckListBoxFK::TCheckListBoxFK(QWidget *parent) : TLongListView(parent), m_model(new TCheckListModel(this))
{
    UseMessageBoxes();
    setModel(m_model);
    setItemDelegate(new TCheckBoxDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
}

void TCheckListBoxFK::RemplirListe(TDataSet &dataSet)
{
    m_model->Clear();
    dataSet.Close();
    dataSet.Open();
    const auto close = qScopeGuard([&] { dataSet.Close(); });
    const auto &fields = dataSet.Fields();
    m_model->Fill(keysOf(dataSet, fields[0]), dataSet.ColumnOf(fields[1]));
}

void TCheckListBoxFK::RemplirListe(const QList<int> &cles, const QStringList &libelles)
{
    m_model->Fill(TColumn::Of(std::vector<qint64>(cles.begin(), cles.end())), TColumn::Of(libelles));
}

int TCheckListBoxFK::ItemIndex() const
{
    const auto &selection = selectionModel()->selection();
    return selection.isEmpty() ? -1 : selection.first().top();
}

int TCheckListBoxFK::ValeurCle(int index) const
{
    return index < 0 || index >= Count() ? 0 : m_model->KeyNumber(index);
}

QString TCheckListBoxFK::DonnerCle() const
{
    const int index = ItemIndex();
    return index < 0 ? QString() : QString::number(m_model->KeyNumber(index));
}

void TCheckListBoxFK::SelectionnerCle(const QString &cle)
{
    setCurrentIndex(m_model->index(std::max(m_model->RowOfKey(cle), 0)));
}

void TCheckListBoxFK::CocherCle(const QString &cle, bool cocher)
{
    const auto index = m_model->index(m_model->RowOfKey(cle));
    m_model->setData(index, cocher ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

const QStringList &TCheckListBoxFK::SelectedItems()
{
    m_selectedItems = m_model->CheckedTexts();
    return m_selectedItems;
}

// The only edit there is: the user has worked a check box.
bool TCheckListBoxFK::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool before = Checked(index.row());
    const bool isEdited = TLongListView::edit(index, trigger, event);
    if (Checked(index.row()) != before)
        emit OnClickCheck(index.row());
    return isEdited;
}

} // namespace Zelmar01
