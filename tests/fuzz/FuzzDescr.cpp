// Any bytes as a pair of cache files and as the text of a level: no crash, no hang, and what is read is what
// the files say.

#include "Fuzz.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/descrtree/CacheFiles.h>

#include <support/TempFolder.h>

#include <QStringList>

#include <cstdlib>
#include <fstream>

using namespace Zelmar01;

namespace {

constexpr char border = '\x1E'; // between the tree file and the object file of an input

void require(bool promise)
{
    if (!promise)
        std::abort();
}

QStringList linesOf(const std::string &bytes)
{
    auto lines = FromWindows1252(bytes).split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (auto &line : lines)
        if (line.endsWith(u'\r'))
            line.chop(1);
    return lines;
}

// Line by line, as the files are described.
void compare(const TDescrTree &tree, const TNodeTextRule &rule, const QStringList &texts,
             const QStringList &objects)
{
    require(texts.size() == objects.size());
    require(tree.Count() == static_cast<std::size_t>(objects.size()));
    require(objects[0].toInt() == objects.size() - 1);
    require(tree.RootText() == texts[0]);
    auto node = TDescrTree::Root;
    for (qsizetype i = 1; i < objects.size(); ++i) {
        node = tree.Next(node);
        const TDescr descr(objects[i]);
        require(tree.Descr(node) == descr);
        const auto depth = std::max<qsizetype>(descr.Code.size(), 1);
        require(texts[i] == QString(depth, u'\t') + rule.Text(descr.Code, descr.Libelle));
        require(tree.Text(node, rule) == texts[i].mid(depth));
        qsizetype above = 0;
        for (auto parent = tree.Parent(node); parent != TDescrTree::None; parent = tree.Parent(parent))
            ++above;
        require(above == depth);
        const auto found = tree.Find(descr.ID);
        require(descr.ID == 0 || (found <= node && tree.ID(found) == descr.ID));
    }
    require(tree.Next(node) == TDescrTree::None);
}

void asCacheFiles(const std::string &input)
{
    static const TempFolder folder;
    static const auto files = CacheFilesOf(QString::fromStdString((folder / "x").string()));
    const auto end = std::min(input.find(border), input.size());
    const auto tree = input.substr(0, end), objects = input.substr(std::min(end + 1, input.size()));
    std::ofstream(files.Tree.toStdString(), std::ios::binary | std::ios::trunc) << tree;
    std::ofstream(files.Objects.toStdString(), std::ios::binary | std::ios::trunc) << objects;
    for (const TNodeTextRule &rule : {TNodeTextRule{true, QStringLiteral("-")}, {false, {}}}) {
        try {
            compare(ReadCacheFiles(files, rule), rule, linesOf(tree), linesOf(objects));
        } catch (const EConvertError &) {
        }
    }
    try {
        RecordedCount(files.Objects);
    } catch (const EConvertError &) {
    }
}

void asLevel(const std::string &input)
{
    try {
        const TDescr descr(FromWindows1252(input));
        require(TDescr(descr.ChaineObjet()) == descr);
    } catch (const EConvertError &) {
    }
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    const auto pair = [](const std::string &tree, const std::string &objects) {
        return tree + border + objects;
    };
    static const std::vector<std::string> seeds{
        pair("Corvantix\r\n\t1-BAGUES\r\n\t\t10-ARGENT\r\n\t\t1A-OR\r\n\t2-X\r\n",
             "4\r\n3{@}0{@}BAGUES{@}BAGUES{@}BAG{@}1{@}01\r\n"
             "11{@}3{@}BAGUES - ARGENT{@}ARGENT{@}ARG{@}10{@}01\r\n"
             "12{@}3{@}BAGUES - OR{@}OR{@}OR{@}1A{@}01\r\n11{@}0{@}{@}X{@}{@}2{@}01\r\n"),
        pair("R\r\n\tBAGUES\r\n\t\r\n",
             "2\r\n3{@}0{@}BAGUES{@}BAGUES{@}{@}1{@}01\r\n-2147483648{@}0{@}{@}{@}{@}{@}01\r\n"),
        pair("R\r\n", "0\r\n"),
        "12{@}3{@}BAGUES - OR{@}OR{@}OR{@}1A{@}0",
        "\t\t1A-OR\r\n",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char *>(data), size);
    asCacheFiles(input);
    asLevel(input);
    return 0;
}
