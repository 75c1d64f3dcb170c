#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace Zelmar01 {

class TDataSet;
class TField;
class TGridColumns;

/// A column of a grid: which field it shows, and how. The grid owns it.
class TGridColumn
{
public:
    explicit TGridColumn(TGridColumns &columns, QString fieldName = {});
    TGridColumn(const TGridColumn &) = delete;
    TGridColumn &operator=(const TGridColumn &) = delete;

    /// The place among the columns, from 0.
    int Index() const;

    /// The field's name, in any letter case. A column whose field the dataset does not have is empty.
    const QString &FieldName() const { return m_fieldName; }
    void setFieldName(const QString &name);
    /// Null without an open dataset that has the field.
    TField *Field() const;

    /// What stands in the title; the field's display label unless set. An empty text goes back to it.
    QString Title() const;
    void setTitle(const QString &title);

    /// The width in pixels; 0 for one that suits the field and the title.
    int Width() const { return m_width; }
    void setWidth(int width);

    /// Whether the user must not change the values.
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);
    /// Whether values can be changed as far as column and field are concerned.
    bool IsWritable() const;

    bool Visible() const { return m_visible; }
    void setVisible(bool visible);
    /// Whether the user sees it: neither the column nor its field is invisible.
    bool IsShown() const;

    /// The column as one line, and back; see TzmGrid's property Columns. Reading raises EConvertError for a
    /// word that it does not know, when everything else has been taken.
    QString ToLine() const;
    void FromLine(const QString &line);

private:
    TGridColumns &m_columns;
    QString m_fieldName, m_title;
    int m_width = 0;
    bool m_readOnly = false, m_visible = true;
};

/// The columns of a grid. Until a host adds one of its own there is one for each field of the dataset; these
/// come and go with the fields.
class TGridColumns : public QObject
{
    Q_OBJECT
public:
    explicit TGridColumns(QObject *parent) : QObject(parent) {}

    int Count() const { return static_cast<int>(m_columns.size()); }
    /// Raises EInvalidOperation for an index outside 0 to Count() - 1.
    TGridColumn &operator[](int index) const;
    int IndexOf(const TGridColumn *column) const;
    /// The first column on that field, in any letter case. Raises EInvalidOperation when there is none.
    TGridColumn &ByFieldName(const QString &name) const;

    /// Adds a column behind the others; the first one takes the place of those that came from the fields.
    TGridColumn &Add(const QString &fieldName);
    /// Takes all columns away, so that there is one for each field again.
    void Clear();

    /// Whether the columns are those of the fields.
    bool FromFields() const { return m_fromFields; }

    /// The columns that a host has given, a line each; empty while they are those of the fields.
    QStringList ToLines() const;
    /// Takes all lines; raises EConvertError for what it cannot read in them.
    void FromLines(const QStringList &lines);

    /// The dataset whose fields are shown, by the grid that owns the columns. Columns that came from fields
    /// stay when the dataset opens again with fields of the same names, or is only closed.
    const TDataSet *DataSet() const { return m_dataSet; }
    void Follow(const TDataSet *dataSet);

signals:
    void OnAboutToReset();
    /// Other columns, or other fields behind them.
    void OnReset();
    void OnColumnChange(Zelmar01::TGridColumn *column);

private:
    friend class TGridColumn;
    QStringList fieldNames() const;

    std::vector<std::unique_ptr<TGridColumn>> m_columns;
    QPointer<const TDataSet> m_dataSet;
    bool m_fromFields = true;
};

} // namespace Zelmar01
