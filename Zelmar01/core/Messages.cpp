#include <Zelmar01/core/Messages.h>

#include <Zelmar01/core/Translation.h>

namespace Zelmar01 {

std::string MessageText(TMessage message)
{
    switch (message) {
    case TMessage::DialogTaskNotActivated:
        return Translate("Zelmar01", "La tâche \"%s ne peut pas être activée\".");
    case TMessage::NoTaskScheduler:
        return Translate("Zelmar01", "Le gestionnaire de tâches planifiées est introuvable !");
    case TMessage::InvalidCode:
        return Translate("Zelmar01", "Code invalide : ");
    case TMessage::NoRightToCreate:
        return Translate("Zelmar01", "Vous n'avez pas les droits pour effectuer cette opération ");
    case TMessage::DiskFull:
        return Translate("Zelmar01", "Disque plein.");
    case TMessage::PortNotFound:
        return Translate("Zelmar01", "Port de l'imprimante ticket non trouvé");
    case TMessage::PortWriteFailed:
        return Translate("Zelmar01", "Problème d'écriture sur l'imprimante ticket !");
    case TMessage::DefaultPrinter:
        return "Par défaut"; // forms keep this name
    case TMessage::InvalidDate:
        return Translate("Zelmar01", "Date invalide");
    case TMessage::InvalidTime:
        return Translate("Zelmar01", "Heure invalide");
    case TMessage::NoMoreDepartments:
        return Translate("Zelmar01", "Nombre maximum de rayons atteint !");
    case TMessage::NoMoreSections:
        return Translate("Zelmar01", "Nombre maximum de rubriques atteint !");
    case TMessage::CodeNotAvailable:
        return Translate("Zelmar01", "Code non valide ou déjà utilisé !");
    case TMessage::LevelHasChildren:
        return Translate("Zelmar01", "Impossible de supprimer !\r\nCe code statistique a des \"enfants\" !");
    case TMessage::ConfirmLevelDeletion:
        return Translate("Zelmar01", "Voulez-vous supprimer ce niveau ?");
    case TMessage::LevelInUse:
        return Translate("Zelmar01", "Impossible de supprimer,\r\nCe code statistique est utilisé !");
    case TMessage::NoQueryLinked:
        return Translate("Zelmar01", "PAS DE REQUETE ASSOCIEE.");
    case TMessage::TaskNotActivated:
        return Translate("Zelmar01", "La tâche \"%s ne peut pas être activée\" !");
    case TMessage::TaskNotActive:
        return Translate("Zelmar01", "La tâche \"%s n'est pas active\" !");
    case TMessage::TaskExists:
        return Translate("Zelmar01", "Une tâche \"%s\" existe déjà !");
    case TMessage::TaskIndexOutOfRange:
        return Translate("Zelmar01", "L'index (%d) de la tâche est hors limite !");
    case TMessage::TriggerIndexOutOfRange:
        return Translate("Zelmar01", "L'index (%d) du déclencheur est hors limite !");
    case TMessage::SchedulerStopped:
        return Translate("Zelmar01", "Le gestionnaire de tâches planifiées est arrêté !");
    case TMessage::NoTriggerLine:
        return Translate("Zelmar01", "<La tâche n'a pas été planifiée>");
    case TMessage::NoTrigger:
        return Translate("Zelmar01", "La tâche n'a pas été planifiée");
    case TMessage::SeveralTriggers:
        return Translate("Zelmar01", "La tâche est planifiée plusieurs fois");
    case TMessage::NoPage:
        return Translate("Zelmar01", "Une page, au moins, doit être spécifiée.");
    }
    return {};
}

} // namespace Zelmar01
