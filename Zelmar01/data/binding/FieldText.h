#pragma once

#include <Zelmar01/data/Field.h>

#include <QLocale>
#include <QString>
#include <QVariant>

namespace Zelmar01 {

/// What people see of a field's value, in the form of their country: "12,50", "28/02/2026 13:45", "Oui";
/// empty for null. Numbers have no separators between thousands and all their digits, so that FieldValueOf()
/// gives the same value back.
QString FieldTextOf(const QVariant &value, TFieldType type, const QLocale &locale);

/// The value that a person means by a text, in the field's type; invalid, which is null, for an empty one.
/// Raises EConvertError for a text that is none.
QVariant FieldValueOf(const QString &text, TFieldType type, const QLocale &locale);

} // namespace Zelmar01
