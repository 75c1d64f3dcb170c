#include "DatabaseDialog.h"
#include "MainWindow.h"
#include "SelfRun.h"
#include "ShopDatabase.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTextStream>

#include <optional>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace {

constexpr int wrongUsage = 2;

// A server that is away, or wants its password. A user who gives up sees what is left without it.
Shop::TDatabasePlace askAgain(const Shop::TDatabasePlace &place)
{
    Shop::DatabaseDialog dialog(place);
    return dialog.exec() == QDialog::Accepted ? dialog.Place() : place;
}

int openShop()
{
    UseMessageBoxes();
    QSettings settings;
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    int result = 1;
    ShowingExceptions([&] {
        auto place = Shop::RestorePlace(settings, folder + u"/bijouterie.db"_s);
        if (!place.IsFile() && !Shop::CanOpen(place))
            place = askAgain(place);
        for (std::optional next = place; next;) {
            Shop::SavePlace(*next, settings);
            Shop::ShopDatabase database(*next, folder);
            Shop::MainWindow window(&QDateTime::currentDateTime, database, &settings);
            window.show();
            result = QApplication::exec();
            next = window.NewPlace();
        }
    });
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"zelmar01-demo"_s);
    QApplication::setOrganizationName(u"zelmar01"_s);
    QApplication::setApplicationDisplayName(u"Zelmar01"_s);
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France)); // the shop's, wherever it is shown

    const auto arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == "--run"_L1)
        return Shop::RunBySelf(arguments[2]);
    if (arguments.size() == 1)
        return openShop();
    const bool isHelp = arguments.size() == 2 && arguments[1] == "--help"_L1;
    QTextStream(isHelp ? stdout : stderr)
        << u"Utilisation : zelmar01-demo [--run DOSSIER]\n"
           "Sans option, ouvre la bijouterie. Avec --run, fait seule une vente entière et un tour de\n"
           "l'arrière-boutique, et écrit dans le dossier les octets du ticket, son texte et une image de\n"
           "chaque page.\n"_s;
    return isHelp ? 0 : wrongUsage;
}
