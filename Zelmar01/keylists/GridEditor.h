#pragma once

#include <Zelmar01/data/binding/FieldLink.h>
#include <Zelmar01/keylists/GridColumns.h>

#include <QLineEdit>

class QKeyEvent;

namespace Zelmar01 {

/// The in-place editor of a grid: a line edit over the current cell, bound to the cell's field. What is typed
/// brings the dataset into edit state, and goes to the field when the editor is left or ended, and before the
/// record is posted or left.
class TGridEditor : public QLineEdit
{
    Q_OBJECT
public:
    /// `viewport` is that of the grid.
    explicit TGridEditor(QWidget *viewport);

    void setDataSource(TDataSource *source) { m_link->setDataSource(source); }

    /// Shows it on the field of a column, with the field's value chosen as a whole.
    void Open(const TGridColumn &column);
    bool IsOpen() const { return m_isOpen; }
    /// Whether it holds a value that its field does not have yet.
    bool IsChanged() const { return m_isOpen && m_link->IsChanged(); }
    /// Replaces the text, as if the user had typed it.
    void Type(const QString &text);
    /// Writes a changed value to the field. Raises when it is refused; the editor then has the focus.
    void Commit() { m_link->UpdateRecord(); }
    /// Takes back what was typed since it was opened; false when nothing was.
    bool Restore() { return m_link->Restore(); }
    /// Gives it the focus, if it is open.
    void TakeFocus();
    /// Hides it; a changed value is lost.
    void Close();

signals:
    /// A key that the grid may take; it ignores one that is the editor's after all.
    void OnKey(QKeyEvent *event);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    void write();
    void showField();

    TFieldLink *m_link;
    QString m_shown; // what the field's value looks like
    bool m_isOpen = false, m_isClosing = false;
};

} // namespace Zelmar01
