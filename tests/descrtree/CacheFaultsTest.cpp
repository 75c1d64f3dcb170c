// What becomes of the cache files when a disk, a folder or the program itself fails.

#include "CacheFixture.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Zelmar01;

namespace {

class CacheFaults : public CacheFixture
{
protected:
    // Files may not become longer than this as long as it lives, as on a disk that is nearly full.
    class FileLimit
    {
    public:
        explicit FileLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
        {
            getrlimit(RLIMIT_FSIZE, &m_before);
            const rlimit limit{bytes, m_before.rlim_max};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        ~FileLimit()
        {
            setrlimit(RLIMIT_FSIZE, &m_before);
            std::signal(SIGXFSZ, m_signal);
        }
        FileLimit(const FileLimit &) = delete;
        FileLimit &operator=(const FileLimit &) = delete;

    private:
        rlimit m_before = {};
        void (*m_signal)(int);
    };

    void expectWriteError(const std::vector<TDescr> &levels, const char *cause)
    {
        try {
            write(levels);
            FAIL() << "written: " << cause;
        } catch (const EInOutError &error) {
            EXPECT_STREQ(error.what(), "Impossible d'écrire les fichiers de l'arbre des codes");
            EXPECT_NE(error.Cause().Text.find(cause), std::string::npos) << error.Cause().Text;
        }
    }

    std::size_t filesInFolder() const
    {
        const std::filesystem::directory_iterator files(m_folder.Path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }
};

std::vector<TDescr> changedLevels()
{
    auto levels = someLevels();
    levels[2].Libelle = "PLATINE";
    return levels;
}

} // namespace

TEST_F(CacheFaults, aFullDiskLeavesTheOldPair)
{
    write(someLevels());
    for (const rlim_t limit : {0U, 60U, 150U}) { // nothing, half the tree file, the tree file alone
        const FileLimit full(limit);
        expectWriteError(changedLevels(), limit < 100 ? "xArbre.dat : " : "xObjets.dat : ");
    }
    EXPECT_EQ(levelsOf(read()), someLevels());
    EXPECT_EQ(filesInFolder(), 2U);
}

TEST_F(CacheFaults, whatIsNoOrdinaryFileIsLeftAlone)
{
    std::filesystem::create_directory(pair().Objects.toStdString());
    expectWriteError(someLevels(), "xObjets.dat : n'est pas un fichier ordinaire");
    EXPECT_EQ(filesInFolder(), 1U);
    EXPECT_THROW(RecordedCount(pair().Objects), EInOutError);
    EXPECT_THROW(RemoveCacheFiles(pair()), EInOutError);

    std::filesystem::remove(pair().Objects.toStdString());
    mkfifo(pair().Objects.toStdString().c_str(), 0600);
    std::filesystem::create_symlink("/dev/full", pair().Tree.toStdString());
    expectWriteError(someLevels(), "xArbre.dat : n'est pas un fichier ordinaire");
    EXPECT_THROW(RecordedCount(pair().Objects), EInOutError);
    EXPECT_THROW(read(), EInOutError);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(CacheFaults, aMissingFolderIsNamed)
{
    const auto files = pair("missing/x");
    try {
        WriteCacheFiles(files, m_root, m_rule, rowsOf(someLevels()));
        FAIL();
    } catch (const EInOutError &error) {
        EXPECT_NE(error.Cause().Text.find("missing/xArbre.dat : "), std::string::npos) << error.Cause().Text;
    }
    EXPECT_THROW(ReadCacheFiles(files, m_rule), EInOutError);
    EXPECT_EQ(RecordedCount(files.Objects), -2);
    EXPECT_FALSE(files.Exist());
    RemoveCacheFiles(files);
}

TEST_F(CacheFaults, aCrashBetweenTheFilesIsNoticed)
{
    write(someLevels());
    const auto oldObjects = contentsOf(pair().Objects), oldTree = contentsOf(pair().Tree);
    auto fewer = someLevels();
    fewer.pop_back();
    auto otherCode = someLevels();
    otherCode.back().Code = "3";
    for (const auto &levels : {changedLevels(), fewer, otherCode}) {
        write(levels);
        put(pair().Objects, oldObjects);
        EXPECT_NE(readError(), "");
        write(levels);
        put(pair().Tree, oldTree);
        EXPECT_NE(readError(), "");
    }

    // When the texts are those of the new file, the old levels come back as they were.
    auto otherIds = someLevels();
    otherIds.back().ID = 5;
    write(otherIds);
    put(pair().Objects, oldObjects);
    EXPECT_EQ(levelsOf(read()), someLevels());
}

TEST_F(CacheFaults, theFilesGoTogether)
{
    write(someLevels());
    EXPECT_TRUE(pair().Exist());
    RemoveCacheFiles(pair());
    EXPECT_EQ(filesInFolder(), 0U);
    RemoveCacheFiles(pair());
}
