#pragma once

#include <QLineEdit>
#include <QVariant>

namespace Zelmar01 {

class TLeaveCheck;

/// A line edit on a value that people see and type as a text: what the edits of text, amounts and dates have
/// in common.
///
/// The value in force is EditValue(). What the user types becomes the value on Enter and when the edit is
/// left, and is then shown in its usual form; a text that stands for no value is refused: the focus stays in
/// the edit, with a message. A click on a button is not held up, though: a dialog reads EditValue(), which
/// raises, before it closes. Escape gives back the value in force. While the edit has the focus it may show
/// the value in a form that is easier to type. A click into it selects all, as the Tab key does.
class TValueEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool ReadOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly DESIGNABLE false STORED false)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   USER true DESIGNABLE false STORED false)
public:
    explicit TValueEdit(QWidget *parent = nullptr);

    /// The value: of what the user has typed, if he has. Invalid for null. Raises EConvertError when the text
    /// stands for no value.
    QVariant EditValue() const;
    /// Shows a value. Raises EConvertError for one that the edit cannot hold.
    void setEditValue(const QVariant &value);

signals:
    /// The user has changed the text.
    void OnChange();
    /// There is a new value: the user has finished, or a host has set it.
    void OnEditValueChanged();

protected:
    /// The text of a value; `typing` while the user is in the edit.
    virtual QString textOf(const QVariant &value, bool typing) const = 0;
    /// The value of a text. Raises EConvertError.
    virtual QVariant valueOf(const QString &text) const = 0;
    /// A value brought to the type that the edit holds. Raises EConvertError.
    virtual QVariant held(const QVariant &value) const = 0;
    /// The input mask while the user is in the edit; empty for none.
    virtual QString typingMask() const { return {}; }
    /// Takes a text from elsewhere as a whole; false to have it typed into the edit.
    virtual bool takePasted(const QString &) { return false; }

    /// The value that was in force when the user began to type.
    const QVariant &valueInForce() const { return m_value; }
    bool isTyping() const { return m_typing; }
    /// Gives the edit a value that the user has chosen, as if it had been typed and finished.
    void choose(const QVariant &value);
    /// Takes what the user has typed as the value. Raises EConvertError.
    void finish();
    /// Shows the value again, when the way it is shown has changed.
    void showValue();
    /// The value is bound to a field: the binding looks after what is typed when the user leaves.
    void leaveToBinding();

    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void paste();
    bool takesKey(const QKeyEvent &event);

    QVariant m_value;
    bool m_typed = false;  // the text is the user's, and not the value's yet
    bool m_typing = false; // the user is in the edit
    bool m_comesByClick = false;
    TLeaveCheck *m_leave;
};

} // namespace Zelmar01
