#pragma once

#include <Zelmar01/printing/PrnCodeNotation.h>

#include <QLineEdit>

class QMenu;

namespace Zelmar01 {

/// The box of one code. In character notation its menu has the characters that no keyboard has, and Ctrl with
/// a key types a control code as on a terminal (Ctrl+G is BEL) where that is no editing key.
class TPrnCodeBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit TPrnCodeBox(QWidget *parent = nullptr);

    /// Shows a code, from now on in that notation.
    void ShowCode(TCodeNotation notation, std::string_view code);
    TCodeNotation Notation() const { return m_notation; }

    /// The code that stands in the box, of any length. Raises EConvertError.
    std::string Code() const { return CodeOfText(m_notation, text()); }

signals:
    /// The focus came to the box.
    void OnEnter();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addCharacters(QMenu &menu, const QString &title, int first, int last);

    TCodeNotation m_notation = TCodeNotation::Hexadecimal;
};

} // namespace Zelmar01
