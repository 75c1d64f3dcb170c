#pragma once

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/data/binding/KeyListModel.h>

#include <QPointer>
#include <QTimer>

namespace Zelmar01 {

/// Keeps a key list filled with the rows of a data source's dataset, whose cursor it never moves. Without an
/// open dataset the list is empty.
///
/// Opening and closing the dataset fill the list at once. Another order and a posted or deleted row only make
/// it out of date: it is filled again when control returns to the event loop, or when Refresh() is called.
class TListLink : public QObject
{
    Q_OBJECT
public:
    /// The list is owned by the caller, who owns the link too.
    TListLink(TKeyListModel &list, QObject *owner);

    /// The host owns the data source; a destroyed one is forgotten.
    TDataSource *ListSource() const { return m_source; }
    void setListSource(TDataSource *source);
    /// The fields of key and text; the first and the second field of the dataset while they are empty.
    /// Setting one that the open dataset does not have raises EDatabaseError, and the list is empty then.
    QString KeyField() const { return m_keyField; }
    void setKeyField(const QString &name);
    QString ListField() const { return m_listField; }
    void setListField(const QString &name);

    /// Fills the list if it is out of date.
    void Refresh();
    /// Closes the dataset, opens it again and fills the list. Raises what the dataset raises.
    void Reopen();

signals:
    void OnListAboutToChange();
    void OnListChange();

private:
    void follow();
    void outdate();
    void refreshShowing();
    void fill();
    TDataSet *dataSet() const { return m_source ? m_source->DataSet() : nullptr; }

    TKeyListModel &m_list;
    QPointer<TDataSource> m_source;
    QPointer<TDataSet> m_followed;
    QString m_keyField, m_listField;
    bool m_reopening = false;
    QTimer m_outdated; // runs while the list is out of date
};

} // namespace Zelmar01
