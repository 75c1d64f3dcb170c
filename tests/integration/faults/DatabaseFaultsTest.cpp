// Every call of the database fails in turn, and every system call that the database makes on its files.
// Whatever fails: the table holds the old or the new state, what is shown and the cache files say the same,
// and the next attempt succeeds. So it is for the next program when this one was killed.

#include "Changes.h"
#include "FaultyCalls.h"

#include <descrtree/ShownTree.h>
#include <support/TempFolder.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/descrtree/CacheFiles.h>

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include <dlfcn.h>
#include <sqlite3.h>

using namespace Zelmar01;

namespace {

// The steps of statements, one of which fails, counted from 1; or a commit, which may be made all the same.
struct TFaultyStep
{
    static constexpr int RefusedCommit = -1, MadeCommit = -2;

    explicit TFaultyStep(int number) : Number(number) { current = this; }
    ~TFaultyStep() { current = nullptr; }
    TFaultyStep(const TFaultyStep &) = delete;
    TFaultyStep &operator=(const TFaultyStep &) = delete;

    const int Number;
    int Count = 0;
    std::string Met; // the statement
    static inline TFaultyStep *current = nullptr;
};

} // namespace

// Stands in front of that of the library, for Qt's driver too.
extern "C" int sqlite3_step(sqlite3_stmt *statement)
{
    static const auto step = reinterpret_cast<int (*)(sqlite3_stmt *)>(dlsym(RTLD_NEXT, "sqlite3_step"));
    auto *const faulty = TFaultyStep::current;
    // What is asked of the schema comes from memory once the first row is there.
    const bool isSafe =
        sqlite3_stmt_busy(statement) && sqlite3_strnicmp(sqlite3_sql(statement), "pragma", 6) == 0;
    const bool isCommit =
        faulty && faulty->Number < 0 && sqlite3_stricmp(sqlite3_sql(statement), "commit") == 0;
    if (!faulty || isSafe || (++faulty->Count != faulty->Number && !isCommit))
        return step(statement);
    faulty->Met = sqlite3_sql(statement);
    if (faulty->Number == TFaultyStep::MadeCommit)
        step(statement);
    return SQLITE_FULL;
}

namespace {

class TShop : public ShownTree
{
public:
    explicit TShop(const TempFolder &folder) : m_folder(folder)
    {
        const bool isNew = !std::filesystem::exists(folder / "shop.db");
        m_connection.setDatabaseName(path("shop.db"));
        m_connection.setCommandTimeout(1);
        if (isNew)
            makeTable(m_connection, QStringLiteral("varchar(20) collate nocase"));
        else
            useTable(m_connection);
        m_view.setFichierSortie(path("x"));
        // These ask the database, and what that refuses may not be raised through a signal.
        for (const auto event : {&TTreeViewDescr::OnNoeudInsere, &TTreeViewDescr::OnNoeudModifie,
                                 &TTreeViewDescr::OnNoeudSupprime})
            QObject::disconnect(&m_view, event, nullptr, nullptr);
        m_view.MettreAJourArbre(false);
        select(13);
    }

    using ShownTree::m_levels;
    using ShownTree::m_view;
    using ShownTree::node;
    using ShownTree::said;
    TConnection &Connection() { return m_connection; }

    // Null when no label is being edited; one that was is hidden and goes a moment later.
    QLineEdit *Editor() const
    {
        for (auto *const line : m_view.findChildren<QLineEdit *>())
            if (!line->isHidden())
                return line;
        return nullptr;
    }

    // What the table holds, as another program reads it.
    std::string InTable() const
    {
        TConnection connection;
        connection.setDatabaseName(path("shop.db"));
        TQuery query(nullptr, &connection);
        query.setCommandText(QStringLiteral("select * from DESCR_ARTICLE"));
        query.Open();
        return rowsOf(query);
    }

