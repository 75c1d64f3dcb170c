#pragma once

#include <Zelmar01/data/DataSet.h>
#include <Zelmar01/data/binding/KeyListModel.h>

#include <QComboBox>
#include <QPointer>

namespace Zelmar01 {

/// A combo box whose entries are rows of a dataset: each shows a text and has a key, the identifier of its
/// row as text. It opens and finds at once however many entries there are.
///
/// Users pick an entry or type its text. What they type never becomes an entry: it drops the current one, and
/// leaving the box or Enter makes the entry with that text current, whatever its letter case. Entries that a
/// host adds with QComboBox's own functions have the key given as user data.
///
/// At first it is editable, without completion, and as wide as its minimumContentsLength; all of QComboBox's
/// properties are there to be changed.
class TComboBoxFk : public QComboBox
{
    Q_OBJECT
public:
    explicit TComboBoxFk(QWidget *parent = nullptr);

    /// Fills the entries with the rows of a dataset, keys from its first field and texts from its second.
    /// With `reopen` the dataset is closed, opened anew and left closed. Without, it must be open, and is
    /// left open behind its last row; a closed one raises EDatabaseError when the entries have been cleared.
    /// No entry is current afterwards.
    virtual void RemplirListe(TDataSet &dataSet, bool reopen);
    /// Fills the entries from as many keys as texts; raises EInvalidOperation otherwise.
    virtual void RemplirListe(const QStringList &cles, const QStringList &libelles);

    /// Makes the first entry with that key current, whatever its letter case; none when there is no such key.
    virtual void SelectionnerCle(const QString &cle);
    /// The key of the current entry; empty when there is none.
    QString DonnerCle() const;

protected:
    /// The user has left the box: makes the first entry with the typed text current, if there is one.
    virtual void DoExit();
    /// The user has changed the text; no entry is current.
    virtual void Typed() {}

    TKeyListModel &list() { return *m_list; }
    const TKeyListModel &list() const { return *m_list; }

    void childEvent(QChildEvent *event) override;

private:
    void watchEditor();
    void dropEntry(const QString &typed);
    bool takeTyped();

    TKeyListModel *m_list;
    QPointer<QLineEdit> m_watched;
};

} // namespace Zelmar01
