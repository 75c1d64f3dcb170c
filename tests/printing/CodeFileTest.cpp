#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/CodeFile.h>

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#ifndef _WIN32
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Zelmar01;

namespace {

std::string contentsOf(const std::filesystem::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

std::string line(std::string content)
{
    content.resize(72, ' ');
    return content + "*\r\n";
}

std::string codeLine(const std::string &list, const std::string &key)
{
    std::string content = ":" + list;
    content.resize(std::max<std::size_t>(51, content.size()), ' ');
    return line(content + key);
}

const std::string header = line("DosPrintControlCodes");

std::string bytes(std::size_t count, char byte)
{
    return std::string(count, byte);
}

class CodeFile : public testing::Test
{
protected:
    std::filesystem::path write(const std::string &text)
    {
        std::ofstream(m_folder / "x.PCC", std::ios::binary) << text;
        return m_folder / "x.PCC";
    }

    TPrinterCodes load(const std::string &text)
    {
        auto codes = DefaultPrinterCodes();
        LoadCodeFile(write(text), codes);
        return codes;
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(CodeFile, hasItsLayoutToTheByte)
{
    auto codes = DefaultPrinterCodes();
    EXPECT_TRUE(SaveCodeFile(m_folder / "x.PCC", codes).empty());
    const auto text = contentsOf(m_folder / "x.PCC");
    ASSERT_EQ(text.size(), 9075U);

    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size(); at += 75)
        lines.push_back(text.substr(at, 75));
    ASSERT_EQ(lines.size(), 121U);
    EXPECT_EQ(lines[0], header);
    EXPECT_EQ(lines[1], line("#HPPCL               " + std::string(51, '-')));
    EXPECT_EQ(lines[25], line("#Epson               " + std::string(51, '-')));
    EXPECT_EQ(lines[49].substr(0, 6), "#IBM  ");
    EXPECT_EQ(lines[73].substr(0, 7), "#User1 ");
    EXPECT_EQ(lines[97].substr(0, 8), "#Tiroir ");
    EXPECT_EQ(lines[26], codeLine("27,64,27,33", "Ini"));
    EXPECT_EQ(lines[114], codeLine("7", "Tiroir"));

    std::string keys;
    for (int i = 26; i < 49; ++i)
        keys += lines[static_cast<std::size_t>(i)].substr(51, 21).substr(
                    0, lines[static_cast<std::size_t>(i)].find(' ', 51) - 51) +
                " ";
    EXPECT_EQ(keys,
              "Ini BoldOn BoldOff ItalicOn ItalicOff UnderOn UnderOff CarA CarB Return Eject Reset SelTic "
              "SelJnl SelFac Cutter Tiroir cRed cBlack Back Left Right Centr ");
}

TEST_F(CodeFile, whatIsSavedComesBack)
{
    auto codes = DefaultPrinterCodes();
    codes[ptUser1].Ini = TPrinterCode(bytes(16, '\x0c'));  // 16 two-digit values: 47 characters
    codes[ptUser1].Back = TPrinterCode(bytes(12, '\xff')); // 12 three-digit values: 47
    codes[ptUser1].Left = TPrinterCode(bytes(20, '\t'));   // 39
    codes[ptPlain].Ini = TPrinterCode("never saved");
    EXPECT_TRUE(SaveCodeFile(m_folder / "x.PCC", codes).empty());

    TPrinterCodes loaded = {};
    LoadCodeFile(m_folder / "x.PCC", loaded);
    codes[ptPlain] = {};
    for (std::size_t type = 0; type < codes.size(); ++type)
        for (const auto &field : PrinterCodeFields())
            EXPECT_EQ(loaded[type].*field.Code, codes[type].*field.Code) << type << ' ' << field.Name;
}

TEST_F(CodeFile, reportsWhatCannotComeBack)
{
    auto codes = DefaultPrinterCodes();
    codes[ptIBM].Ini = TPrinterCode(bytes(12, '\xff') + "\x01");    // 49: into the name's columns
    codes[ptIBM].BoldOn = TPrinterCode(bytes(12, '\xff') + "\x10"); // 50
    codes[ptIBM].Eject = TPrinterCode(bytes(13, '\xff'));           // 51: shifts what follows
    const auto unreadable = SaveCodeFile(m_folder / "x.PCC", codes);
    ASSERT_EQ(unreadable.size(), 3U);
    const std::tuple<std::string_view, std::size_t, bool> expected[] = {
        {"Ini", 49, false}, {"BoldOn", 50, false}, {"Eject", 51, true}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(unreadable[i].Type, ptIBM);
        EXPECT_EQ(std::tuple(unreadable[i].Name, unreadable[i].ListLength, unreadable[i].LosesRest),
                  expected[i]);
    }
    TPrinterCodes loaded = {};
    LoadCodeFile(m_folder / "x.PCC", loaded);
    EXPECT_TRUE(loaded[ptIBM].Ini.IsEmpty());
    EXPECT_TRUE(loaded[ptIBM].BoldOn.IsEmpty());
    EXPECT_EQ(loaded[ptIBM].Return, TPrinterCode("\r\n"));
    EXPECT_TRUE(loaded[ptTiroir].Tiroir.IsEmpty());
}

TEST_F(CodeFile, isMergedLineByLine)
{
    const auto defaults = DefaultPrinterCodes();
    const std::string seven(24, '\a');
    std::string list24 = "7";
    for (int i = 1; i < 24; ++i)
        list24 += ",7";

    struct TFile
    {
        const char *What;
        std::string Lines;
        TPrinterType Type;
        TPrinterCode TPrinterCodeSet::*Code;
        std::string Expected;
    };
    const TFile files[] = {
        {"lines before any type go to the drawer", codeLine("1,2", "Ini"), ptTiroir, &TPrinterCodeSet::Ini,
         "\1\2"},
        {"names in any case", line("#Epson") + codeLine("5", "bOLDoN"), ptEpson, &TPrinterCodeSet::BoldOn,
         "\5"},
        {"an unknown type is the user's", line("#Star") + codeLine("5", "Ini"), ptUser1,
         &TPrinterCodeSet::Ini, "\5"},
        {"types in their own case only", line("#epson") + codeLine("5", "Ini"), ptUser1,
         &TPrinterCodeSet::Ini, "\5"},
        {"a type right after a type", line("#Epson") + line("#IBM") + codeLine("5", "Ini"), ptIBM,
         &TPrinterCodeSet::Ini, "\5"},
        {"an unknown name is passed over", codeLine("5", "Nothing") + codeLine("6", "Ini"), ptTiroir,
         &TPrinterCodeSet::Ini, "\6"},
        {"24 values are cut to 20", codeLine(list24, "Ini"), ptTiroir, &TPrinterCodeSet::Ini,
         seven.substr(0, 20)},
        {"an empty list empties a code", line("#Tiroir") + codeLine("", "Tiroir"), ptTiroir,
         &TPrinterCodeSet::Tiroir, ""},
        {"any other line ends the load", line("") + codeLine("5", "Ini"), ptTiroir, &TPrinterCodeSet::Ini,
         ""},
        {"also behind a type", line("#IBM") + line("-") + codeLine("5", "Ini"), ptIBM, &TPrinterCodeSet::Back,
         ""},
        {"a last line cut short is not read", codeLine("5", "Ini").substr(0, 74), ptTiroir,
         &TPrinterCodeSet::Ini, ""},
    };
    for (const auto &file : files) {
        const auto codes = load(header + file.Lines);
        EXPECT_EQ((codes[file.Type].*file.Code).Bytes(), file.Expected) << file.What;
        EXPECT_EQ(codes[ptHPPCL], defaults[ptHPPCL]) << file.What;
    }
}

TEST_F(CodeFile, foreignFilesChangeNothing)
{
    const auto code = codeLine("5", "Ini");
    for (const auto &text : {std::string(), header.substr(0, 74), line("dosprintcontrolcodes") + code,
                             line(" DosPrintControlCodes") + code, line("DosPrintControlCode") + code})
        EXPECT_EQ(load(text), DefaultPrinterCodes()) << text;
    auto codes = DefaultPrinterCodes();
    LoadCodeFile(m_folder / "missing.PCC", codes);
    LoadCodeFile(m_folder.Path(), codes);
    EXPECT_EQ(codes, DefaultPrinterCodes());
}

TEST_F(CodeFile, aMalformedListEndsTheLoadHalfApplied)
{
    auto codes = DefaultPrinterCodes();
    const auto file = write(header + codeLine("5", "Ini") + codeLine("5,x6", "Back") + codeLine("7", "Left"));
    try {
        LoadCodeFile(file, codes);
        FAIL() << "the malformed list went unnoticed";
    } catch (const EConvertError &error) {
        EXPECT_STREQ(error.what(), "Code invalide : x6");
        EXPECT_NE(error.Cause().Text.find("x.PCC : ligne 3"), std::string::npos) << error.Cause().Text;
    }
    EXPECT_EQ(codes[ptTiroir].Ini, TPrinterCode("\5"));
    EXPECT_TRUE(codes[ptTiroir].Back.IsEmpty());
    EXPECT_TRUE(codes[ptTiroir].Left.IsEmpty());
}

TEST_F(CodeFile, takesItsPlaceFromItsName)
{
    SetApplicationDirectory(m_folder.Path());
    EXPECT_EQ(CodeFilePath("Corvantix"), m_folder / "Corvantix.PCC");
    EXPECT_EQ(CodeFilePath("my.codes"), m_folder / "my.codes");
    EXPECT_EQ(CodeFilePath(m_folder / "x"), m_folder / "x.PCC");
    EXPECT_EQ(CodeFilePath("sub/x"), std::filesystem::path("sub/x.PCC"));
    SetApplicationDirectory({});
}

namespace {

std::pair<std::string, TSystemCause> saveError(const std::filesystem::path &file)
{
    try {
        SaveCodeFile(file, DefaultPrinterCodes());
    } catch (const EInOutError &error) {
        return {error.what(), error.Cause()};
    }
    return {};
}

} // namespace

TEST_F(CodeFile, saysWhyItCannotBeCreated)
{
    const auto [message, cause] = saveError(m_folder / "missing" / "x.PCC");
    EXPECT_EQ(message, "Vous n'avez pas les droits pour effectuer cette opération ");
    EXPECT_EQ(cause.Code, ENOENT);
    EXPECT_NE(cause.Text.find("x.PCC"), std::string::npos);
}

#ifndef _WIN32
TEST_F(CodeFile, isWrittenInPlace)
{
    const auto file = write(std::string(20000, 'x'));
    std::filesystem::create_hard_link(file, m_folder / "other.PCC");
    SaveCodeFile(file, DefaultPrinterCodes());
    EXPECT_EQ(contentsOf(m_folder / "other.PCC").size(), 9075U) << "another name of the file was left behind";
}

TEST_F(CodeFile, aFullDiskIsNoticed)
{
    std::filesystem::create_symlink("/dev/full", m_folder / "x.PCC");
    const auto [message, cause] = saveError(m_folder / "x.PCC");
    EXPECT_EQ(message, "Disque plein.");
    EXPECT_EQ(cause.Code, ENOSPC);
}

TEST_F(CodeFile, aWriteCutShortAnywhereIsNoticedAndLeftAsFarAsItCame)
{
    const auto before = signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited = {};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    for (const rlim_t size : {0U, 74U, 75U, 100U, 150U, 9000U, 9074U}) {
        const rlimit limited{size, unlimited.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
        const auto [message, cause] = saveError(m_folder / "x.PCC");
        setrlimit(RLIMIT_FSIZE, &unlimited);
        EXPECT_EQ(message, "Disque plein.") << size;
        EXPECT_EQ(std::filesystem::file_size(m_folder / "x.PCC"), size);
    }
    signal(SIGXFSZ, before);
}

TEST_F(CodeFile, nobodyReadsAFileHalfWritten)
{
    const auto file = write(header + codeLine("5", "Ini"));
    const int other = open(file.c_str(), O_RDONLY);
    ASSERT_GE(other, 0);
    auto codes = DefaultPrinterCodes();

    flock(other, LOCK_EX);
    LoadCodeFile(file, codes);
    EXPECT_TRUE(codes[ptTiroir].Ini.IsEmpty());

    flock(other, LOCK_SH);
    LoadCodeFile(file, codes);
    EXPECT_FALSE(codes[ptTiroir].Ini.IsEmpty());
    EXPECT_EQ(saveError(file).first, "Vous n'avez pas les droits pour effectuer cette opération ");
    EXPECT_EQ(contentsOf(file).size(), 150U) << "a file in use was cut short";
    close(other);
    EXPECT_EQ(saveError(file).first, "");
}

TEST_F(CodeFile, aFifoInItsPlaceDoesNotHang)
{
    ASSERT_EQ(mkfifo((m_folder / "x.PCC").c_str(), 0600), 0);
    auto codes = DefaultPrinterCodes();
    LoadCodeFile(m_folder / "x.PCC", codes);
    EXPECT_EQ(codes, DefaultPrinterCodes());
    EXPECT_NE(saveError(m_folder / "x.PCC").first, "");
}
#endif
