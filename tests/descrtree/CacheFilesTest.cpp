#include "CacheFixture.h"

#include <random>

using namespace Zelmar01;

namespace {

using CacheFiles = CacheFixture;

const std::string tree = "Corvantix\r\n"
                         "\t1-BAGUES\r\n"
                         "\t\t10-ARGENT\r\n"
                         "\t\t1A-OR\r\n"
                         "\t\t\t1A0-18 CARATS\r\n"
                         "\t2-Collection d'\xE9t\xE9 \xE0 5 \x80\r\n";
const std::string objects =
    "5\r\n"
    "3{@}0{@}BAGUES{@}BAGUES{@}BAG{@}1{@}01\r\n"
    "11{@}3{@}BAGUES - ARGENT{@}ARGENT{@}ARG{@}10{@}01\r\n"
    "12{@}3{@}BAGUES - OR{@}OR{@}OR{@}1A{@}01\r\n"
    "13{@}12{@}BAGUES - OR - 18 CARATS{@}18 CARATS{@}18 CT{@}1A0{@}01\r\n"
    "4{@}0{@}Collection d'\xE9t\xE9 \xE0 5 \x80{@}Collection d'\xE9t\xE9 \xE0 5 \x80{@}"
    "{@}2{@}01\r\n";

std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return text.replace(at, from.size(), to);
}

} // namespace

TEST_F(CacheFiles, haveTheirFormToTheByte)
{
    EXPECT_TRUE(write(someLevels()).IsEmpty());
    EXPECT_EQ(contentsOf(pair().Tree), tree);
    EXPECT_EQ(contentsOf(pair().Objects), objects);

    m_rule.AfficherCodeStat = false;
    m_root = "Codes";
    write({{3, 0, "", "BAGUES", "", "1"}, {9, 0, "", "sans code", "", ""}});
    EXPECT_EQ(contentsOf(pair().Tree), "Codes\r\n\tBAGUES\r\n\tsans code\r\n");
    EXPECT_EQ(contentsOf(pair().Objects),
              "2\r\n3{@}0{@}{@}BAGUES{@}{@}1{@}01\r\n9{@}0{@}{@}sans code{@}{@}{@}01\r\n");

    write({});
    EXPECT_EQ(contentsOf(pair().Tree) + contentsOf(pair().Objects), "Codes\r\n0\r\n");
    EXPECT_EQ(read().Count(), 1U);
}

