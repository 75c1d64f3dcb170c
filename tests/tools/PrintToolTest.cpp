#include "FailingPrintServer.h"

#include <support/Fifo.h>
#include <support/TempFolder.h>

#include <QProcess>

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct TResult
{
    int Exit;
    QString Output, Errors;
};

class PrintTool : public testing::Test
{
protected:
    TempFolder m_folder;
    Fifo m_port{m_folder / "port"};
    QString m_server = u"127.0.0.1:1"_s; // nobody listens there
    QString m_input;                     // a file in the place of the given input

    QString path(const char *name) const { return QString::fromStdString((m_folder / name).string()); }

    void write(const char *name, const std::string &bytes) const
    {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
    }

    TResult run(QStringList arguments, const QByteArray &input = {})
    {
        for (auto &argument : arguments)
            argument.replace("{folder}"_L1, QString::fromStdString(m_folder.Path().string()));
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto *variable : {"PRINTER", "LPDEST", "ZELMAR01_PORTS"})
            environment.remove(QString::fromLatin1(variable));
        environment.insert(u"HOME"_s, path("nowhere"));
        environment.insert(u"XDG_CONFIG_HOME"_s, path("nowhere"));
        environment.insert(u"CUPS_SERVER"_s, m_server);
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(QString::fromStdString(m_folder.Path().string()));
        if (!m_input.isEmpty())
            process.setStandardInputFile(m_input);
        process.start(QStringLiteral(ZELMAR01_PRINT), arguments);
        if (m_input.isEmpty()) {
            process.write(input);
            process.closeWriteChannel();
        }
        if (!process.waitForFinished())
            ADD_FAILURE() << "does not end: " << arguments.join(u' ').toStdString();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    TResult print(const QStringList &arguments, const QByteArray &input = {})
    {
        return run(QStringList{u"--port"_s, u"LPT1:={folder}/port"_s, u"--printer"_s, u"LPT1:"_s} + arguments,
                   input);
    }
};

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

std::string allBytes()
{
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    return bytes;
}

std::string codeLine(std::string list, std::string name)
{
    list.resize(50, ' ');
    name.resize(21, ' ');
    return ":" + list + name + "*\r\n";
}

std::string codeFile(const std::string &label, const std::string &lines)
{
    std::string header = "DosPrintControlCodes", type = "#" + label;
    header.resize(72, ' ');
    type.resize(21, ' ');
    type.resize(72, '-');
    return header + "*\r\n" + type + "*\r\n" + lines;
}

TEST_F(PrintTool, SendsTheseBytes)
{
    using namespace std::string_literals;
    write("ticket.txt", "Du fichier à lire\n");
    write("own.PCC", codeFile("User1", codeLine("29,86,0", "Cutter")));
    struct TCase
    {
        const char *Arguments;
        std::string Input;
        std::string Received;
        const char *Errors = "";
    };
    const auto ticket = "Éclat d'été : « façade » à 12,50 €\n"s;
    const std::vector<TCase> cases{
        {"", ticket,
         "\xc9"
         "clat d'\xe9t\xe9 : \xab fa\xe7"
         "ade \xbb \xe0 12,50 \x80\n"},
        {"--type epson --conversion 1 --ini --cut --drawer", ticket,
         "\x1b@\x1b!\x90"
         "clat d'\x82t\x82 : \xaa fa\x87"
         "ade \xaf \x85 12,50 \xe4\n\x1bi\x07"},
        {"--type Epson --conversion 2 --ini --cut --drawer", ticket,
         "\x1b@\x1b!E"
         "clat d'{t{ : \xab fa\\ade \" @ 12,50 \x80\n\x1bi\x07"},
        {"--type ibm --ini --eject", "x", "\x1b@\x1bR\x01\x1b\x1dt\x05x\f"},
        {"--type USER1 --codes own --cut", "x", "x\x1dV\0"s},
        {"--encoding windows-1252", allBytes(), allBytes()},
        {"", "\xef\xbb\xbfsans marque", "sans marque"},
        {"", "e\xcc\x81", "\xe9"},
        {"", "flocon ☃, or ☃ → 5", "flocon ?, or ? ? 5", "Windows-1252, imprimés « ? » : ☃→\n"},
        {"ticket.txt", "non lu", "Du fichier \xe0 lire\n"},
        {"--drawer -", "texte", "texte\x07"},
        {"--drawer --ini --cut --type epson", "", "\x07"},
        {"--type epson --cut", "", "\x1bi"},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Arguments);
        const auto result = print(words(row.Arguments), QByteArray::fromStdString(row.Input));
        EXPECT_EQ(result.Exit, 0) << result.Errors.toStdString();
        EXPECT_EQ(m_port.Received(), row.Received);
        EXPECT_TRUE(result.Output.contains(u" sur %1\n"_s.arg(row.Received.size())))
            << result.Output.toStdString();
        EXPECT_EQ(result.Errors.isEmpty(), std::string_view(row.Errors).empty());
        EXPECT_TRUE(result.Errors.contains(QString::fromUtf8(row.Errors))) << result.Errors.toStdString();
    }
}

