#include <Zelmar01/tasks/service/TaskResults.h>

#include <Zelmar01/core/Translation.h>

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
    {TaskResult::Ok, "S_OK", Translatable("Zelmar01", "L'opération a réussi.")},
    {TaskResult::False, "S_FALSE", Translatable("Zelmar01", "L'opération a réussi en partie.")},
    {TaskResult::TaskReady, "SCHED_S_TASK_READY",
     Translatable("Zelmar01", "La tâche est prête pour sa prochaine exécution.")},
    {TaskResult::TaskRunning, "SCHED_S_TASK_RUNNING",
     Translatable("Zelmar01", "La tâche est en cours d'exécution.")},
    {TaskResult::TaskDisabled, "SCHED_S_TASK_DISABLED", Translatable("Zelmar01", "La tâche est désactivée.")},
    {TaskResult::TaskHasNotRun, "SCHED_S_TASK_HAS_NOT_RUN",
     Translatable("Zelmar01", "La tâche n'a pas encore été exécutée.")},
    {TaskResult::TaskNoMoreRuns, "SCHED_S_TASK_NO_MORE_RUNS",
     Translatable("Zelmar01", "Plus aucune exécution de la tâche n'est prévue.")},
    {TaskResult::TaskNotScheduled, "SCHED_S_TASK_NOT_SCHEDULED",
     Translatable("Zelmar01", "La tâche n'est pas planifiée.")},
    {TaskResult::TaskTerminated, "SCHED_S_TASK_TERMINATED",
     Translatable("Zelmar01", "La dernière exécution de la tâche a été arrêtée.")},
    {TaskResult::TaskNoValidTriggers, "SCHED_S_TASK_NO_VALID_TRIGGERS",
     Translatable("Zelmar01", "La tâche n'a aucun déclencheur, ou tous sont désactivés ou sans effet.")},
    {TaskResult::EventTrigger, "SCHED_S_EVENT_TRIGGER",
     Translatable("Zelmar01", "La tâche démarre sur un événement et non à une heure fixée.")},
    {TaskResult::TriggerNotFound, "SCHED_E_TRIGGER_NOT_FOUND",
     Translatable("Zelmar01", "Ce déclencheur de la tâche n'existe pas.")},
    {TaskResult::TaskNotReady, "SCHED_E_TASK_NOT_READY",
     Translatable(
         "Zelmar01",
         "La tâche ne peut pas encore être exécutée : elle n'est pas enregistrée ou n'a aucun déclencheur.")},
    {TaskResult::TaskNotRunning, "SCHED_E_TASK_NOT_RUNNING",
     Translatable("Zelmar01", "La tâche n'est pas en cours d'exécution.")},
    {TaskResult::ServiceNotInstalled, "SCHED_E_SERVICE_NOT_INSTALLED",
     Translatable("Zelmar01", "Le gestionnaire de tâches planifiées n'est pas installé.")},
    {TaskResult::CannotOpenTask, "SCHED_E_CANNOT_OPEN_TASK",
     Translatable("Zelmar01", "La tâche ne peut pas être ouverte.")},
    {TaskResult::InvalidTask, "SCHED_E_INVALID_TASK",
     Translatable("Zelmar01", "Le fichier n'est pas celui d'une tâche valide.")},
    {TaskResult::AccountInformationNotSet, "SCHED_E_ACCOUNT_INFORMATION_NOT_SET",
     Translatable("Zelmar01", "Aucun compte n'est indiqué pour la tâche.")},
    {TaskResult::AccountNameNotFound, "SCHED_E_ACCOUNT_NAME_NOT_FOUND",
     Translatable("Zelmar01", "Le compte indiqué n'existe pas.")},
    {TaskResult::AccountDbaseCorrupt, "SCHED_E_ACCOUNT_DBASE_CORRUPT",
     Translatable("Zelmar01", "La base des comptes du gestionnaire de tâches est endommagée.")},
    {TaskResult::NoSecurityServices, "SCHED_E_NO_SECURITY_SERVICES",
     Translatable("Zelmar01", "Ce système n'offre pas de comptes pour les tâches.")},
    {TaskResult::UnknownObjectVersion, "SCHED_E_UNKNOWN_OBJECT_VERSION",
     Translatable("Zelmar01", "La version du fichier de la tâche est inconnue.")},
    {TaskResult::UnsupportedAccountOption, "SCHED_E_UNSUPPORTED_ACCOUNT_OPTION",
     Translatable("Zelmar01", "Ce compte ne peut pas être employé de cette façon.")},
    {TaskResult::ServiceNotRunning, "SCHED_E_SERVICE_NOT_RUNNING",
     Translatable("Zelmar01", "Le gestionnaire de tâches planifiées est arrêté.")},
    {TaskResult::AlreadyRunning, "SCHED_E_ALREADY_RUNNING",
     Translatable("Zelmar01", "La tâche est déjà en cours d'exécution.")},
    {TaskResult::NotImplemented, "E_NOTIMPL", Translatable("Zelmar01", "Cette opération n'existe pas ici.")},
    {TaskResult::NoInterface, "E_NOINTERFACE",
     Translatable("Zelmar01", "Cet objet n'a pas l'interface demandée.")},
    {TaskResult::Pointer, "E_POINTER",
     Translatable("Zelmar01", "Un résultat demandé n'a pas d'emplacement.")},
    {TaskResult::Fail, "E_FAIL", Translatable("Zelmar01", "L'opération a échoué.")},
    {TaskResult::Unexpected, "E_UNEXPECTED",
     Translatable("Zelmar01", "L'opération a échoué de façon inattendue.")},
    {TaskResult::NotFileBasedStorage, "STG_E_NOTFILEBASEDSTORAGE",
     Translatable("Zelmar01", "La tâche n'a pas encore été enregistrée dans un fichier.")},
    {TaskResult::ClassNotAvailable, "CLASS_E_CLASSNOTAVAILABLE",
     Translatable("Zelmar01", "Cette classe d'objets n'existe pas ici.")},
    {TaskResult::ClassNotRegistered, "REGDB_E_CLASSNOTREG",
     Translatable("Zelmar01", "Le gestionnaire de tâches planifiées n'est pas inscrit sur ce système.")},
    {TaskResult::FileNotFound, "ERROR_FILE_NOT_FOUND", Translatable("Zelmar01", "Le fichier n'existe pas.")},
    {TaskResult::PathNotFound, "ERROR_PATH_NOT_FOUND", Translatable("Zelmar01", "Le dossier n'existe pas.")},
    {TaskResult::AccessDenied, "E_ACCESSDENIED", Translatable("Zelmar01", "L'accès est refusé.")},
    {TaskResult::InvalidData, "ERROR_INVALID_DATA",
     Translatable("Zelmar01", "Le fichier de la tâche est endommagé.")},
    {TaskResult::OutOfMemory, "E_OUTOFMEMORY", Translatable("Zelmar01", "La mémoire est insuffisante.")},
    {TaskResult::WriteFault, "ERROR_WRITE_FAULT",
     Translatable("Zelmar01", "L'écriture du fichier a échoué.")},
    {TaskResult::ReadFault, "ERROR_READ_FAULT", Translatable("Zelmar01", "La lecture du fichier a échoué.")},
    {TaskResult::SharingViolation, "ERROR_SHARING_VIOLATION",
     Translatable("Zelmar01", "Le fichier est employé par un autre programme.")},
    {TaskResult::HandleEndOfFile, "ERROR_HANDLE_EOF",
     Translatable("Zelmar01", "Le fichier de la tâche est incomplet.")},
    {TaskResult::NotSupported, "ERROR_NOT_SUPPORTED",
     Translatable("Zelmar01", "Cette demande n'est pas possible sur ce système.")},
    {TaskResult::BadNetPath, "ERROR_BAD_NETPATH",
     Translatable("Zelmar01", "Cet ordinateur est introuvable.")},
    {TaskResult::FileExists, "ERROR_FILE_EXISTS", Translatable("Zelmar01", "Le fichier existe déjà.")},
    {TaskResult::InvalidArgument, "E_INVALIDARG", Translatable("Zelmar01", "Une valeur n'est pas permise.")},
    {TaskResult::DiskFull, "ERROR_DISK_FULL", Translatable("Zelmar01", "Le disque est plein.")},
    {TaskResult::InvalidName, "ERROR_INVALID_NAME",
     Translatable("Zelmar01", "Le nom du fichier n'est pas permis.")},
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
    return words ? Translate("Zelmar01", words->Text) : std::string();
}

} // namespace Zelmar01
