#include <Zelmar01/data/binding/FieldLink.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/binding/LeaveCheck.h>

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <utility>

namespace Zelmar01 {

TFieldLink::TFieldLink(QWidget *control, std::function<void()> write)
    : QObject(control), m_write(std::move(write))
{
    const auto leave = [this] {
        update();
        m_before.reset();
        m_written = false;
    };
    m_leave = new TLeaveCheck(control, leave, [this] { return m_changed; });
}

void TFieldLink::setDataSource(TDataSource *source)
{
    if (m_source == source)
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    if (source) {
        connect(source, &TDataSource::DataSetReplaced, this, &TFieldLink::follow);
        connect(source, &TDataSource::OnStateChange, this, &TFieldLink::OnEditingChange);
        connect(source, &TDataSource::AutoEditChanged, this, &TFieldLink::OnEditingChange);
        connect(source, &TDataSource::OnDataChange, this, [this](TDataSource *, const TField *field) {
            showField(field);
            if (!field)
                ShowingExceptions([this] { requireField(); });
        });
        connect(source, &TDataSource::OnUpdateData, this,
                [this](TDataSource *, QString &refusal) { takeUpdate(refusal); });
        connect(source, &QObject::destroyed, this, &TFieldLink::follow);
    }
    m_missingTold = false;
    follow();
    requireField();
}

void TFieldLink::setFieldName(const QString &name)
{
    if (m_fieldName == name)
        return;
    m_fieldName = name;
    m_missingTold = false;
    follow();
    requireField();
}

void TFieldLink::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    emit OnEditingChange();
}

TField *TFieldLink::Field() const
{
    const auto *dataSet = DataSet();
    return dataSet && dataSet->Active() ? dataSet->FindField(m_fieldName) : nullptr;
}

// Raises for a dataset without the field, once.
void TFieldLink::requireField()
{
    const bool missing = DataSet() && DataSet()->Active() && !m_fieldName.isEmpty() && !Field();
    if (missing && !std::exchange(m_missingTold, true))
        DataSet()->FieldByName(m_fieldName);
    m_missingTold = missing;
}

bool TFieldLink::CanEdit() const
{
    const auto *field = Field();
    if (m_readOnly || !field || field->ReadOnly())
        return false;
    if (m_source->State() != dsBrowse)
        return true;
    try {
        return m_source->AutoEdit() && DataSet()->CanModify();
    } catch (const std::exception &) {
        return true; // the attempt will say why the database does not answer
    }
}

bool TFieldLink::Edit()
{
    if (!CanEdit())
        return false;
    const QScopedValueRollback keepShown(m_beginning, true);
    return m_source->Edit();
}

bool TFieldLink::Changed()
{
    auto showAgain = qScopeGuard([this] { emit OnDataChange(); });
    if (!Edit())
        return false;
    showAgain.dismiss();
    if (!m_before)
        m_before = Field()->Value();
    m_changed = true;
    return true;
}

void TFieldLink::UpdateRecord()
{
    auto returnFocus = qScopeGuard([this] { m_leave->Return(); });
    update();
    returnFocus.dismiss();
}

void TFieldLink::update()
{
    if (!m_changed)
        return;
    m_write();
    m_changed = false;
    m_written = true;
    emit OnDataChange();
}

bool TFieldLink::Restore()
{
    if (!m_before)
        return false;
    const auto before = *std::exchange(m_before, std::nullopt);
    m_changed = false;
    if (std::exchange(m_written, false) && Field() && m_source->State() != dsBrowse)
        Field()->setValue(before);
    emit OnDataChange();
    return true;
}

void TFieldLink::follow()
{
    showField(nullptr);
    emit OnEditingChange();
}

// Without a field: the whole record is another.
void TFieldLink::showField(const TField *changed)
{
    if (m_beginning || (changed && changed != Field()))
        return;
    m_changed = false;
    if (!changed) {
        m_before.reset();
        m_written = false;
    }
    emit OnDataChange();
}

void TFieldLink::takeUpdate(QString &refusal)
{
    if (!refusal.isEmpty())
        return;
    try {
        UpdateRecord();
    } catch (const std::exception &error) {
        m_leave->Forget(); // who asked for the post tells it
        refusal = QString::fromUtf8(error.what());
    }
}

} // namespace Zelmar01
