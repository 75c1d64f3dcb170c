#pragma once

#include <Zelmar01/data/Decimal.h>
#include <Zelmar01/data/FieldDefs.h>

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>

namespace Zelmar01 {

class TDataSet;

/// One field of a dataset's current record.
///
/// Reading gives the value of the current record, or of the record being edited; null reads as an empty text,
/// as 0 or as false. Writing needs a dataset in edit or insert state and raises EDatabaseError otherwise, for
/// a read-only field, and for a text longer than Size. A value that cannot be brought to the field's type
/// raises EConvertError and leaves the field as it was.
///
/// Texts are machine-independent: numbers with ".", dates as 2026-02-28, times as 13:45:00. What people see
/// in the form of their country is the business of the controls.
class TField
{
public:
    TField(TDataSet &dataSet, int index, TFieldDef def);
    TField(const TField &) = delete;
    TField &operator=(const TField &) = delete;

    TDataSet &DataSet() const { return m_dataSet; }
    int Index() const { return m_index; }
    const QString &FieldName() const { return m_def.Name; }
    TFieldType DataType() const { return m_def.DataType; }
    int Size() const { return m_def.Size; }
    bool Required() const { return m_def.Required; }

    /// The text that stands for the field in titles; the field's name unless set.
    QString DisplayLabel() const { return m_displayLabel.isEmpty() ? m_def.Name : m_displayLabel; }
    void setDisplayLabel(const QString &label) { m_displayLabel = label; }

    bool ReadOnly() const { return m_def.ReadOnly; }
    void setReadOnly(bool readOnly) { m_def.ReadOnly = readOnly; }

    bool Visible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }

    bool IsNull() const { return !Value().isValid(); }
    /// Makes the field null.
    void Clear() { setValue({}); }

    /// The value in the field's own type, invalid for null. A value of any type that can be brought to it is
    /// taken.
    QVariant Value() const;
    void setValue(const QVariant &value);

    QString AsString() const;
    qint64 AsInteger() const;
    double AsFloat() const;
    TDecimal AsDecimal() const;
    bool AsBoolean() const;
    QDate AsDate() const;
    QTime AsTime() const;
    QDateTime AsDateTime() const;
    QByteArray AsBytes() const;

    void setAsString(const QString &value) { setValue(value); }
    void setAsInteger(qint64 value) { setValue(value); }
    void setAsFloat(double value) { setValue(value); }
    void setAsDecimal(const TDecimal &value) { setValue(QVariant::fromValue(value)); }
    void setAsBoolean(bool value) { setValue(value); }
    void setAsDate(QDate value) { setValue(value); }

    /// A value brought to the field's type and size. Raises EConvertError, or EDatabaseError for a text that
    /// is too long.
    QVariant Converted(const QVariant &value) const;

private:
    TDataSet &m_dataSet;
    int m_index;
    TFieldDef m_def;
    QString m_displayLabel;
    bool m_visible = true;
};

/// A value brought to a field type; invalid stays invalid. Raises EConvertError naming `field`.
QVariant ConvertValue(const QVariant &value, TFieldType type, const QString &field);

/// The text of a value, in the form that TField describes.
QString TextOfValue(const QVariant &value);

} // namespace Zelmar01