TEST_F(PrintTool, SendsALongTextInPiecesWithTheDrawerInTheLast)
{
    std::string text;
    while (text.size() < 20000)
        text += "Ligne du ticket, " + std::to_string(text.size()) + "\n";
    EXPECT_EQ(print(words("--drawer"), QByteArray::fromStdString(text)).Exit, 0);
    EXPECT_EQ(m_port.Received(), text + '\a');
}

TEST_F(PrintTool, OpensOnlyTheDrawerWhenNobodyGivesItAText)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    m_input = QString::fromLocal8Bit(ptsname(terminal));
    EXPECT_EQ(print(words("--drawer")).Exit, 0);
    EXPECT_EQ(m_port.Received(), "\a");
    close(terminal);
}

TEST_F(PrintTool, SaysWhatWentWrong)
{
    write("regular", "intact");
    write("foreign.PCC", std::string(75, ' '));
    write("broken.PCC", codeFile("Epson", codeLine("27,300", "Ini")));
    symlink("/dev/full", (m_folder / "full.PCC").c_str());
    struct TCase
    {
        int Exit;
        const char *Arguments;
        std::vector<const char *> Errors;
        QByteArray Input = "ticket";
    };
    const std::vector<TCase> cases{
        {1,
         "--port COM1:={folder}/absent --printer COM1:",
         {"Port de l'imprimante ticket non trouvé", "/absent : n'existe pas", "remède : vérifier"}},
        {1, "--port LPT1:={folder}/regular", {"non trouvé", "n'est pas un périphérique d'impression"}},
        {1,
         "--port LPT1:=/dev/full",
         {"Problème d'écriture sur l'imprimante ticket !", "plus de place", "plus de papier",
          "0 octet sur 6"}},
        {1, "", {"UTF-8", "e9", "décalage 5", "--encoding windows-1252"}, "caf\xc3\xa9\xe9"},
        {1, "--drawer", {"décalage 0"}, "\xc0\x80"},
        {1, "absent.txt", {"illisible", "absent.txt"}},
        {1, "--printer Ticket", {"« Ticket »", "serveur d'impression 127.0.0.1:1", "remède : vérifier"}},
        {1, "--passthrough", {"n'a pas été accepté", "serveur d'impression"}},
        {1, "--codes absent", {"illisible", "absent.PCC"}},
        {1, "--codes foreign", {"foreign.PCC", "pas un fichier de codes"}},
        {1, "--codes broken", {"broken.PCC", "Code invalide : 300"}},
        {1, "--save-codes absent/codes", {"Vous n'avez pas les droits", "absent/codes.PCC"}},
        {1, "--save-codes full", {"Disque plein.", "full.PCC"}},
        {2, "--unknown", {"Option inconnue « unknown »", "--help"}},
        {2, "--port", {"Valeur manquante après « --port »"}},
        {2, "--cut=oui", {"Valeur de trop après « --cut »"}},
        {2, "--port LPT9:=/dev/null", {"port inconnu « LPT9: »"}},
        {2, "--port COM1:=/dev/null,speed=77", {"valeur inconnue « 77 »"}},
        {2, "--conversion 3", {"« 3 »"}},
        {2, "--conversion un", {"« un »"}},
        {2, "--type tiroir", {"« tiroir »"}},
        {2, "--encoding latin9", {"« latin9 »"}},
        {2, "--cut", {"--cut", "Plain n'a pas ce code"}},
        {2, "--type hppcl --eject --cut", {"--cut", "HPPCL n'a pas ce code"}},
        {2, "un deux", {"« deux » est de trop"}},
        {2, "--list --drawer", {"n'impriment rien"}},
        {2, "--show-codes=octal", {"« octal »"}},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Arguments);
        const auto result = std::string_view(row.Arguments).starts_with("--save")
                                ? run(words(row.Arguments), row.Input)
                                : print(words(row.Arguments), row.Input);
        EXPECT_EQ(result.Exit, row.Exit);
        EXPECT_EQ(result.Output, QString());
        EXPECT_EQ(m_port.Received(), "");
        for (const auto *fragment : row.Errors)
            EXPECT_TRUE(result.Errors.contains(QString::fromUtf8(fragment)))
                << fragment << " is not in " << result.Errors.toStdString();
    }
    EXPECT_EQ(std::filesystem::file_size(m_folder / "regular"), 6U);
}

