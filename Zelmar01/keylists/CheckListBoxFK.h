#pragma once

#include <Zelmar01/data/DataSet.h>
#include <Zelmar01/data/binding/LongListView.h>
#include <Zelmar01/keylists/CheckListModel.h>

#include <QStringList>

namespace Zelmar01 {

/// A list of items with check boxes whose items are rows of a dataset: each shows a text and has a key, the
/// 32-bit identifier of its row. The keys of the checked items come as one text, ready for a SQL "in (...)".
/// It is filled, painted and read at once however many items there are.
///
/// The current item is the selected one. Users check with a click on the box or the space bar, and find an
/// item by typing the beginning of its text.
class TCheckListBoxFK : public TLongListView
{
    Q_OBJECT
public:
    explicit TCheckListBoxFK(QWidget *parent = nullptr);

    /// Fills the list with the rows of a dataset, keys from its first field and texts from its second, all
    /// unchecked and none current. The dataset is closed, opened anew and left closed. Raises EConvertError
    /// for a key that is no 32-bit number; the list is empty then.
    void RemplirListe(TDataSet &dataSet);
    /// Fills the list from as many keys as texts.
    void RemplirListe(const QList<int> &cles, const QStringList &libelles);

    int Count() const { return m_model->Count(); }
    bool Checked(int index) const { return index >= 0 && index < Count() && m_model->IsChecked(index); }
    /// The place of the current item from 0; -1 when there is none.
    int ItemIndex() const;
    /// The key of an item; 0 for an index out of range.
    int ValeurCle(int index) const;
    /// The key of the current item in decimal; empty when there is none.
    QString DonnerCle() const;

    // Keys are compared as decimal texts: "007" is not the key 7. Of several items with the same key the
    // first one is meant.

    /// Makes the item with that key current; the first item when no item has it.
    void SelectionnerCle(const QString &cle);
    void CocherCle(const QString &cle, bool cocher);
    void ToutSelectionner() { m_model->CheckAll(true); }
    void ToutDeselectionner() { m_model->CheckAll(false); }

    int NbCaseCoche() const { return m_model->CheckedCount(); }
    /// The texts of the checked items, in their order; the next call overwrites the list.
    const QStringList &SelectedItems();
    /// The keys of the checked, or the unchecked, items in decimal, in their order, each one followed by the
    /// separator, the last one too.
    QString ListeDesSelectionnes(const QString &separateur) const
    {
        return m_model->KeysOf(true, separateur);
    }
    QString ListeDesNonSelectionnes(const QString &separateur) const
    {
        return m_model->KeysOf(false, separateur);
    }

signals:
    /// The user has checked or unchecked the item at `index`.
    void OnClickCheck(int index);

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    using TLongListView::edit;

private:
    TCheckListModel *m_model;
    QStringList m_selectedItems;
};

} // namespace Zelmar01
