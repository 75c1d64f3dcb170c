#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/data/Field.h>
#include <Zelmar01/data/Rows.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

namespace Zelmar01 {

enum TDataSetState {
    dsInactive, ///< closed: no fields, no rows
    dsBrowse,   ///< reading
    dsEdit,     ///< the current record is being changed
    dsInsert,   ///< a new record is being written
};

/// How Locate compares. Both options are for texts: a number equals a number or it does not.
enum TLocateOption { loCaseInsensitive = 1, loPartialKey = 2 };
Q_DECLARE_FLAGS(TLocateOptions, TLocateOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TLocateOptions)

/// The fields of an open dataset, in their order.
class TFields
{
public:
    int Count() const { return static_cast<int>(m_fields.size()); }
    /// Raises EDatabaseError for an index outside 0 to Count() - 1.
    TField &operator[](int index) const;

private:
    friend class TDataSet;
    std::vector<std::unique_ptr<TField>> m_fields;
};

/// A table or query cursor: rows in memory, a current one among them, and a record that is being edited.
///
/// What a dataset reads and where its changes go is the business of the classes that descend from it; the
/// host owns it. Everything but Open, Close and the questions Active and State raises EDatabaseError on a
/// closed dataset. A move posts a changed record first, and cancels an unchanged one.
class TDataSet : public TComponent
{
    Q_OBJECT
    Q_PROPERTY(bool Active READ Active WRITE setActive STORED false)
public:
    explicit TDataSet(QObject *owner = nullptr);
    ~TDataSet() override;

    /// Reads the rows and goes to the first one; does nothing on an open dataset.
    void Open();
    void Close();
    bool Active() const { return m_rows != nullptr; }
    /// Opens or closes; while the form is loading, when it has been loaded.
    void setActive(bool active);
    void Loaded() override;
    TDataSetState State() const { return m_state; }

    const TFields &Fields() const;
    /// The field of that name, in any letter case. Raises EDatabaseError when there is none.
    TField &FieldByName(const QString &name) const;
    TField *FindField(const QString &name) const;

    void First();
    void Last();
    void Next();
    void Prior();
    /// Moves by a number of rows, as far as there are any; returns how many it moved.
    int MoveBy(int rows);
    /// Whether the cursor is before the first row (after First, a Prior too many, or without rows), or behind
    /// the last one.
    bool Bof() const;
    bool Eof() const;
    int RecordCount() const;
    /// The place of the current row, from 1; 0 when there is none.
    int RecNo() const;
    void setRecNo(int place);

    /// The current row, to come back to. It stays good until the dataset is closed.
    using TBookmark = std::optional<std::size_t>;
    TBookmark GetBookmark() const;
    /// That of the row at a shown place (from 0); none for a record being inserted.
    TBookmark BookmarkAt(int place) const;
    /// False, without a move, when the row was deleted.
    bool GotoBookmark(const TBookmark &bookmark);

    /// Moves to the first row whose fields have these values and returns true; stays where it is otherwise.
    /// `fields` is a name, or several separated by ";", and `values` then a list.
    bool Locate(const QString &fields, const QVariant &values, TLocateOptions options = {});

    /// Begins a new record: before the current row, or behind the last one.
    void Insert();
    void Append();
    /// Begins to change the current record, or a new one when there are no rows.
    void Edit();
    /// Stores the record. When that is refused the exception leaves dataset and record as they were, for the
    /// user to correct or cancel.
    void Post();
    void Cancel();
    /// Deletes the current row and moves to the one behind it.
    void Delete();
    /// Whether the record being edited has been changed.
    bool Modified() const { return m_modified; }
    /// Whether records can be changed at all.
    virtual bool CanModify() const { return true; }