TEST_F(PrintTool, TellsHowMuchAPrinterTookBeforeItStopped)
{
    ASSERT_EQ(fcntl(m_port.Reader(), F_SETPIPE_SZ, 4096), 4096);
    const auto result = print({}, (QByteArray(99, 'x') + '\n').repeated(60));
    EXPECT_EQ(result.Exit, 1);
    EXPECT_TRUE(result.Errors.contains(u"4000 octets sur 6000"_s)) << result.Errors.toStdString();
}

TEST_F(PrintTool, KnowsThatATicketMayHaveBeenPrinted)
{
    FailingPrintServer server;
    m_server = QString::fromStdString(server.Address());
    const auto result = run(words("--printer Ticket"), "ticket");
    EXPECT_EQ(result.Exit, 3) << result.Errors.toStdString();
    EXPECT_TRUE(result.Errors.contains(u"peut-être été imprimé"_s)) << result.Errors.toStdString();
}

TEST_F(PrintTool, ListsThePortsEvenWithoutAPrintServer)
{
    const auto result = run(words("--list --port LPT1:={folder}/port --port COM4:={folder}/absent"));
    EXPECT_EQ(result.Exit, 1);
    EXPECT_TRUE(result.Errors.contains(u"La liste des imprimantes ne peut pas être lue"_s));
    EXPECT_TRUE(result.Output.contains(u"  LPT1:  utilisable    "_s + path("port")))
        << result.Output.toStdString();
    EXPECT_TRUE(result.Output.contains(u"  COM4:  inutilisable  "_s + path("absent")));
}

TEST_F(PrintTool, ShowsCodesInBothNotations)
{
    for (const auto *arguments : {"--show-codes", "--show-codes Decimal", "--show-codes --printer x"})
        EXPECT_TRUE(run(words(arguments)).Output.contains(u"Epson :\n  Ini        27,64,27,33\n"_s))
            << arguments;
    for (const auto *arguments : {"--show-codes hexa", "--show-codes=hexa"})
        EXPECT_TRUE(run(words(arguments)).Output.contains(u"  Tiroir     07\n"_s)) << arguments;
}

TEST_F(PrintTool, BringsCodesToAFileAndBack)
{
    write("own.PCC", codeFile("IBM", codeLine("1,2,255", "Ini")));
    const auto own = run(words("--codes own.PCC --show-codes"));
    EXPECT_TRUE(own.Output.contains(u"IBM :\n  Ini        1,2,255\n"_s));
    EXPECT_EQ(run(words("--codes own --save-codes copy")).Exit, 0);
    EXPECT_EQ(std::filesystem::file_size(m_folder / "copy.PCC"), 9075U);
    EXPECT_EQ(run(words("--codes copy --show-codes")).Output, own.Output);
}

TEST_F(PrintTool, HelpNamesEveryOptionAndExitCode)
{
    const auto result = run(words("--help"));
    EXPECT_EQ(result.Exit, 0);
    for (const auto *text :
         {"Utilisation : ", "--printer <nom>", "--port <nom=périphérique>", "--passthrough", "--encoding",
          "--conversion <n>", "--type", "--ini", "--eject", "--cut", "--drawer", "--codes", "--list",
          "--show-codes", "--save-codes", "  3  résultat inconnu", "Exemples :"})
        EXPECT_TRUE(result.Output.contains(QString::fromUtf8(text))) << text;
}

} // namespace