    void ExpectInStep(bool isTree)
    {
        const auto table = InTable();
        EXPECT_FALSE(m_connection.InTransaction());
        EXPECT_TRUE(!m_levels.Active() || rowsOf(m_levels) == table);
        EXPECT_TRUE(!m_levels.Active() || m_levels.State() == dsBrowse);
        EXPECT_TRUE(!isTree || shown() == table) << shown();
        const auto files = CacheFilesOf(path("x"));
        EXPECT_TRUE(!isTree || !files.Exist() || lines(levelsOf(ReadCacheFiles(files, {}))) == table)
            << "an old label would come back";
    }

private:
    QString path(const char *name) const { return QString::fromStdString((m_folder / name).string()); }

    const TempFolder &m_folder;
    TConnection m_connection;
};

struct TWork
{
    const char *Name;
    void (*Make)(TShop &);
    bool IsTree = true;
};

void PrintTo(const TWork &work, std::ostream *to)
{
    *to << work.Name;
}

void setLabel(TShop &shop, int id, const char *label)
{
    auto &levels = shop.m_levels;
    ASSERT_TRUE(levels.Locate(QStringLiteral("DESCR_ART_ID"), id));
    levels.Edit();
    levels.FieldByName(QStringLiteral("DESCR_ART_LIBELLE")).setAsString(QString::fromLatin1(label));
    levels.Post();
}

void addLevel(TShop &shop)
{
    auto &levels = shop.m_levels;
    levels.Insert();
    levels.FieldByName(QStringLiteral("DESCR_ART_ID")).setAsInteger(20);
    levels.FieldByName(QStringLiteral("DESCR_ART_CODE")).setAsString(QStringLiteral("5"));
    levels.Post();
}

const TWork works[] = {
    {"add a department",
     [](TShop &shop) {
         shop.m_view.AjouterRacineCode(20, QStringLiteral("5"), QStringLiteral("MONTRES"), {});
     }},
    {"add a section",
     [](TShop &shop) {
         shop.m_view.AjouterFilsCode(20, QStringLiteral("1A01"), QStringLiteral("ROSE"), {});
     }},
    {"rename with all below",
     [](TShop &shop) {
         shop.m_view.MettreAJourNoeud(3, QStringLiteral("1"), QStringLiteral("ANNEAUX"),
                                      QStringLiteral("BAG"), {});
     },
     true},
    {"delete", [](TShop &shop) { shop.m_view.SupprimerNoeudSelectionne(); }},
    {"load anew", [](TShop &shop) { shop.m_view.MettreAJourArbre(true); }},
    {"post a change", [](TShop &shop) { setLabel(shop, 4, "X"); }, false},
    {"post a new row", addLevel, false},
    {"delete a row",
     [](TShop &shop) {
         ASSERT_TRUE(shop.m_levels.Locate(QStringLiteral("DESCR_ART_ID"), 13));
         shop.m_levels.Delete();
     },
     false},
};

class DatabaseFaults : public testing::TestWithParam<TWork>
{
protected:
    DatabaseFaults()
    {
        const TempFolder folder;
        TShop shop(folder);
        m_before = shop.InTable();
        GetParam().Make(shop);
        m_after = shop.InTable();
    }

    // What is said of the failure of the work.
    static std::string saidOf(TShop &shop)
    {
        try {
            GetParam().Make(shop);
            return {};
        } catch (const Exception &error) {
            if (shop.m_levels.Active() && !GetParam().IsTree)
                shop.m_levels.Cancel(); // which a user might rather correct
            // A table whose columns the database did not name is one that cannot be written to.
            const std::string_view message = error.what();
            const bool isReadOnly = message.ends_with("ne peut pas être modifié") ||
                                    message == "Aucune ligne ne peut être supprimée";
            EXPECT_TRUE(isReadOnly || !error.Cause().Text.empty()) << message;
            return std::string(error.what()) + " (" + error.Cause().Words() + ")";
        }
    }

    void expectWhole(TShop &shop, const std::string &said)
    {
        const auto now = shop.InTable();
        EXPECT_TRUE(now == m_after || !said.empty()) << "said to be made: " << now;
        EXPECT_TRUE(now == m_before || now == m_after) << now;
        shop.ExpectInStep(GetParam().IsTree);
        if (now == m_after)
            return;
        shop.m_levels.Open(); // closed when it could not be read again
        EXPECT_EQ(saidOf(shop), "") << "what failed once fails again";
        EXPECT_EQ(shop.InTable(), m_after);
        shop.ExpectInStep(GetParam().IsTree);
    }

