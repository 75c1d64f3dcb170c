#include "FrenchParserTexts.h"
#include "PrintTool.h"

#include <QCoreApplication>

using namespace Zelmar01;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zelmar01-print"));
    FrenchParserTexts french;
    QCoreApplication::installTranslator(&french);

    QTextStream out(stdout), err(stderr);
    auto result = TExit::Failed;
    try {
        const auto options = ParseOptions(QCoreApplication::arguments());
        if (options.Help) {
            out << HelpText();
            result = TExit::Accepted;
        } else {
            result = RunPrintTool(options, out, err);
        }
    } catch (const EUsage &error) {
        ReportFailure(err, error);
        err << QStringLiteral("Voir zelmar01-print --help.\n");
        result = TExit::WrongUsage;
    } catch (const std::exception &error) {
        ReportFailure(err, error);
    }
    return static_cast<int>(result);
}
