#pragma once

#include <Zelmar01/data/DataSource.h>

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

namespace Zelmar01 {

class TLeaveCheck;

/// The binding of a control to one field of a data source's current record. All data-bound controls have one.
///
/// The control shows Field() at OnDataChange and lets the user work while CanEdit(). What the user does it
/// reports with Changed(): the dataset goes into edit state and the control holds a value of its own from
/// then on. The link has it written, by the function given to the constructor, when the user leaves the
/// control and before the record is posted or left. That function may raise to refuse: the focus then stays
/// in the control, the record is not posted, and the user is told once, by whoever asked for the post or by
/// the exception display. Restore() is for the Escape key.
class TFieldLink : public QObject
{
    Q_OBJECT
public:
    /// `control` owns the link. `write` brings what the control shows to Field().
    TFieldLink(QWidget *control, std::function<void()> write);

    /// The host owns the data source; a destroyed one is forgotten.
    TDataSource *DataSource() const { return m_source; }
    void setDataSource(TDataSource *source);
    QString FieldName() const { return m_fieldName; }
    /// Raises EDatabaseError when the open dataset has no such field. One that opens later without it is told
    /// to the user.
    void setFieldName(const QString &name);
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

    /// Null without a data source or a dataset behind it.
    TDataSet *DataSet() const { return m_source ? m_source->DataSet() : nullptr; }
    /// Null unless the dataset is open and has the field.
    TField *Field() const;

    /// Whether the user may change the value: it is not read-only in any way, and the record is being edited
    /// or AutoEdit allows to begin that.
    bool CanEdit() const;
    /// Brings the dataset into edit state; false when that is not to be. Raises what the dataset raises.
    bool Edit();
    /// To be called when the user has changed what the control shows. When that is not to be the control is
    /// told to show the field again, and false returned or an exception raised.
    bool Changed();
    /// Whether the control holds a value that its field does not have yet.
    bool IsChanged() const { return m_changed; }
    /// Has a changed value written now. Raises what the control raises to refuse it; the control then has the
    /// focus.
    void UpdateRecord();
    /// Gives the field the value that it had before the user came to this control, and shows it. False when
    /// nothing was changed since.
    bool Restore();

signals:
    /// The control is to show the field: another record, another value, another dataset, or none.
    void OnDataChange();
    /// CanEdit() may have another answer.
    void OnEditingChange();

private:
    void follow();
    void update();
    void showField(const TField *changed);
    void takeUpdate(QString &refusal);
    void requireField();

    QPointer<TDataSource> m_source;
    QString m_fieldName;
    std::function<void()> m_write;
    bool m_readOnly = false;
    bool m_missingTold = false;
    bool m_beginning = false; // of an edit, for the control that shows what the user has just typed
    bool m_changed = false;
    bool m_written = false;           // the field has a value from this control
    std::optional<QVariant> m_before; // the field's value when the user came
    TLeaveCheck *m_leave;
};

} // namespace Zelmar01
