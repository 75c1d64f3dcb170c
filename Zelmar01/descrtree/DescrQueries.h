#pragma once

#include <QString>

namespace Zelmar01 {

/// The queries on the table descr_article, to the letter. They carry the hint "with (nolock)", which only SQL
/// Server knows; the connection takes it out for the other engines.

/// All levels in ascending order of their codes: the columns DESCR_ART_ID, DESCR_ART_ID_PERE, DESCR_ART_CODE,
/// DESCR_ART_LIBELLE, DESCR_ART_LIB_LONG and DESCR_ART_LIB_COURT.
QString LevelsQuery();

/// The number of levels.
QString CountQuery();

/// The codes of the children of a level, ascending; identifier 0 asks for the departments.
QString ChildCodesQuery(int id);

/// The rows of any place in the table that carry a code, which goes into the text as it stands: see
/// MayBeQueried() (CodeRules.h).
QString CodeQuery(const QString &code);

} // namespace Zelmar01
