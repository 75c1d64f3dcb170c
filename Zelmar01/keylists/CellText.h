#pragma once

#include <Zelmar01/data/FieldDefs.h>

#include <QLocale>
#include <QVariant>

namespace Zelmar01 {

/// A value of a field as a cell shows it: what FieldTextOf() gives, amounts with the locale's separators
/// between thousands, a text of several lines as one.
QString CellText(const QVariant &value, TFieldType type, const QLocale &locale);

} // namespace Zelmar01