    /// The value of a field in the row at a place (from 0), for views that show many rows. The record being
    /// edited stands at its own place.
    QVariant ValueAt(int place, int field) const;
    /// How many rows there are to be shown: RecordCount, and one for a record being inserted.
    int ShownCount() const;
    /// The shown place of the current record, from 0; -1 when there is none.
    int ShownPlace() const;
    /// The values of a field over all rows in their order, for lists that take many at once. The cursor stays
    /// where it is; a record being edited counts as it was before.
    TColumn ColumnOf(const TField &field) const;

signals:
    void AfterOpen(Zelmar01::TDataSet *dataSet);
    void AfterClose(Zelmar01::TDataSet *dataSet);
    void OnNewRecord(Zelmar01::TDataSet *dataSet);
    /// The record being edited is about to be posted, or left: a control that holds a value of its own writes
    /// it to its field now. It refuses by giving a reason, as below; one that finds a reason given does
    /// nothing.
    void UpdateRecord(Zelmar01::TDataSet *dataSet, QString &refusal);
    /// A receiver refuses by giving a reason; the operation then raises EDatabaseError with it.
    void BeforePost(Zelmar01::TDataSet *dataSet, QString &refusal);
    void AfterPost(Zelmar01::TDataSet *dataSet);
    void BeforeDelete(Zelmar01::TDataSet *dataSet, QString &refusal);
    void AfterDelete(Zelmar01::TDataSet *dataSet);
    void AfterCancel(Zelmar01::TDataSet *dataSet);
    void AfterScroll(Zelmar01::TDataSet *dataSet);

    // For data sources, models and controls.
    void StateChanged();
    /// The dataset was opened, closed or put in another order.
    void RowsReset();
    void CursorMoved();
    /// A field of the record being edited has a new value.
    void FieldChanged(Zelmar01::TField *field);
    void RowAboutToBeInserted(int place);
    void RowInserted(int place);
    void RowAboutToBeRemoved(int place);
    void RowRemoved(int place);
    void RowChanged(int place);

protected:
    using TRecord = std::vector<QVariant>;

    /// Reads everything: returns the fields and fills the rows.
    virtual TFieldDefs readRows(std::unique_ptr<TRows> &rows) = 0;
    /// Bring a change to where the rows come from; they raise to refuse it. An inserted or updated record may
    /// be completed by what the source makes of it.
    virtual void writeInsert(TRecord &) {}
    virtual void writeUpdate(const TRecord &, TRecord &) {}
    virtual void writeDelete(const TRecord &) {}
    /// Whether the dataset keeps its rows in an order of its own, so that a new or changed row has a place.
    virtual bool keepsOrder() const { return false; }
    /// Where a row that is not among the shown ones belongs in that order.
    virtual int placeOf(std::size_t) const { return 0; }

    const TRows &rows() const { return *m_rows; }
    TRowNumbers &order() { return m_order; }
    const TRowNumbers &order() const { return m_order; }
    /// To be called when order() was changed as a whole; the current row stays current.
    void orderChanged(std::optional<std::size_t> current);
    std::optional<std::size_t> currentRow() const;
    void requireOpen() const;
    /// Ends the editing of the record before the cursor or the rows move: posts a changed one, cancels an
    /// unchanged one. Raises when the post is refused.
    void leaveRecord();

private:
    friend class TField;
    QVariant fieldValue(int field) const;
    QString fieldText(int field) const;
    void setFieldValue(TField &field, const QVariant &value);

    void beginInsert(int place);
    void updateRecord();
    void moveTo(int place);
    void storeInserted();
    void storeUpdated();
    void checkRequired() const;
    void placeRow(std::size_t row);
    void endRecord();
    bool isInserting() const { return m_state == dsInsert; }

    TFields m_fields;
    std::unique_ptr<TRows> m_rows;
    TRowNumbers m_order; // as they are shown
    int m_place = 0;     // the current row's place in m_order
    bool m_bof = true, m_eof = true;
    TDataSetState m_state = dsInactive;
    TRecord m_record; // the record being edited
    bool m_modified = false;
    bool m_openWhenLoaded = false;
};

} // namespace Zelmar01
