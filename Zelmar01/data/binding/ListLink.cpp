#include <Zelmar01/data/binding/ListLink.h>

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QScopeGuard>
#include <QScopedValueRollback>

namespace Zelmar01 {

TListLink::TListLink(TKeyListModel &list, QObject *owner) : QObject(owner), m_list(list)
{
    m_outdated.setSingleShot(true);
    connect(&m_outdated, &QTimer::timeout, this, [this] {
        outdate(); // until Refresh() has seen it
        refreshShowing();
    });
}

void TListLink::setListSource(TDataSource *source)
{
    if (m_source == source)
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (source) {
        connect(source, &TDataSource::DataSetReplaced, this, [this] {
            follow();
            refreshShowing();
        });
        connect(source, &QObject::destroyed, this, [this] {
            follow();
            refreshShowing();
        });
    }
    follow();
    Refresh();
}

void TListLink::setKeyField(const QString &name)
{
    m_keyField = name;
    outdate();
    Refresh();
}

void TListLink::setListField(const QString &name)
{
    m_listField = name;
    outdate();
    Refresh();
}

void TListLink::follow()
{
    if (m_followed)
        m_followed->disconnect(this);
    m_followed = dataSet();
    if (m_followed) {
        connect(m_followed, &TDataSet::AfterOpen, this, &TListLink::refreshShowing);
        connect(m_followed, &TDataSet::AfterClose, this, &TListLink::refreshShowing);
        connect(m_followed, &TDataSet::RowsReset, this, &TListLink::outdate);
        connect(m_followed, &TDataSet::AfterPost, this, &TListLink::outdate);
        connect(m_followed, &TDataSet::AfterDelete, this, &TListLink::outdate);
    }
    outdate();
}

void TListLink::outdate()
{
    m_outdated.start(0);
}

void TListLink::refreshShowing()
{
    ShowingExceptions([this] { Refresh(); });
}

void TListLink::Refresh()
{
    if (!m_outdated.isActive() || m_reopening)
        return;
    m_outdated.stop();
    emit OnListAboutToChange();
    const auto changed = qScopeGuard([this] { emit OnListChange(); });
    fill();
}

void TListLink::fill()
{
    const auto *rows = dataSet();
    m_list.Clear();
    if (!rows || !rows->Active())
        return;
    const auto &key = m_keyField.isEmpty() ? rows->Fields()[0] : rows->FieldByName(m_keyField);
    const auto &text = m_listField.isEmpty() ? rows->Fields()[1] : rows->FieldByName(m_listField);
    m_list.Fill(rows->ColumnOf(key), rows->ColumnOf(text));
}

void TListLink::Reopen()
{
    if (auto *rows = dataSet()) {
        const QScopedValueRollback quiet(m_reopening, true);
        rows->Close();
        rows->Open();
    }
    outdate();
    Refresh();
}

} // namespace Zelmar01
