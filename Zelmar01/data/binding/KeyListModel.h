#pragma once

#include <Zelmar01/data/DataSet.h>
#include <Zelmar01/data/binding/RowIndex.h>

#include <QAbstractListModel>
#include <QStringList>

namespace Zelmar01 {

/// A list of texts, each with a key, as a Qt item model for very many rows: filling shares the texts with
/// their dataset, and rows are found by key or text without a walk. The text is Qt::DisplayRole and
/// Qt::EditRole, the key Qt::UserRole. Text and key of a row come and go together.
class TKeyListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    explicit TKeyListModel(QObject *parent = nullptr);

    void Clear() { Fill(TColumn(m_keys.Type()), TColumn(ftString)); }
    /// Takes texts and keys; raises EInvalidOperation unless there are as many of both. Texts of another type
    /// than ftString are brought to it.
    void Fill(TColumn keys, TColumn texts);
    void Fill(const QStringList &keys, const QStringList &texts);

    int Count() const { return static_cast<int>(m_texts.Count()); }
    /// Rows run from 0 to Count() - 1.
    const QString &Text(int row) const { return m_texts.Text(static_cast<std::size_t>(row)); }
    /// The key as text, in the form that TField describes; empty for null.
    QString Key(int row) const { return m_keys.AsText(static_cast<std::size_t>(row)); }
    const TColumn &Keys() const { return m_keys; }

    /// The first row with that key, or that text, whatever the letter case; -1 when there is none.
    int RowOfKey(const QString &key) const;
    int RowOfText(const QString &text) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// False for a key that the keys' type cannot hold.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// New rows have an empty text and no key.
    bool insertRows(int row, int count, const QModelIndex &parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    /// Fast for the whole text or its beginning, one hit: what typing in a list asks for.
    QModelIndexList match(const QModelIndex &start, int role, const QVariant &value, int hits,
                          Qt::MatchFlags flags) const override;

protected:
    /// Whether an index is one of a row; Qt's controls ask for those that are not, too.
    bool Holds(const QModelIndex &index) const { return index.row() >= 0 && index.row() < Count(); }

private:
    void take(const TRowNumbers &rows);
    int rowOfNumber(const QString &key) const;
    int rowOf(TRowIndex &index, const TColumn &column, const QString &text) const;

    TColumn m_keys{ftString}, m_texts{ftString};
    mutable TRowIndex m_byKey, m_byText; // built when first asked
};

} // namespace Zelmar01
