#pragma once

#include <Zelmar01/data/Connection.h>
#include <Zelmar01/data/DataSet.h>

#include <QPointer>
#include <QStringList>

namespace Zelmar01 {

/// A dataset over a query of a database. All rows are read when it opens.
///
/// Its records can be changed when the query reads one table and shows the table's key; both are found by
/// themselves (see SingleTableOf() in SqlText.h) or set by the host. Values travel as bound parameters. A
/// change that finds its row gone raises EDatabaseError and leaves everything as it was. So does opening with
/// a value that its column's type cannot hold; the message names line and field.
///
/// Decimals of PostgreSQL and of servers behind ODBC are exact. SQLite itself keeps what was declared a
/// decimal as a binary fraction, exact to 15 digits. Times behind ODBC are whole seconds.
class TQuery : public TDataSet
{
    Q_OBJECT
    Q_PROPERTY(QString CommandText READ CommandText WRITE setCommandText)
    Q_PROPERTY(QString TableName READ TableName WRITE setTableName)
    Q_PROPERTY(QString KeyFields READ KeyFields WRITE setKeyFields)
public:
    explicit TQuery(QObject *owner = nullptr, TConnection *connection = nullptr);

    /// The host owns the connection.
    TConnection *Connection() const { return m_connection; }
    void setConnection(TConnection *connection);
    /// The connection; raises EDatabaseError when there is none.
    TConnection &RequireConnection() const;

    /// The SQL text; setting it closes the dataset. "?" stand for the Params in their order.
    QString CommandText() const { return m_commandText; }
    void setCommandText(const QString &text);
    void setParams(const QVariantList &params) { m_params = params; }
    /// Closes the query and opens it with another text. A text that the database refuses raises and leaves
    /// everything as it was: text, rows and cursor.
    void Reopen(const QString &commandText);

    /// The table that changes go to, as an SQL text names it, and the fields that identify its rows
    /// (separated by ";"), when they are not to be found by themselves.
    QString TableName() const { return m_tableName; }
    void setTableName(const QString &name)
    {
        m_tableName = name;
        m_target.reset();
    }
    QString KeyFields() const { return m_keyFields; }
    void setKeyFields(const QString &fields)
    {
        m_keyFields = fields;
        m_target.reset();
    }

    bool CanModify() const override;

protected:
    TFieldDefs readRows(std::unique_ptr<TRows> &rows) override;
    void writeInsert(TRecord &record) override;
    void writeUpdate(const TRecord &before, TRecord &record) override;
    void writeDelete(const TRecord &record) override;

private:
    /// Where the changes of the present command text go.
    struct TTarget
    {
        QString Table;
        std::vector<int> Keys;
        std::vector<bool> InTable; // fields that are columns of the table
        QStringList Fields;        // those that it was found for
        bool IsKnown = true;       // false when the database did not name its columns
    };
    /// What a command text gives.
    struct TAnswer
    {
        TFieldDefs Defs;
        std::unique_ptr<TRows> Rows;
    };
    TAnswer ask(const QString &commandText);
    const TTarget &target() const;
    TTarget findTarget() const;
    bool isOneRow(const TRecord &record) const;
    void write(const QString &sql, const QVariantList &values, bool isOneRow);
    QString condition(const TRecord &record, QVariantList &values) const;
    QString quoted(const QString &name) const;

    QPointer<TConnection> m_connection;
    QString m_commandText, m_tableName, m_keyFields;
    QVariantList m_params;
    std::optional<TAnswer> m_answer; // read already, for the next time it opens
    mutable std::optional<TTarget> m_target;
};

} // namespace Zelmar01
