#include "Bench.h"
#include "DescrLevels.h"

#include <QHash>

#include <filesystem>
#include <random>

using namespace Zelmar01;

namespace {

constexpr std::size_t largest = 100'000, sizes[] = {1'000, 10'000, largest};

// Of a tree, each record of which was read once, beside its texts.
template<class Make>
void printMemory(const std::string &what, std::size_t count, double texts, Make make)
{
    const auto bytes = memoryALevel(count, [&] {
        TDescrTree tree = make();
        std::size_t length = 0;
        for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None; node = tree.Next(node))
            length += static_cast<std::size_t>(tree.Descr(node).LibLong.size());
        sink = length;
        return tree;
    });
    Row("memory a level, " + what, count)
        .Unit("bytes")
        .Ours(bytes)
        .Limit("the text itself", texts)
        .Target(count == largest ? 250 : 0)
        .Print();
}

void benchLoad(const std::filesystem::path &folder, std::size_t count)
{
    const TNodeTextRule rule{true, QStringLiteral("-")};
    const auto rows = Levels(count, 1).Rows;
    const auto files = CacheFilesOf(QString::fromStdString((folder / std::to_string(count)).string()));
    WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows);
    Row("cache files, load, levels", count)
        .Ours([&] { return ReadCacheFiles(files, rule); })
        .Limit("read and split both files", [&] { readAndSplit(files); })
        .LimitTarget(count == largest ? 3 : 0)
        .GrowthTarget(count == largest ? 1.5 : 0)
        .Print();

    const QByteArray whole(QFile(files.Tree).size() + QFile(files.Objects).size(), 'x');
    Row("cache files, write, levels", count)
        .WallTime()
        .Rounds(9)
        .Ours([&] { WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows); })
        .Limit("write their bytes",
               [&] {
                   QFile file(files.Tree + QStringLiteral(".copy"));
                   if (!file.open(QIODevice::WriteOnly) || file.write(whole) != whole.size())
                       std::abort();
               })
        .Print();
    printMemory("cache files, levels", count, textBytesALevel(rows),
                [&] { return ReadCacheFiles(files, rule); });
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
    const auto name = "identifiers in steps of " + std::to_string(step) + ", levels";
    Row("find 4,096, " + name, count)
        .Ours([&] {
            std::size_t sum = 0;
            for (const int id : wanted)
                sum += tree.Find(id);
            sink = sum;
        })
        .Peer("QHash",
              [&] {
                  std::size_t sum = 0;
                  for (const int id : wanted)
                      sum += hash.value(id, TDescrTree::None);
                  sink = sum;
              })
        .PeerTarget(count == largest ? 5 : 0)
        .Print();
    printMemory(name, count, textBytesALevel(Levels(count, step).Rows),
                [&] { return TDescrTree({}, Levels(count, step).Rows); });
}

} // namespace

int main()
{
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    for (const auto count : sizes)
        benchLoad(folder, count);
    for (const int step : {1, 1'000})
        for (const auto count : sizes)
            benchFind(count, step);
    std::filesystem::remove_all(folder);
}
