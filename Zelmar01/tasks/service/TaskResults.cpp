#include <Zelmar01/tasks/service/TaskResults.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Zelmar01 {

namespace {

struct TResultWords
{
    TTaskResult Result;
    const char *Name;
    const char *Text;
};

const TResultWords resultWords[] = {
    {TaskResult::Ok, "S_OK", "L'opération a réussi."},
    {TaskResult::False, "S_FALSE", "L'opération a réussi en partie."},
    {TaskResult::TaskReady, "SCHED_S_TASK_READY", "La tâche est prête pour sa prochaine exécution."},
    {TaskResult::TaskRunning, "SCHED_S_TASK_RUNNING", "La tâche est en cours d'exécution."},
    {TaskResult::TaskDisabled, "SCHED_S_TASK_DISABLED", "La tâche est désactivée."},
    {TaskResult::TaskHasNotRun, "SCHED_S_TASK_HAS_NOT_RUN", "La tâche n'a pas encore été exécutée."},
    {TaskResult::TaskNoMoreRuns, "SCHED_S_TASK_NO_MORE_RUNS",
     "Plus aucune exécution de la tâche n'est prévue."},
    {TaskResult::TaskNotScheduled, "SCHED_S_TASK_NOT_SCHEDULED", "La tâche n'est pas planifiée."},
    {TaskResult::TaskTerminated, "SCHED_S_TASK_TERMINATED",
     "La dernière exécution de la tâche a été arrêtée."},
    {TaskResult::TaskNoValidTriggers, "SCHED_S_TASK_NO_VALID_TRIGGERS",
     "La tâche n'a aucun déclencheur, ou tous sont désactivés ou sans effet."},
    {TaskResult::EventTrigger, "SCHED_S_EVENT_TRIGGER",
     "La tâche démarre sur un événement et non à une heure fixée."},
    {TaskResult::TriggerNotFound, "SCHED_E_TRIGGER_NOT_FOUND", "Ce déclencheur de la tâche n'existe pas."},
    {TaskResult::TaskNotReady, "SCHED_E_TASK_NOT_READY",
     "La tâche ne peut pas encore être exécutée : elle n'est pas enregistrée ou n'a aucun déclencheur."},
    {TaskResult::TaskNotRunning, "SCHED_E_TASK_NOT_RUNNING", "La tâche n'est pas en cours d'exécution."},
    {TaskResult::ServiceNotInstalled, "SCHED_E_SERVICE_NOT_INSTALLED",
     "Le gestionnaire de tâches planifiées n'est pas installé."},
    {TaskResult::CannotOpenTask, "SCHED_E_CANNOT_OPEN_TASK", "La tâche ne peut pas être ouverte."},
    {TaskResult::InvalidTask, "SCHED_E_INVALID_TASK", "Le fichier n'est pas celui d'une tâche valide."},
    {TaskResult::AccountInformationNotSet, "SCHED_E_ACCOUNT_INFORMATION_NOT_SET",
     "Aucun compte n'est indiqué pour la tâche."},
    {TaskResult::AccountNameNotFound, "SCHED_E_ACCOUNT_NAME_NOT_FOUND", "Le compte indiqué n'existe pas."},
    {TaskResult::AccountDbaseCorrupt, "SCHED_E_ACCOUNT_DBASE_CORRUPT",
     "La base des comptes du gestionnaire de tâches est endommagée."},
    {TaskResult::NoSecurityServices, "SCHED_E_NO_SECURITY_SERVICES",
     "Ce système n'offre pas de comptes pour les tâches."},
    {TaskResult::UnknownObjectVersion, "SCHED_E_UNKNOWN_OBJECT_VERSION",
     "La version du fichier de la tâche est inconnue."},
    {TaskResult::UnsupportedAccountOption, "SCHED_E_UNSUPPORTED_ACCOUNT_OPTION",
     "Ce compte ne peut pas être employé de cette façon."},
    {TaskResult::ServiceNotRunning, "SCHED_E_SERVICE_NOT_RUNNING",
     "Le gestionnaire de tâches planifiées est arrêté."},
    {TaskResult::AlreadyRunning, "SCHED_E_ALREADY_RUNNING", "La tâche est déjà en cours d'exécution."},
    {TaskResult::NotImplemented, "E_NOTIMPL", "Cette opération n'existe pas ici."},
    {TaskResult::NoInterface, "E_NOINTERFACE", "Cet objet n'a pas l'interface demandée."},
    {TaskResult::Pointer, "E_POINTER", "Un résultat demandé n'a pas d'emplacement."},
    {TaskResult::Fail, "E_FAIL", "L'opération a échoué."},
    {TaskResult::Unexpected, "E_UNEXPECTED", "L'opération a échoué de façon inattendue."},
    {TaskResult::NotFileBasedStorage, "STG_E_NOTFILEBASEDSTORAGE",
     "La tâche n'a pas encore été enregistrée dans un fichier."},
    {TaskResult::ClassNotAvailable, "CLASS_E_CLASSNOTAVAILABLE", "Cette classe d'objets n'existe pas ici."},
    {TaskResult::ClassNotRegistered, "REGDB_E_CLASSNOTREG",
     "Le gestionnaire de tâches planifiées n'est pas inscrit sur ce système."},
    {TaskResult::FileNotFound, "ERROR_FILE_NOT_FOUND", "Le fichier n'existe pas."},
    {TaskResult::PathNotFound, "ERROR_PATH_NOT_FOUND", "Le dossier n'existe pas."},
    {TaskResult::AccessDenied, "E_ACCESSDENIED", "L'accès est refusé."},
    {TaskResult::InvalidData, "ERROR_INVALID_DATA", "Le fichier de la tâche est endommagé."},
    {TaskResult::OutOfMemory, "E_OUTOFMEMORY", "La mémoire est insuffisante."},
    {TaskResult::WriteFault, "ERROR_WRITE_FAULT", "L'écriture du fichier a échoué."},
    {TaskResult::ReadFault, "ERROR_READ_FAULT", "La lecture du fichier a échoué."},
    {TaskResult::SharingViolation, "ERROR_SHARING_VIOLATION",
     "Le fichier est employé par un autre programme."},
    {TaskResult::HandleEndOfFile, "ERROR_HANDLE_EOF", "Le fichier de la tâche est incomplet."},
    {TaskResult::NotSupported, "ERROR_NOT_SUPPORTED", "Cette demande n'est pas possible sur ce système."},
    {TaskResult::BadNetPath, "ERROR_BAD_NETPATH", "Cet ordinateur est introuvable."},
    {TaskResult::FileExists, "ERROR_FILE_EXISTS", "Le fichier existe déjà."},
    {TaskResult::InvalidArgument, "E_INVALIDARG", "Une valeur n'est pas permise."},
    {TaskResult::DiskFull, "ERROR_DISK_FULL", "Le disque est plein."},
    {TaskResult::InvalidName, "ERROR_INVALID_NAME", "Le nom du fichier n'est pas permis."},
};

const TResultWords *wordsOf(TTaskResult result)
{
    const auto *const found = std::find_if(std::begin(resultWords), std::end(resultWords),
                                           [=](const auto &words) { return words.Result == result; });
    return found == std::end(resultWords) ? nullptr : found;
}

} // namespace

std::string ResultName(TTaskResult result)
{
    if (const auto *const words = wordsOf(result))
        return words->Name;
    char text[11];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(result));
    return text;
}

std::string ResultText(TTaskResult result)
{
    const auto *const words = wordsOf(result);
    return words ? words->Text : std::string();
}

} // namespace Zelmar01
