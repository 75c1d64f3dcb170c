#include "Bench.h"
#include "DescrLevels.h"

#include <QHash>

#include <filesystem>
#include <random>

using namespace Zelmar01;

namespace {

// Of a tree, each record of which was read once.
template<class Make>
void printMemory(const std::string &what, std::size_t count, Make make)
{
    const auto bytes = memoryALevel(count, [&] {
        TDescrTree tree = make();
        std::size_t length = 0;
        for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None; node = tree.Next(node))
            length += static_cast<std::size_t>(tree.Descr(node).LibLong.size());
        sink = length;
        return tree;
    });
    std::printf("memory a level, %s: %.0f bytes, target 250\n", what.c_str(), bytes);
}

void benchLoad(Series &series, const std::filesystem::path &folder, std::size_t count)
{
    const TNodeTextRule rule{true, QStringLiteral("-")};
    const auto rows = Levels(count, 1).Rows;
    const auto files = CacheFilesOf(QString::fromStdString((folder / std::to_string(count)).string()));
    WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows);
    series.Print(
        "cache files, load", count, "read and split both files", count == 100'000 ? 3 : 0,
        [&] { return ReadCacheFiles(files, rule); }, [&] { readAndSplit(files); });

    const QByteArray whole(QFile(files.Tree).size() + QFile(files.Objects).size(), 'x');
    series.Print(
        "cache files, write", count, "write their bytes", 0,
        [&] { WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows); },
        [&] {
            QFile file(files.Tree + QStringLiteral(".copy"));
            if (!file.open(QIODevice::WriteOnly) || file.write(whole) != whole.size())
                std::abort();
        },
        9);
    printMemory(std::to_string(count) + " levels", count, [&] { return ReadCacheFiles(files, rule); });
}

void benchFind(std::size_t count, int step)
{
    const TDescrTree tree({}, Levels(count, step).Rows);
    QHash<int, TDescrTree::TNode> hash;
    for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None; node = tree.Next(node))
        hash.insert(tree.ID(node), node);
    std::mt19937 random(1);
    std::vector<int> wanted(4096);
    for (auto &id : wanted) {
        const auto any = static_cast<int>(random() % count) * step + 1;
        id = random() % 2 == 0 ? any : -any;
    }
    Comparison::Print(
        "4096 levels by identifier, steps of " + std::to_string(step), "QHash", 5,
        [&] {
            std::size_t sum = 0;
            for (const int id : wanted)
                sum += tree.Find(id);
            sink = sum;
        },
        [&] {
            std::size_t sum = 0;
            for (const int id : wanted)
                sum += hash.value(id, TDescrTree::None);
            sink = sum;
        });
    printMemory("steps of " + std::to_string(step), count,
                [&] { return TDescrTree({}, Levels(count, step).Rows); });
}

} // namespace

int main()
{
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    Comparison::PrintHeader();
    Series series;
    for (const std::size_t count : {1'000U, 10'000U, 100'000U})
        benchLoad(series, folder, count);
    for (const int step : {1, 1'000})
        benchFind(100'000, step);
    std::filesystem::remove_all(folder);
}
