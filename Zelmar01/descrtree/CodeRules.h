#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Zelmar01 {

/// The rules of the statistical codes. The code of a department is one digit, 1 to 9; the code of a section
/// is that of its parent and one more character, a digit or a letter. Codes are stored in upper case and
/// compared without regard to case.

/// Where a code stands: the code of its parent, or none for a department.
using TParentCode = std::optional<QString>;

/// Whether a code has the form of a child of `parent`. The length and the last character alone are tested: a
/// code need not begin with its parent's.
bool IsCodeForm(const TParentCode &parent, const QString &code);

/// Whether the database may be asked for a code of the right form. The code becomes part of the query as it
/// stands, so one that holds an apostrophe is answered "not available" without a query.
bool MayBeQueried(const QString &code);

/// The next free code under `parent`, in upper case; empty when none is left. `codes` are the codes in use
/// there, in the order of the database: ascending, digits before letters, without regard to case. The walk
/// ends at the first code that differs from the expected one, so freed codes are used again lowest first.
/// What it finds at such a gap is not tested further: departments 1 to 9 and a stray C yield A.
QString NextFreeCode(const TParentCode &parent, const QStringList &codes);

/// A text in upper or lower case as far as Windows-1252 has the letter in both; its length does not change.
QString UpperCode(const QString &code);
QString LowerCode(const QString &code);

} // namespace Zelmar01
