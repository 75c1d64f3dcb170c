#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace Zelmar01 {

/// One level of the hierarchy of statistical codes: a department (rayon) or a section (rubrique).
struct TDescr
{
    int ID = 0;       ///< identifier, DESCR_ART_ID
    QString Libelle;  ///< label, DESCR_ART_LIBELLE
    int IDPere = 0;   ///< identifier of the parent level, 0 for a department, DESCR_ART_ID_PERE
    QString LibLong;  ///< the labels from the department down to this level, DESCR_ART_LIB_LONG
    QString LibCourt; ///< short label, DESCR_ART_LIB_COURT
    QString Code;     ///< statistical code, DESCR_ART_CODE

    TDescr() = default;

    /// The order of the arguments is that of the text form, not that of the fields.
    TDescr(int id, int idPere, QString libLong, QString libelle, QString libCourt, QString code);

    /// The inverse of ChaineObjet(); what follows the sixth separator is ignored. Raises EConvertError for a
    /// text with fewer separators and for an identifier that is not a 32-bit number in plain decimal.
    explicit TDescr(const QString &chaine);

    /// The text form in one line: ID, IDPere, LibLong, Libelle, LibCourt and Code, each followed by "{@}",
    /// and "0". Nothing is escaped: a text that holds "{@}" itself does not come back.
    QString ChaineObjet() const;

    bool operator==(const TDescr &) const = default;
};

/// What stands behind each value of the text form.
inline constexpr std::string_view DescrSeparator = "{@}";

/// The number that a text stands for: plain decimal, an optional "-" before it and nothing else, of 32 bits.
std::optional<int> DescrInteger(std::string_view text);

} // namespace Zelmar01
