#include "JobRows.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// What the components answer where the service knows no moment.
constexpr TDateTime never = -693959;

QString momentText(TDateTime moment)
{
    if (moment <= never)
        return u"jamais"_s;
    const auto parts = DecodeDateTime(moment);
    return QLocale(QLocale::French)
        .toString(QDateTime(QDate(parts.Year, parts.Month, parts.Day), QTime(parts.Hour, parts.Minute)),
                  u"dd/MM/yyyy HH:mm"_s);
}

QString statusText(TTaskStatus status)
{
    switch (status) {
    case tsReady:
        return u"prête"_s;
    case tsRunning:
        return u"en cours"_s;
    case tsDisabled:
        return u"désactivée"_s;
    case tsHasNotRun:
        return u"pas encore exécutée"_s;
    case tsNoMoreRuns:
        return u"plus d'exécution prévue"_s;
    case tsNotScheduled:
        return u"pas enregistrée"_s;
    case tsTerminated:
        return u"arrêtée"_s;
    case tsNoValidTriggers:
        return u"aucun déclencheur actif"_s;
    }
    return u"inconnu (%1)"_s.arg(static_cast<int>(status));
}

// A start that failed has its reason in place of an exit code.
QString resultText(const TTaskItem &item)
try {
    const auto code = item.ExitCode();
    return code == 0 ? u"réussie"_s : u"échouée (code %1)"_s.arg(code);
} catch (const EOleSysError &error) {
    return u"pas démarrée : %1"_s.arg(QString::fromUtf8(error.what()));
}

} // namespace

TJobRow ReadJobRow(TTaskItem &item)
{
    TJobRow row;
    row.Name = item.Name();
    try {
        item.Activate();
        const auto last = item.MostRecentRunTime();
        row.Next = momentText(item.NextRunTime());
        row.Last = momentText(last);
        row.Status = statusText(item.Status());
        row.Result = last <= never || item.Status() == tsRunning ? u"–"_s : resultText(item);
        row.Schedule = item.TriggerString();
    } catch (const Exception &) {
        row.IsReadable = false;
        row.Status = u"illisible"_s;
        row.Next = row.Last = row.Result = u"–"_s;
        row.Schedule = u"Le fichier de la tâche ne peut pas être lu ; il n'est pas touché."_s;
    }
    return row;
}

} // namespace Shop
