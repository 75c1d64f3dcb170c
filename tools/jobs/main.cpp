#include "JobView.h"
#include "JobsTool.h"

#include "../print/FrenchParserTexts.h"

#include <QCoreApplication>

using namespace Zelmar01;

int main(int argc, char **argv)
{
    // Qt remarks on a locale without UTF-8, as cron's is, and then takes another; nobody wants a mail a
    // minute about that.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    QCoreApplication::setApplicationName(QStringLiteral("zelmar01-jobs"));
    FrenchParserTexts french;
    QCoreApplication::installTranslator(&french);

    QTextStream out(stdout), err(stderr);
    auto result = TExit::Failed;
    try {
        result = RunJobsTool(ParseOptions(QCoreApplication::arguments()), out, err);
    } catch (const EUsage &error) {
        err << QString::fromUtf8(error.what()).trimmed() << QStringLiteral("\nVoir zelmar01-jobs --help.\n");
        result = TExit::WrongUsage;
    } catch (const std::exception &error) {
        err << QString::fromUtf8(error.what()) << '\n';
        if (const auto *cause = CauseOf(error))
            WriteCause(err, *cause);
    }
    out.flush();
    if (out.status() != QTextStream::Ok && result == TExit::Done)
        result = TExit::Failed;
    return static_cast<int>(result);
}
