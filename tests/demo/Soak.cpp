// The shop in the hands of somebody who tries every key and every place: all pages, random input, until the
// time is over. Says its seed; the same seed gives the same input to the same build.
//
//     demo_soak [SECONDS [SEED]]
//
// Fails on a warning, and when the heap grows from one round to the next; a crash or a report of a sanitizer
// ends it by itself. It touches nothing outside a folder of its own: no port leads to a device, no print
// server is there, jobs are started by a program that does nothing, and links are opened by nobody.

#include "SoakGuard.h"
#include "SoakInput.h"

#include <demo/MainWindow.h>
#include <demo/ShopDatabase.h>

#include <support/TempFolder.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QPixmapCache>
#include <QSettings>
#include <QTextStream>
#include <QTimer>

#include <malloc.h>

#include <algorithm>
#include <random>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace {

constexpr int stepsOfRound = 400;
// Qt keeps what it has once used for good: letters of each font, names of file types, keys of its pictures.
// Most come in the first rounds, so a short run does not judge, and a long one allows for some.
constexpr std::size_t firstRounds = 20, fewestRounds = 60;
constexpr std::size_t allowedGrowth = 24 * 1024; // bytes a round

int warnings = 0;

void countWarnings(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    // The second is Qt's: Return in a label of the tree has the delegate commit a turn of the event loop
    // later, and a click before that commits it at once and closes the editor.
    if (text.startsWith("This plugin does not support "_L1) ||
        text.startsWith("QAbstractItemView::commitData called with an editor"_L1))
        return;
    QTextStream(stderr) << text << '\n';
    if (type != QtDebugMsg && type != QtInfoMsg)
        ++warnings;
}

std::size_t heapInUse()
{
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}

// One start of the shop, from an empty database to its closed window.
void goRound(const QString &folder, std::mt19937 &random)
{
    const QDir place(folder);
    place.mkpath(u"."_s);
    QSettings settings(place.filePath(u"demo.ini"_s), QSettings::IniFormat);
    Shop::ShopDatabase database(place.filePath(u"bijouterie.db"_s));
    Shop::MainWindow window(&QDateTime::currentDateTime, database, &settings);
    window.show();
    KeepShort(window);
    SoakInput input(window, random, [&] { KeepInside(folder); });
    input.Go(stepsOfRound);
    window.close();
}

// How many bytes more a round leaves than the one before it: the slope through the medians of both halves.
std::ptrdiff_t growth(std::vector<std::size_t> heap)
{
    heap.erase(heap.begin(), heap.begin() + firstRounds);
    const auto middle = heap.begin() + static_cast<std::ptrdiff_t>(heap.size() / 2);
    const auto median = [](std::vector<std::size_t> part) {
        std::ranges::sort(part);
        return static_cast<std::ptrdiff_t>(part[part.size() / 2]);
    };
    return (median({middle, heap.end()}) - median({heap.begin(), middle})) / (middle - heap.begin());
}

} // namespace

int main(int argc, char **argv)
{
    const TempFolder folder;
    StayInside(folder.Path());
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    qInstallMessageHandler(countWarnings);
    const auto arguments = QApplication::arguments();
    const qint64 seconds = arguments.size() > 1 ? arguments[1].toLongLong() : 20;
    const auto seed = arguments.size() > 2 ? arguments[2].toUInt() : std::random_device()();
    QTextStream(stdout) << "seed " << seed << Qt::endl;

    std::mt19937 random(seed);
    LinksGoNowhere nowhere;
    int shown = 0, asked = 0;
    SetExceptionDisplay([&](const std::exception &) { ++shown; });
    SetMessageBox([&](const QString &, TMsgDlgType, TMsgDlgButtons buttons) {
        ++asked;
        std::vector<TMsgDlgBtn> answers;
        for (const auto answer : {mbYes, mbNo, mbOK, mbCancel})
            if (buttons.testFlag(answer))
                answers.push_back(answer);
        return answers[random() % answers.size()];
    });

    std::vector<std::size_t> heap;
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < seconds * 1000 && warnings == 0;) {
        const auto round = folder / std::to_string(heap.size());
        goRound(QString::fromStdString(round.string()), random);
        std::filesystem::remove_all(round);
        QPixmapCache::clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        heap.push_back(heapInUse());
        QTextStream(stdout) << "round " << heap.size() << ": " << heap.back() / 1024 << " KiB in use, "
                            << asked << " questions, " << shown << " errors shown" << Qt::endl;
    }
    SetExceptionDisplay({});
    SetMessageBox({});
    bool grows = false;
    if (heap.size() >= fewestRounds) {
        const auto bytes = growth(heap);
        grows = bytes > static_cast<std::ptrdiff_t>(allowedGrowth);
        QTextStream(stdout) << "growth " << bytes << " bytes a round" << Qt::endl;
    }
    QTextStream(stdout) << warnings << " warnings" << Qt::endl;
    return warnings > 0 || grows ? 1 : 0;
}
