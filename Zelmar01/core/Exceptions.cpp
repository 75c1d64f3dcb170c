#include <Zelmar01/core/Exceptions.h>

#include <Zelmar01/core/Translation.h>

#include <cerrno>
#include <system_error>

namespace Zelmar01 {

namespace {

std::string reasonOf(int code)
{
    switch (code) {
    case ENOENT:
        return Translate("Zelmar01", "n'existe pas");
    case EACCES:
    case EPERM:
        return Translate("Zelmar01", "accès refusé");
    case EROFS:
        return Translate("Zelmar01", "en lecture seule");
    case EISDIR:
        return Translate("Zelmar01", "est un dossier");
    case EBUSY:
    case EWOULDBLOCK:
        return Translate("Zelmar01", "en cours d'utilisation");
    case ENOSPC:
        return Translate("Zelmar01", "plus de place");
    case EIO:
        return Translate("Zelmar01", "erreur d'entrée-sortie");
    case ENXIO:
    case ENODEV:
        return Translate("Zelmar01", "aucun périphérique derrière ce nom");
    case EPIPE:
        return Translate("Zelmar01", "l'autre bout s'est fermé");
    case ETIMEDOUT:
        return Translate("Zelmar01", "ne répond plus dans le temps accordé");
    default:
        return std::generic_category().message(code);
    }
}

} // namespace

std::string TSystemCause::Words() const
{
    return Remedy.empty() ? Text : Text + " (" + Remedy + ")";
}

TSystemCause CauseFromErrno(int code, const std::string &subject)
{
    return {code, subject + " : " + reasonOf(code), {}};
}

const TSystemCause *CauseOf(const std::exception &exception)
{
    const auto *known = dynamic_cast<const Exception *>(&exception);
    return known && !known->Cause().Text.empty() ? &known->Cause() : nullptr;
}

} // namespace Zelmar01