    std::string m_before, m_after;
};

using DatabaseFileFaults = DatabaseFaults;
using DatabaseKilled = DatabaseFaults;

std::string nameOf(const testing::TestParamInfo<TWork> &work)
{
    std::string name = work.param.Name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

} // namespace

TEST_P(DatabaseFaults, eachStatement)
{
    bool isMet = true;
    for (int number = 1; isMet; ++number) {
        const TempFolder folder;
        TShop shop(folder);
        std::string said, met;
        {
            const TFaultyStep faulty(number);
            said = saidOf(shop);
            met = faulty.Met;
        }
        isMet = !met.empty();
        SCOPED_TRACE(met + ": " + said);
        expectWhole(shop, said);
    }
}

// As by a server that goes away before it could answer.
TEST_P(DatabaseFaults, aCommitThatIsMadeAndSaidToFail)
{
    const TempFolder folder;
    TShop shop(folder);
    std::string said;
    {
        const TFaultyStep faulty(TFaultyStep::MadeCommit);
        said = saidOf(shop);
        EXPECT_EQ(said.empty(), faulty.Met.empty());
    }
    EXPECT_EQ(shop.InTable(), m_after);
    expectWhole(shop, said);
}

TEST(DatabaseFaultsInPlace, aLabelWhoseCommitFailedIsStillInItsEditor)
{
    const TempFolder folder;
    TShop shop(folder);
    const auto before = shop.InTable();
    shop.m_view.show();
    shop.m_view.EditerNoeudSelectionne();
    ASSERT_TRUE(shop.Editor());
    shop.Editor()->setText(QStringLiteral("9 CARATS"));
    {
        const TFaultyStep faulty(TFaultyStep::RefusedCommit);
        QTest::keyClick(shop.Editor(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shop.said().empty(); }));
    }
    EXPECT_EQ(shop.InTable(), before);
    shop.ExpectInStep(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shop.Editor(); }));
    EXPECT_EQ(shop.Editor()->text(), QStringLiteral("9 CARATS"));
    QTest::keyClick(shop.Editor(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shop.Editor(); }));
    EXPECT_NE(shop.InTable(), before);
    shop.ExpectInStep(true);
}

TEST_P(DatabaseFileFaults, eachSystemCall)
{
    for (const auto fault : {TFault::Refused, TFault::DiskFull}) {
        int count = 1;
        for (int number = 1; number <= count; ++number) {
            const TempFolder folder;
            const auto open = OpenFiles();
            {
                TShop shop(folder);
                std::string said, met;
                {
                    const FaultyCalls calls(folder.Path(), fault, number);
                    said = saidOf(shop);
                    met = calls.Met();
                    count = calls.Count();
                }
                SCOPED_TRACE(met + ": " + said);
                expectWhole(shop, said);
            }
            EXPECT_EQ(OpenFiles(), open);
        }
    }
}

TEST_P(DatabaseKilled, atEachSystemCall)
{
    for (const auto fault : {TFault::Killed, TFault::KilledBehind}) {
        bool isOver = false;
        for (int number = 1; !isOver; ++number) {
            SCOPED_TRACE((fault == TFault::Killed ? "before call " : "behind call ") +
                         std::to_string(number));
            const TempFolder folder;
            TShop{folder}; // gone before another process opens what it has made
            isOver = InChild([&] {
                TShop shop(folder);
                const FaultyCalls calls(folder.Path(), fault, number);
                GetParam().Make(shop);
            });
            TShop next(folder);
            next.ExpectInStep(GetParam().IsTree);
            expectWhole(next, isOver ? "" : "killed");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Works, DatabaseFaults, testing::ValuesIn(works), nameOf);
INSTANTIATE_TEST_SUITE_P(Works, DatabaseFileFaults, testing::ValuesIn(works), nameOf);
INSTANTIATE_TEST_SUITE_P(Works, DatabaseKilled, testing::ValuesIn(works), nameOf);
