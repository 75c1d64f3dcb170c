#include "SelfRun.h"

#include "CodesRound.h"
#include "Hands.h"
#include "ListsRound.h"
#include "MainWindow.h"
#include "PrinterCodesRound.h"
#include "ShopDatabase.h"
#include "TasksRound.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr QSize windowSize(1280, 760);

void choose(const QWidget &window, const QString &box, const QString &text)
{
    auto &combo = Find<QComboBox>(window, box);
    const int index = combo.findText(text);
    if (index < 0)
        Fail(u"« %1 » manque dans « %2 »"_s.arg(text, box));
    combo.setCurrentIndex(index);
}

void sell(const MainWindow &window)
{
    auto &articles = Find<QTreeWidget>(window, u"articles"_s);
    articles.setFocus();
    Press(articles, Qt::Key_Home);
    Press(articles, Qt::Key_Return);
    Press(articles, Qt::Key_Down);
    Press(articles, Qt::Key_Down);
    Press(articles, Qt::Key_Return);
    Press(articles, Qt::Key_Return);
    Press(articles, Qt::Key_End);
    Find<QPushButton>(window, u"add"_s).click();
    choose(window, u"printer"_s, u"Imprimante virtuelle"_s);
    choose(window, u"type"_s, u"Epson (ticket)"_s);
    choose(window, u"conversion"_s, u"Page de codes DOS"_s);
    Find<QPushButton>(window, u"printAndOpen"_s).click();
    if (window.Till().ReceivedBytes().empty())
        Fail(u"l'imprimante virtuelle n'a rien reçu"_s);
}

void write(const QDir &folder, const QString &name, const QByteArray &bytes)
{
    QSaveFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        Fail(file.fileName() + " : " + file.errorString());
    QTextStream(stdout) << "  " << name << '\n';
}

QPalette darkPalette()
{
    const QColor ground(0x2b, 0x2d, 0x31), field(0x1e, 0x1f, 0x22), text(0xe3, 0xe4, 0xe8);
    QPalette palette(text, ground, ground.lighter(150), ground.darker(170), ground.darker(130), text,
                     Qt::white, field, ground);
    palette.setColor(QPalette::Button, ground.lighter(125));
    palette.setColor(QPalette::AlternateBase, field.lighter(120));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xc9));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb0, 0xf0));
    palette.setColor(QPalette::PlaceholderText, QColor(0xa0, 0xa3, 0xab));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x83, 0x8a));
    return palette;
}

void takePictures(MainWindow &window, const QDir &folder, const QString &shade)
{
    for (auto *page : window.Pages()) {
        window.ShowPage(page);
        QApplication::processEvents();
        const auto name = page->objectName() + u'-' + shade + u".png"_s;
        if (!window.grab().save(folder.filePath(name)))
            Fail(folder.filePath(name) + u" ne peut pas être écrit"_s);
        QTextStream(stdout) << "  " << name << '\n';
    }
    const auto name = u"printcodes-%1.png"_s.arg(shade);
    TakePictureOfPrinterCodes(window, folder.filePath(name));
    QTextStream(stdout) << "  " << name << '\n';
}

void run(const QString &folderName)
{
    const QDir folder(folderName);
    if (!folder.mkpath(u"."_s))
        Fail(u"le dossier %1 ne peut pas être créé"_s.arg(folderName));
    QTextStream(stdout) << folder.absolutePath() << " :\n";

    // A sale that is the same every day can be compared.
    const QTemporaryDir shop;
    ShopDatabase database(shop.filePath(u"bijouterie.db"_s));
    MainWindow window([] { return QDateTime(QDate(2024, 3, 14), QTime(10, 30)); }, database, nullptr);
    window.resize(windowSize);
    window.show();
    write(folder, u"impression.txt"_s, GoRoundPrinterCodes(window).toUtf8());
    sell(window);
    const auto &received = window.Till().ReceivedBytes();
    write(folder, u"ticket.bin"_s, QByteArray::fromStdString(received));
    write(folder, u"ticket.txt"_s, window.Till().SentText().toUtf8());
    write(folder, u"codes.txt"_s, GoRoundCodes(window, database).toUtf8());
    write(folder, u"listes.txt"_s, GoRoundLists(window, database).toUtf8());
    write(folder, u"taches.txt"_s, GoRoundTasks(window).toUtf8());

    takePictures(window, folder, u"light"_s);
    const auto light = QApplication::palette();
    QApplication::setPalette(darkPalette());
    takePictures(window, folder, u"dark"_s);
    QApplication::setPalette(light);
}

} // namespace

int RunBySelf(const QString &folder)
{
    // Nobody is there to answer a message box: it ends the run.
    QString failure;
    SetExceptionDisplay([&](const std::exception &exception) {
        failure += QString::fromUtf8(exception.what());
        if (const auto *inOut = dynamic_cast<const EInOutError *>(&exception))
            failure += u" : "_s + QString::fromStdString(inOut->Cause().Words());
    });
    SetMessageBox([&](const QString &text, TMsgDlgType, TMsgDlgButtons) {
        failure += text;
        return mbOK;
    });
    ShowingExceptions([&] { run(folder); });
    SetExceptionDisplay({});
    SetMessageBox({});
    if (!failure.isEmpty())
        QTextStream(stderr) << failure << '\n';
    return failure.isEmpty() ? 0 : 1;
}

} // namespace Shop