TEST_F(CacheFiles, recordTheirNumberOfLevels)
{
    EXPECT_EQ(RecordedCount(pair().Objects), -2);
    for (const auto &[text, expected] :
         {std::pair("41\r\n1{@}", 41), {"41", 41}, {"0\r\n", 0}, {"-3\n", -3}}) {
        put(pair().Objects, text);
        EXPECT_EQ(RecordedCount(pair().Objects), expected) << text;
    }
    const std::string endless(100'000, '1');
    const std::vector<std::string_view> malformed{
        "",     "\r\n5\r\n", "x", "4 1", "41x\r\n", "1{@}2", "3000000000", std::string_view("4\0001\r\n", 5),
        endless};
    for (const auto text : malformed) {
        put(pair().Objects, text);
        EXPECT_THROW(RecordedCount(pair().Objects), EConvertError) << text.substr(0, 20);
        put(pair().Tree, tree);
        EXPECT_THROW(read(), EConvertError) << text.substr(0, 20);
    }
}

TEST_F(CacheFiles, reportWhatTheyCannotCarry)
{
    const TDescr fine(1, 0, "L", "l'été {@ }", "c", "1");
    const std::vector<TDescr> uncarried{
        {2, 0, "a\tb", "", "", "2"},       {3, 0, "", "a\r", "", "3"},    {4, 0, "", "", "a\nb", "4"},
        {5, 0, "", "{@}", "", "5"},        {6, 0, "", "", "", "6{@}"},    {7, 0, "", "\u05E2", "", "7"},
        {8, 0, "", "", "\U0001F48D", "8"}, {9, 0, "", "\u0301", "", "9"}, {9, 0, "\u0100", "\t", "\n", "9A"}};
    for (const auto &level : uncarried) {
        EXPECT_EQ(write({fine, level}).Codes, QStringList(level.Code)) << level.Code.toStdString();
        EXPECT_FALSE(pair().Exist());
    }
    EXPECT_EQ(write(uncarried).Codes.size(), 9);

    m_rule.Separateur = "\t";
    EXPECT_TRUE(write({fine}).Separator);
    m_rule.AfficherCodeStat = false;
    m_root = "\u05E2";
    EXPECT_FALSE(write({fine}).Separator);
    EXPECT_TRUE(write({fine}).Root);
    EXPECT_FALSE(pair().Exist());

    // An accent that was typed on its own is joined with its letter.
    m_root = "e\u0301";
    EXPECT_TRUE(write({{1, 0, "", "Cle\u0301", "", "1"}}).IsEmpty());
    EXPECT_EQ(read().Libelle(1), "Clé");
    EXPECT_EQ(read().RootText(), "é");
}

TEST_F(CacheFiles, comeBackAsTheyWere)
{
    std::mt19937 random(7);
    const QString alphabet("{@}-19aZ éŒ€\u0081\u00A0'\"\x01");
    const auto text = [&] {
        QString made;
        for (auto length = random() % 12; length > 0; --length)
            made += alphabet[static_cast<int>(random() % static_cast<unsigned>(alphabet.size()))];
        return made.replace("{@}", "{}");
    };
    for (int round = 0; round < 60; ++round) {
        m_rule = {random() % 2 == 0, text()};
        std::vector<TDescr> levels;
        std::size_t depth = 0;
        for (auto count = random() % 50; count > 0; --count) {
            depth = 1 + random() % (depth + 1);
            levels.emplace_back(static_cast<int>(random()), static_cast<int>(random()), text(), text(),
                                text(), QString(static_cast<qsizetype>(depth), u'é'));
        }
        ASSERT_TRUE(write(levels).IsEmpty());
        const auto loaded = read();
        EXPECT_EQ(levelsOf(loaded), levels);
        EXPECT_EQ(loaded.Count(), levels.size() + 1);
        EXPECT_EQ(RecordedCount(pair().Objects), static_cast<int>(levels.size()));
    }
}

TEST_F(CacheFiles, areReadInWhateverFormAnEditorSavesThem)
{
    auto unixTree = tree, unixObjects = objects;
    std::erase(unixTree, '\r');
    std::erase(unixObjects, '\r');
    put(pair().Tree, unixTree.substr(0, unixTree.size() - 1));
    put(pair().Objects, unixObjects);
    EXPECT_EQ(levelsOf(read()), someLevels());
}

TEST_F(CacheFiles, thatDoNotFitAreNoticed)
{
    const auto end = [](const std::string &text) { return text + "\t3-X\r\n"; };
    const auto changed = [](const std::string &from, const std::string &to) {
        return std::pair(replaced(tree, from, to), objects);
    };
    const auto objectsChanged = [](const std::string &from, const std::string &to) {
        return std::pair(tree, replaced(objects, from, to));
    };
    const struct
    {
        std::pair<std::string, std::string> Files;
        const char *Expected;
    } cases[] = {
        {changed("\t1A-OR", "\t1A-or"), "xArbre.dat, ligne 4, code « 1A » : texte différent"},
        {changed("\t1A-OR", "\t1A-O"), "ligne 4, code « 1A » : texte différent"},
        {changed("\t1A-OR", "\t1A_OR"), "ligne 4, code « 1A » : texte sans code"},
        {changed("\t1A-OR", "\t1A"), "ligne 4, code « 1A » : texte sans code"},
        {changed("\t1A-OR", "1A-OR"), "ligne 4, code « 1A » : retrait"},
        {changed("\t1A-OR", "\t\t1A-OR"), "ligne 4, code « 1A » : retrait"},
        {changed("\t\t10-ARGENT\r\n", ""), "ligne 3, code « 10 » : texte sans code"},
        {changed("Corvantix\r\n", ""), "xArbre.dat, ligne 1 : la racine manque"},
        {{"", objects}, "xArbre.dat, ligne 1 : la racine manque"},
        {{end(tree), objects}, "xArbre.dat, ligne 7 : niveau absent"},
        {{tree.substr(0, tree.find("\t2")), objects}, "xArbre.dat, ligne 6, code « 2 » : le niveau manque"},
        {objectsChanged("5\r\n", "6\r\n"), "xObjets.dat, ligne 1 : 6 niveaux annoncés, 5 trouvés"},
        {objectsChanged("5\r\n", "-1\r\n"), "xObjets.dat, ligne 1 : -1 niveaux"},
        {objectsChanged("5\r\n", "2000000000\r\n"), "xObjets.dat, ligne 1 : 2000000000 niveaux"},
        {objectsChanged("12{@}3", "1x{@}3"),
         "xObjets.dat, ligne 4 : nombre entier attendu au lieu de « 1x »"},
        {objectsChanged("OR{@}1A{@}", "OR{@}1A"), "xObjets.dat, ligne 4 : niveau incomplet"},
        {objectsChanged("{@}OR{@}OR", "{@}O{@}R{@}OR"), "code « OR »"}, // a label that holds the separator
        {objectsChanged("12{@}3", "\r\n12{@}3"), "xObjets.dat, ligne 4 : niveau incomplet"},
        {{replaced(replaced(tree, "\t1A-OR", "1-OR"), "\t1-B", "\t\t1A-B"),
          replaced(replaced(objects, "OR{@}1A", "OR{@}1"), "BAG{@}1{", "BAG{@}1A{")},
         "ligne 2, code « 1A » : niveau sans parent"},
    };
    for (const auto &c : cases) {
        put(pair().Tree, c.Files.first);
        put(pair().Objects, c.Files.second);
        EXPECT_NE(readError().find(c.Expected), std::string::npos) << c.Expected << "\n" << readError();
    }

    write(someLevels());
    for (const auto &rule : {TNodeTextRule{false, "-"}, {true, " "}, {true, ""}, {true, "\u05E2"}}) {
        m_rule = rule;
        EXPECT_NE(readError(), "") << rule.Separateur.toStdString();
    }
}

TEST_F(CacheFiles, thatWereCutOffNeverChangeALevel)
{
    const auto levels = someLevels();
    for (const bool cutsTree : {false, true}) {
        const auto &whole = cutsTree ? tree : objects;
        put(pair().Tree, tree);
        put(pair().Objects, objects);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            put(cutsTree ? pair().Tree : pair().Objects, std::string_view(whole).substr(0, size));
            if (readError().empty())
                EXPECT_EQ(levelsOf(read()), levels) << size;
            else
                EXPECT_LT(size, whole.size() - 2) << readError();
        }
    }
}
