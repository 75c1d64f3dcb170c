#include <Zelmar01/core/Messages.h>

namespace Zelmar01 {

std::string MessageText(TMessage message)
{
    switch (message) {
    case TMessage::DialogTaskNotActivated:
        return "La tâche \"%s ne peut pas être activée\".";
    case TMessage::NoTaskScheduler:
        return "Le gestionnaire de tâches planifiées est introuvable !";
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
    case TMessage::NoMoreDepartments:
        return "Nombre maximum de rayons atteint !";
    case TMessage::NoMoreSections:
        return "Nombre maximum de rubriques atteint !";
    case TMessage::CodeNotAvailable:
        return "Code non valide ou déjà utilisé !";
    case TMessage::LevelHasChildren:
        return "Impossible de supprimer !\r\nCe code statistique a des \"enfants\" !";
    case TMessage::ConfirmLevelDeletion:
        return "Voulez-vous supprimer ce niveau ?";
    case TMessage::LevelInUse:
        return "Impossible de supprimer,\r\nCe code statistique est utilisé !";
    case TMessage::NoQueryLinked:
        return "PAS DE REQUETE ASSOCIEE.";
    case TMessage::TaskNotActivated:
        return "La tâche \"%s ne peut pas être activée\" !";
    case TMessage::TaskNotActive:
        return "La tâche \"%s n'est pas active\" !";
    case TMessage::TaskExists:
        return "Une tâche \"%s\" existe déjà !";
    case TMessage::TaskIndexOutOfRange:
        return "L'index (%d) de la tâche est hors limite !";
    case TMessage::TriggerIndexOutOfRange:
        return "L'index (%d) du déclencheur est hors limite !";
    case TMessage::SchedulerStopped:
        return "Le gestionnaire de tâches planifiées est arrêté !";
    case TMessage::NoTriggerLine:
        return "<La tâche n'a pas été planifiée>";
    case TMessage::NoTrigger:
        return "La tâche n'a pas été planifiée";
    case TMessage::SeveralTriggers:
        return "La tâche est planifiée plusieurs fois";
    case TMessage::NoPage:
        return "Une page, au moins, doit être spécifiée.";
    }
    return {};
}

} // namespace Zelmar01
