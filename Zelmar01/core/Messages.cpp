#include <Zelmar01/core/Messages.h>

namespace Zelmar01 {

std::string MessageText(TMessage message)
{
    switch (message) {
    case TMessage::InvalidCode:
        return "Code invalide : ";
    case TMessage::NoRightToCreate:
        return "Vous n'avez pas les droits pour effectuer cette opération ";
    case TMessage::DiskFull:
        return "Disque plein.";
    case TMessage::PortNotFound:
        return "Port de l'imprimante ticket non trouvé";
    case TMessage::PortWriteFailed:
        return "Problème d'écriture sur l'imprimante ticket !";
    case TMessage::DefaultPrinter:
        return "Par défaut";
    case TMessage::InvalidDate:
        return "Date invalide";
    case TMessage::InvalidTime:
        return "Heure invalide";
    }
    return {};
}

} // namespace Zelmar01
