#include "Bench.h"

#include <Zelmar01/descrtree/CacheFiles.h>

#include <QFile>
#include <QHash>

#include <cstdlib>
#include <filesystem>
#include <malloc.h>
#include <random>
#include <string_view>

using namespace Zelmar01;

namespace {

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile std::size_t sink;

constexpr const char *labels[] = {"BAGUES",    "OR JAUNE 18 CARATS", "ALLIANCES",     "ARGENT RHODIÉ",
                                  "BRACELETS", "PLAQUÉ OR",          "MONTRES HOMME", "PERLES DE CULTURE"};

constexpr char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// A hierarchy four levels deep, all parents with as many children; the identifiers go up in steps.
class Levels
{
public:
    Levels(std::size_t count, int step) : m_count(count), m_step(step)
    {
        while (9 * (1 + m_children + m_children * m_children + m_children * m_children * m_children) < count)
            ++m_children;
        addBelow(TDescr());
    }

    TDescrRows Rows;

private:
    void addBelow(const TDescr &parent)
    {
        const bool isRoot = parent.Code.isEmpty();
        for (std::size_t i = isRoot; i < (isRoot ? 10 : m_children) && Rows.Count() < m_count; ++i) {
            const auto label = QString::fromUtf8(labels[Rows.Count() % 8]);
            const TDescr descr(m_nextId, parent.ID, LongLabel(parent.LibLong, label), label, label.left(10),
                               parent.Code + QLatin1Char(digits[i]));
            m_nextId += m_step;
            Rows.Append(descr);
            if (descr.Code.size() < 4)
                addBelow(descr);
        }
    }

    const std::size_t m_count;
    const int m_step;
    std::size_t m_children = 1;
    int m_nextId = 1;
};

// The least that must be done: the bytes of both files, cut into lines and values.
void readAndSplit(const TCacheFiles &files)
{
    const auto bytesOf = [](const QString &path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            std::abort();
        return file.readAll();
    };
    const auto eachLine = [](const QByteArray &bytes, auto take) {
        std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        for (std::size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1))
            take(rest.substr(0, end));
    };
    std::size_t sum = 0;
    eachLine(bytesOf(files.Tree), [&](std::string_view line) { sum += line.size(); });
    eachLine(bytesOf(files.Objects), [&](std::string_view line) {
        for (std::size_t end; (end = line.find("{@}")) != line.npos; line.remove_prefix(end + 3))
            sum += end;
    });
    sink = sum;
}

std::size_t allocated()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// What the allocator has given away for a tree, each record of which was read once.
template<class Make>
void printMemory(const std::string &what, std::size_t count, Make make)
{
    const auto before = allocated();
    const TDescrTree tree = make();
    std::size_t length = 0;
    for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None; node = tree.Next(node))
        length += static_cast<std::size_t>(tree.Descr(node).LibLong.size());
    sink = length;
    std::printf("memory a level, %s: %.0f bytes, target 250\n", what.c_str(),
                static_cast<double>(allocated() - before) / static_cast<double>(count));
}

void benchLoad(const std::filesystem::path &folder, std::size_t count)
{
    const TNodeTextRule rule{true, QStringLiteral("-")};
    const auto rows = Levels(count, 1).Rows;
    const auto files = CacheFilesOf(QString::fromStdString((folder / std::to_string(count)).string()));
    WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows);
    const auto name = std::to_string(count) + " levels";
    Comparison::Print(
        "cache files, load " + name, "read and split both files", count == 100'000 ? 3 : 0,
        [&] { sink = ReadCacheFiles(files, rule).Count(); }, [&] { readAndSplit(files); });

    const auto bytes = QFile(files.Tree).size() + QFile(files.Objects).size();
    const QByteArray whole(bytes, 'x');
    Comparison::Print(
        "cache files, write " + name, "write their bytes", 0,
        [&] { WriteCacheFiles(files, QStringLiteral("Racine"), rule, rows); },
        [&] {
            QFile file(files.Tree + QStringLiteral(".copy"));
            if (!file.open(QIODevice::WriteOnly) || file.write(whole) != whole.size())
                std::abort();
        },
        9);
    printMemory(name, count, [&] { return ReadCacheFiles(files, rule); });
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
    for (const std::size_t count : {1'000U, 10'000U, 100'000U})
        benchLoad(folder, count);
    for (const int step : {1, 1'000})
        benchFind(100'000, step);
    std::filesystem::remove_all(folder);
}
