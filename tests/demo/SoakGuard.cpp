#include "SoakGuard.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialog>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSpinBox>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

const std::initializer_list<QString> schemes{u"http"_s, u"https"_s, u"mailto"_s, u"file"_s};

constexpr int rowsEnough = 100'000;

void keepLine(const QObject &dialog, const QString &name, const QString &wanted, bool exactly)
{
    auto *const line = dialog.findChild<QLineEdit *>(name);
    if (line && (exactly ? line->text() != wanted : !line->text().startsWith(wanted)))
        line->setText(wanted);
}

// Only files of the folder can be chosen, and a server where nobody listens.
void keepDatabase(const QObject &dialog, const QString &folder)
{
    keepLine(dialog, u"file"_s, folder + u'/', false);
    keepLine(dialog, u"host"_s, u"127.0.0.1"_s, true);
    if (auto *const port = dialog.findChild<QSpinBox *>(u"port"_s))
        port->setValue(1);
    // Qt prints what an ODBC driver says.
    if (auto *const engine = dialog.findChild<QComboBox *>(u"engine"_s);
        engine && engine->currentIndex() == 2)
        engine->setCurrentIndex(0);
    if (auto *const file = dialog.findChild<QLineEdit *>(u"file"_s); file && file->text().contains("/.."_L1))
        file->setText(folder + u'/');
}

// The virtual printer is the first.
void keepPrinter(const QObject &window)
{
    if (auto *const printer = window.findChild<QComboBox *>(u"printer"_s);
        printer && printer->currentIndex() > 0)
        printer->setCurrentIndex(0);
}

} // namespace

void StayInside(const std::filesystem::path &folder)
{
    std::filesystem::current_path(folder);
    const auto set = [&](const char *name, const std::string &value) { setenv(name, value.c_str(), 1); };
    for (const auto *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        set(name, folder.string());
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    set("ZELMAR01_JOBS", (folder / "jobs").string());
    set("ZELMAR01_JOB_RUNNER", "/bin/true");
    set("CUPS_SERVER", "127.0.0.1:1"); // nobody listens there
    set("QT_QPA_PLATFORM", "offscreen");
    std::string ports;
    for (const auto *port : {"LPT1:", "LPT2:", "COM1:", "COM2:", "COM3:", "COM4:"})
        ports += port + (" = " + (folder / "no-device").string() + ";");
    set("ZELMAR01_PORTS", ports);
}

void KeepShort(const QObject &window)
{
    static const QRegularExpression others(u"\\D"_s);
    for (auto *const action : window.findChildren<QAction *>())
        if (action->text().remove(others).toInt() > rowsEnough)
            action->setEnabled(false);
}

void KeepInside(const QString &folder)
{
    for (const auto *const window : QApplication::topLevelWidgets()) {
        if (window->inherits("Shop::DatabaseDialog"))
            keepDatabase(*window, folder);
        else if (window->inherits("Shop::MainWindow"))
            keepPrinter(*window);
    }
}

LinksGoNowhere::LinksGoNowhere()
{
    for (const auto &scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "Take");
}

LinksGoNowhere::~LinksGoNowhere()
{
    for (const auto &scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}
