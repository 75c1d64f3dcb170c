#include <Zelmar01/controls/zmTextEdit.h>

#include <Zelmar01/data/binding/FieldText.h>

namespace Zelmar01 {

QString TzmEdit::textOf(const QVariant &value, bool) const
{
    return value.toString();
}

QVariant TzmEdit::valueOf(const QString &text) const
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QVariant TzmEdit::held(const QVariant &value) const
{
    return TextOfValue(value);
}

QString TzmDBEdit::textOf(const QVariant &value, bool) const
{
    return FieldTextOf(value, Field() ? Field()->DataType() : ftString, locale());
}

QVariant TzmDBEdit::valueOf(const QString &text) const
{
    return FieldValueOf(text, Field() ? Field()->DataType() : ftString, locale());
}

} // namespace Zelmar01
