#pragma once

#include <Zelmar01/data/DataSet.h>
#include <Zelmar01/data/IndexDefs.h>

namespace Zelmar01 {

class TRowOrder;
struct TSortField;

/// A dataset whose rows live in memory only, from code or from another dataset, in the order of one of its
/// indexes.
///
/// Without an index rows stand in the order in which they came. With one a posted row moves to its place.
/// Nulls come first, texts go by their code points, folded one by one when the index says so; rows that are
/// equal keep the order in which they came.
///
/// The first sort on a field takes most of the time. What it has found out is kept for the fields of the last
/// index, 8 bytes a row, 16 for texts, until the dataset is closed: sorting by them again, in another
/// direction, letter case or sequence, takes a fraction.
class TClientDataSet : public TDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString IndexName READ IndexName WRITE setIndexName)
    Q_PROPERTY(QString IndexFieldNames READ IndexFieldNames WRITE setIndexFieldNames)
public:
    explicit TClientDataSet(QObject *owner = nullptr);
    ~TClientDataSet() override;

    /// Opens it without rows, with these fields.
    void CreateDataSet(const TFieldDefs &defs);

    /// Opens it with the fields and all rows of another dataset, which must be open and is left where it is.
    void LoadFrom(const TDataSet &source);

    const TIndexDefs &IndexDefs() const { return m_indexDefs; }
    void AddIndex(const QString &name, const QString &fields, TIndexOptions options = {},
                  const QString &descFields = {});
    /// When the index is in use the rows go back to the order in which they came.
    void DeleteIndex(const QString &name);

    /// The index in use; empty for none. Setting it clears IndexFieldNames and keeps the current row. Raises
    /// EDatabaseError for an index that there is not, or whose fields there are not; the order then stays.
    QString IndexName() const { return m_indexName; }
    void setIndexName(const QString &name);

    /// An order by these fields, ascending and with letter case, without an index definition; clears
    /// IndexName.
    QString IndexFieldNames() const { return m_indexFieldNames; }
    void setIndexFieldNames(const QString &fields);

protected:
    TFieldDefs readRows(std::unique_ptr<TRows> &rows) override;
    void writeUpdate(const TRecord &before, TRecord &record) override;
    bool keepsOrder() const override { return !m_sortFields.empty(); }
    int placeOf(std::size_t row) const override;

private:
    std::vector<TSortField> sortFieldsOf(const TIndexDef &def) const;
    void sortBy(const TIndexDef &def, const QString &indexName, const QString &indexFieldNames);

    TFieldDefs m_defs;
    std::unique_ptr<TRows> m_loaded;
    TIndexDefs m_indexDefs;
    QString m_indexName, m_indexFieldNames;
    std::vector<TSortField> m_sortFields;
    std::unique_ptr<TRowOrder> m_rowOrder;
};

} // namespace Zelmar01
