#include <Zelmar01/keylists/DBComboBoxEditFk.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/DataErrors.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>
#include <QWheelEvent>

#include <utility>

namespace Zelmar01 {

TDBComboBoxEditFk::TDBComboBoxEditFk(QWidget *parent)
    : TComboBoxFk(parent), m_link(new TFieldLink(this, [this] { writeKey(); })),
      m_listLink(new TListLink(list(), this))
{
    connect(m_link, &TFieldLink::OnDataChange, this, &TDBComboBoxEditFk::showField);
    connect(m_link, &TFieldLink::OnEditingChange, this, &TDBComboBoxEditFk::showEditing);
    connect(m_listLink, &TListLink::OnListAboutToChange, this, &TDBComboBoxEditFk::keepEditor);
    connect(m_listLink, &TListLink::OnListChange, this, &TDBComboBoxEditFk::showNewList);
    connect(this, &QComboBox::activated, this, [this] { ShowingExceptions([this] { pick(); }); });
}

void TDBComboBoxEditFk::RafraichirListe()
{
    m_listLink->Reopen();
}

void TDBComboBoxEditFk::RemplirListe(TDataSet &dataSet, bool reopen)
{
    keepEditor();
    const auto show = qScopeGuard([this] { showNewList(); });
    TComboBoxFk::RemplirListe(dataSet, reopen);
}

void TDBComboBoxEditFk::RemplirListe(const QStringList &cles, const QStringList &libelles)
{
    keepEditor();
    const auto show = qScopeGuard([this] { showNewList(); });
    TComboBoxFk::RemplirListe(cles, libelles);
}

void TDBComboBoxEditFk::keepEditor()
{
    const auto *editor = lineEdit();
    if (editor)
        m_kept = {editor->text(), m_link->IsChanged() && currentIndex() < 0, editor->cursorPosition(),
                  editor->selectionStart(), editor->selectionLength()};
}

void TDBComboBoxEditFk::showNewList()
{
    const auto kept = std::exchange(m_kept, std::nullopt);
    if (kept && kept->IsTyped)
        setEditText(kept->Text);
    else if (isBound())
        showField();
    if (!kept || !lineEdit() || currentText() != kept->Text)
        return;
    lineEdit()->setCursorPosition(kept->Cursor);
    if (kept->SelectionLength > 0)
        lineEdit()->setSelection(kept->SelectionStart, kept->SelectionLength);
}

void TDBComboBoxEditFk::showField()
{
    showEditing();
    const auto *field = m_link->Field();
    const auto key = field ? field->AsString() : QString();
    TComboBoxFk::SelectionnerCle(key);
    if (currentIndex() < 0)
        setEditText(key);
}

void TDBComboBoxEditFk::showEditing()
{
    if (lineEdit())
        lineEdit()->setReadOnly(!canChange());
}

void TDBComboBoxEditFk::SelectionnerCle(const QString &cle)
{
    m_listLink->Refresh();
    if (!isBound())
        return TComboBoxFk::SelectionnerCle(cle);
    if (list().RowOfKey(cle) < 0)
        return;
    if (!m_link->CanEdit())
        throw EDatabaseError(tr("Le champ « %1 » ne peut pas être modifié").arg(DataField()).toStdString());
    TComboBoxFk::SelectionnerCle(cle);
    pick();
}

// The current entry is the user's choice.
void TDBComboBoxEditFk::pick()
{
    const auto *field = m_link->Field();
    if (!isBound() || (field && !m_link->IsChanged() && field->AsString() == DonnerCle()))
        return;
    if (m_link->Changed())
        m_link->UpdateRecord();
}

void TDBComboBoxEditFk::writeKey()
{
    if (currentIndex() < 0)
        m_listLink->Refresh();
    auto &field = *m_link->Field();
    const auto text = currentText();
    const int row = currentIndex() >= 0 ? currentIndex() : list().RowOfText(text);
    if (row < 0 && text == field.AsString())
        return; // the key that no entry has, or null, as it was
    if (row < 0 && !text.isEmpty())
        throw EDatabaseError(tr("« %1 » ne figure pas dans la liste").arg(text).toStdString());
    const auto key = row < 0 ? QString() : list().Key(row);
    if (key == field.AsString())
        return;
    key.isEmpty() ? field.Clear() : field.setAsString(key);
    emit OnChgtID(this, key.toLongLong());
}

void TDBComboBoxEditFk::DoExit()
{
    // The link looks a typed text up.
    if (!isBound())
        TComboBoxFk::DoExit();
}

void TDBComboBoxEditFk::Typed()
{
    if (isBound())
        m_link->Changed();
}

void TDBComboBoxEditFk::showPopup()
{
    ShowingExceptions([this] { m_listLink->Refresh(); });
    if (canChange())
        TComboBoxFk::showPopup();
}

void TDBComboBoxEditFk::keyPressEvent(QKeyEvent *event)
{
    if (!takesKey(*event))
        TComboBoxFk::keyPressEvent(event);
}

bool TDBComboBoxEditFk::takesKey(QKeyEvent &event)
{
    bool isDone = false;
    switch (event.key()) {
    case Qt::Key_Escape:
        ShowingExceptions([&] { isDone = m_link->Restore(); });
        return isDone;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A refused text must not reach the default button of a dialog.
        ShowingExceptions([&] {
            m_link->UpdateRecord();
            isDone = true;
        });
        return !isDone;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    default:
        if (isEditable())
            return false;
    }
    ShowingExceptions([this] { m_listLink->Refresh(); });
    if (!canChange())
        event.ignore();
    return !canChange();
}

// A wheel that scrolls the form must not change the record.
void TDBComboBoxEditFk::wheelEvent(QWheelEvent *event)
{
    if (!hasFocus() || !canChange())
        return event->ignore();
    ShowingExceptions([this] { m_listLink->Refresh(); });
    TComboBoxFk::wheelEvent(event);
}

} // namespace Zelmar01
