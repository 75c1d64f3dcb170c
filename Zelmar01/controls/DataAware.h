#pragma once

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/binding/FieldLink.h>

#include <QKeyEvent>

namespace Zelmar01 {

/// Binds an editor of this room to a field, by a TFieldLink.
///
/// The editor shows the field of the current record and edits it; without a field it is empty and read-only.
/// What is typed is written when the user leaves the editor, on Enter, and before the record is posted or
/// left; what is picked is written at once. A value that the editor or the field refuses keeps the focus in
/// the editor, with a message. Escape gives back the value that the record had when the user came; cancelling
/// the record gives back all of it.
///
/// An Editor has EditValue(), setEditValue(), setReadOnly() and the signals OnChange, of what the user does,
/// and OnEditValueChanged, of what is finished. One that checks by itself what is typed when the user leaves
/// has leaveToBinding(), which ends that.
template<class Editor>
class TDataAware : public Editor
{
public:
    explicit TDataAware(QWidget *parent = nullptr)
        : Editor(parent), m_link(new TFieldLink(this, [this] { writeField(*Field()); }))
    {
        if constexpr (requires { this->leaveToBinding(); })
            this->leaveToBinding();
        QObject::connect(m_link, &TFieldLink::OnDataChange, this, [this] { show(); });
        QObject::connect(m_link, &TFieldLink::OnEditingChange, this, [this] { lock(); });
        QObject::connect(this, &Editor::OnChange, this,
                         [this] { ShowingExceptions([this] { m_link->Changed(); }); });
        QObject::connect(this, &Editor::OnEditValueChanged, this,
                         [this] { ShowingExceptions([this] { m_link->UpdateRecord(); }); });
        lock();
    }

    /// The data source and the field of its records. The host owns the data source. setDataField raises
    /// EDatabaseError when the open dataset has no such field.
    TDataSource *DataSource() const { return m_link->DataSource(); }
    void setDataSource(TDataSource *source) { m_link->setDataSource(source); }
    QString DataField() const { return m_link->FieldName(); }
    void setDataField(const QString &name) { m_link->setFieldName(name); }
    /// Null while there is none.
    TField *Field() const { return m_link->Field(); }

    /// Whether the user is kept from changing the value. He also is where the record or the field cannot be
    /// changed.
    bool ReadOnly() const { return m_link->ReadOnly(); }
    void setReadOnly(bool readOnly) { m_link->setReadOnly(readOnly); }

protected:
    /// Bring the value to the editor and to the field. They raise to refuse it.
    virtual void showField(const TField *field) { this->setEditValue(field ? field->Value() : QVariant()); }
    virtual void writeField(TField &field) { field.setValue(this->EditValue()); }
    /// Whether the Enter key ends the editing; else it belongs to the text.
    virtual bool endsByEnter() const { return true; }

    const TFieldLink &link() const { return *m_link; }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (!takesKey(event->key()))
            Editor::keyPressEvent(event);
    }

private:
    void show()
    {
        m_shown = false;
        ShowingExceptions([this] {
            showField(Field());
            m_shown = true;
        });
        if (!m_shown)
            ShowingExceptions([this] { showField(nullptr); });
        lock();
    }

    // Also while the field has a value that the editor cannot show: the user would overwrite it unseen.
    void lock() { Editor::setReadOnly(!m_shown || !m_link->CanEdit()); }

    bool takesKey(int key)
    {
        bool isDone = false;
        if (key == Qt::Key_Escape) {
            ShowingExceptions([&] { isDone = m_link->Restore(); });
            return isDone;
        }
        if ((key != Qt::Key_Return && key != Qt::Key_Enter) || !endsByEnter())
            return false;
        // A refused value must not reach the default button of a dialog.
        ShowingExceptions([&] {
            m_link->UpdateRecord();
            isDone = true;
        });
        return !isDone;
    }

    TFieldLink *m_link;
    bool m_shown = true;
};

} // namespace Zelmar01
