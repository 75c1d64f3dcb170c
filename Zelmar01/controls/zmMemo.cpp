#include <Zelmar01/controls/zmMemo.h>

#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/Field.h>

#include <QScopedValueRollback>

namespace Zelmar01 {

TzmMemo::TzmMemo(QWidget *parent) : TWithOwnFont(parent)
{
    UseMessageBoxes();
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            emit OnChange();
    });
}

QVariant TzmMemo::EditValue() const
{
    const auto text = toPlainText();
    return text.isEmpty() ? QVariant() : QVariant(text);
}

void TzmMemo::setEditValue(const QVariant &value)
{
    const auto text = TextOfValue(value);
    if (text == toPlainText())
        return; // the user's place in it stays
    const QScopedValueRollback showing(m_showing, true);
    setPlainText(text);
    emit OnEditValueChanged();
}

} // namespace Zelmar01
