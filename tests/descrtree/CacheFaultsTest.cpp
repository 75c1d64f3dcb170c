// Something else in the place of a cache file. What a failing disk does to them is in
// tests/integration/faults.

#include "CacheFixture.h"

#include <sys/stat.h>

using namespace Zelmar01;

namespace {

class CacheFaults : public CacheFixture
{
protected:
    void expectNoOrdinaryFile(const char *name)
    {
        try {
            write(someLevels());
            FAIL() << "written";
        } catch (const EInOutError &error) {
            EXPECT_TRUE(error.Cause().Text.ends_with(std::string(name) + " : n'est pas un fichier ordinaire"))
                << error.Cause().Text;
        }
    }
};

} // namespace

TEST_F(CacheFaults, whatIsNoOrdinaryFileIsLeftAlone)
{
    const auto objects = pair().Objects.toStdString();
    std::filesystem::create_directory(objects);
    expectNoOrdinaryFile("xObjets.dat");
    EXPECT_FALSE(std::filesystem::exists(pair().Tree.toStdString())) << "half of the pair";
    EXPECT_THROW(RecordedCount(pair().Objects), EInOutError);
    EXPECT_THROW(RemoveCacheFiles(pair()), EInOutError);

    std::filesystem::remove(objects);
    mkfifo(objects.c_str(), 0600);
    std::filesystem::create_symlink("/dev/full", pair().Tree.toStdString());
    expectNoOrdinaryFile("xArbre.dat");
    EXPECT_THROW(RecordedCount(pair().Objects), EInOutError);
    EXPECT_THROW(read(), EInOutError);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}
