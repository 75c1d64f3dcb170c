#include <Zelmar01/controls/ShellOpen.h>

#ifdef Q_OS_WIN
#include <Zelmar01/controls/WindowsShell.h>
#else
#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#endif

#include <utility>

namespace Zelmar01 {

namespace {

TShellOpen &current()
{
    static TShellOpen open;
    return open;
}

#ifdef Q_OS_WIN

void openWithSystem(const QString &address, int showState)
{
    WindowsShellOpen(address.toStdU16String(), showState);
}

#else

void openWithSystem(QString address, int)
{
    // Only the name of a file can begin like an option; this is the same file.
    if (address.startsWith(QLatin1Char('-')))
        address.prepend(QLatin1String("./"));
    const auto opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty())
        QDesktopServices::openUrl(QUrl(address));
    else
        QProcess::startDetached(opener, {address});
}

#endif

} // namespace

TShellOpen SetShellOpen(TShellOpen open)
{
    return std::exchange(current(), std::move(open));
}

void ShellOpen(const QString &address, int showState)
{
    if (const auto open = current())
        open(address, showState);
    else if (!address.isEmpty())
        openWithSystem(address, showState);
}

} // namespace Zelmar01
