#include <Zelmar01/descrtree/Descr.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <charconv>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr QStringView separator = u"{@}";

QString takeValue(QStringView &rest)
{
    const auto end = rest.indexOf(separator);
    if (end < 0)
        throw EConvertError(
            Translate("Zelmar01", "Niveau incomplet : moins de six valeurs suivies de « {@} »"));
    auto value = rest.first(end).toString();
    rest = rest.sliced(end + separator.size());
    return value;
}

int takeInteger(QStringView &rest)
{
    const auto text = takeValue(rest).toStdString();
    if (const auto number = DescrInteger(text))
        return *number;
    throw EConvertError(Filled(Translate("Zelmar01", "Nombre entier attendu au lieu de « %1 »"), {text}));
}

} // namespace

TDescr::TDescr(int id, int idPere, QString libLong, QString libelle, QString libCourt, QString code)
    : ID(id), Libelle(std::move(libelle)), IDPere(idPere), LibLong(std::move(libLong)),
      LibCourt(std::move(libCourt)), Code(std::move(code))
{
}

TDescr::TDescr(const QString &chaine)
{
    QStringView rest(chaine);
    ID = takeInteger(rest);
    IDPere = takeInteger(rest);
    LibLong = takeValue(rest);
    Libelle = takeValue(rest);
    LibCourt = takeValue(rest);
    Code = takeValue(rest);
}

QString TDescr::ChaineObjet() const
{
    QString chaine;
    for (const auto &value : {QString::number(ID), QString::number(IDPere), LibLong, Libelle, LibCourt, Code})
        chaine.append(value).append(separator);
    return chaine + u'0';
}

std::optional<int> DescrInteger(std::string_view text)
{
    int number = 0;
    const auto *end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || at != end)
        return std::nullopt;
    return number;
}

} // namespace Zelmar01
