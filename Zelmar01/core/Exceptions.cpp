#include <Zelmar01/core/Exceptions.h>

#include <cerrno>
#include <system_error>

namespace Zelmar01 {

namespace {

std::string reasonOf(int code)
{
    switch (code) {
    case ENOENT:
        return "n'existe pas";
    case EACCES:
    case EPERM:
        return "accès refusé";
    case EROFS:
        return "en lecture seule";
    case EISDIR:
        return "est un dossier";
    case EBUSY:
    case EWOULDBLOCK:
        return "en cours d'utilisation";
    case ENOSPC:
        return "plus de place";
    case EIO:
        return "erreur d'entrée-sortie";
    case ENXIO:
    case ENODEV:
        return "aucun périphérique derrière ce nom";
    case EPIPE:
        return "l'autre bout s'est fermé";
    case ETIMEDOUT:
        return "ne répond plus dans le temps accordé";
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
