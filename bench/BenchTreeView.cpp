#include "Bench.h"
#include "DescrLevels.h"

#include <Zelmar01/data/Query.h>
#include <Zelmar01/descrtree/DescrQueries.h>
#include <Zelmar01/descrtree/TreeViewDescr.h>

#include <QApplication>
#include <QSqlQuery>
#include <QStandardItemModel>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <filesystem>
#include <memory>

using namespace Zelmar01;

namespace {

constexpr std::size_t largest = 100'000;

void run(QSqlQuery &query)
{
    if (!query.exec())
        std::abort();
}

// The levels in a database and in cache files, and what a host has beside the tree.
class Shop
{
public:
    Shop(const std::filesystem::path &folder, const TDescrRows &rows)
    {
        std::filesystem::create_directories(folder);
        m_prefix = QString::fromStdString(folder / "");
        m_connection.setDatabaseName(m_prefix + QStringLiteral("levels.db"));
        fillTable(rows);
        const auto uncarried = WriteCacheFiles(Files(), RootText({}), Rule, rows);
        if (!uncarried.IsEmpty())
            std::abort();
        m_source.setDataSet(&m_query);
    }

    static inline const TNodeTextRule Rule{true, QStringLiteral("-")};

    TCacheFiles Files() const { return CacheFilesOf(m_prefix); }
    TConnection &Connection() { return m_connection; }

    /// A tree whose query reads the rows that a condition names.
    std::unique_ptr<TTreeViewDescr> View(const QString &condition = QStringLiteral("where DESCR_ART_ID = 1"))
    {
        m_query.setCommandText(QStringLiteral("select * from descr_article ") + condition);
        auto view = std::make_unique<TTreeViewDescr>();
        view->setFichierSortie(m_prefix);
        view->setAfficherCodeStat(Rule.AfficherCodeStat);
        view->setRequete(&m_source);
        return view;
    }

private:
    void fillTable(const TDescrRows &rows)
    {
        m_connection.Execute(QStringLiteral(
            "create table descr_article (DESCR_ART_ID integer primary key, DESCR_ART_ID_PERE integer, "
            "DESCR_ART_CODE varchar(20) collate nocase unique, DESCR_ART_LIBELLE varchar(200), "
            "DESCR_ART_LIB_LONG varchar(1000), DESCR_ART_LIB_COURT varchar(20))"));
        TTransaction whole(m_connection);
        QSqlQuery insert(m_connection.Database());
        insert.prepare(QStringLiteral("insert into descr_article values (?, ?, ?, ?, ?, ?)"));
        for (std::size_t row = 0; row < rows.Count(); ++row) {
            const auto level = rows.Descr(row);
            for (const auto &value :
                 {QVariant(level.ID), QVariant(level.IDPere), QVariant(level.Code), QVariant(level.Libelle),
                  QVariant(level.LibLong), QVariant(level.LibCourt)})
                insert.addBindValue(value);
            run(insert);
        }
        whole.Commit();
    }

    QString m_prefix;
    TConnection m_connection;
    TQuery m_query{nullptr, &m_connection};
    TDataSource m_source;
};

void paint(QWidget &view)
{
    view.resize(400, 600);
    view.show();
    sink = static_cast<std::size_t>(view.grab().width());
}

std::unique_ptr<TTreeViewDescr> ourTree(Shop &shop)
{
    auto view = shop.View();
    view->MettreAJourArbre(false);
    paint(*view);
    return view;
}

TDescr levelOf(const QList<QStringView> &values)
{
    return {values[0].toInt(),    values[1].toInt(),    values[2].toString(),
            values[3].toString(), values[4].toString(), values[5].toString()};
}

const TDescr &levelOf(const QTreeWidgetItem &item)
{
    return *static_cast<const TDescr *>(item.data(0, Qt::UserRole).constData());
}

// Line by line, each node put into the tree as it comes.
std::unique_ptr<QTreeWidget> usualTree(const TCacheFiles &files)
{
    auto view = std::make_unique<QTreeWidget>();
    QFile tree(files.Tree), objects(files.Objects);
    if (!tree.open(QIODevice::ReadOnly) || !objects.open(QIODevice::ReadOnly))
        std::abort();
    const auto line = [](QFile &file) {
        return QString::fromLatin1(file.readLine()).remove(QStringLiteral("\r\n"));
    };
    std::vector<QTreeWidgetItem *> path{new QTreeWidgetItem(view.get(), {line(tree)})};
    line(objects);
    while (!tree.atEnd()) {
        const auto text = line(tree);
        const auto depth = text.lastIndexOf(u'\t') + 1;
        path.resize(static_cast<std::size_t>(depth));
        path.push_back(new QTreeWidgetItem(path.back(), {text.mid(depth)}));
        const auto values = line(objects);
        path.back()->setData(0, Qt::UserRole,
                             QVariant::fromValue(levelOf(QStringView(values).split(QStringLiteral("{@}")))));
    }
    view->setHeaderHidden(true);
    path.front()->setExpanded(true);
    paint(*view);
    return view;
}

class LevelItem : public QStandardItem
{
public:
    LevelItem(const QString &text, TDescr level) : QStandardItem(text), Level(std::move(level)) {}

    const TDescr Level;
};

// Both files at once, into a model that is shown when it is complete.
std::unique_ptr<QTreeView> bestStockTree(const TCacheFiles &files)
{
    auto view = std::make_unique<QTreeView>();
    const auto tree = QString::fromLatin1(bytesOf(files.Tree)),
               objects = QString::fromLatin1(bytesOf(files.Objects));
    const auto texts = QStringView(tree).split(QStringLiteral("\r\n"));
    const auto records = QStringView(objects).split(QStringLiteral("\r\n"));
    auto *root = new QStandardItem(texts.front().toString());
    std::vector<QStandardItem *> path{root};
    for (qsizetype line = 1; line < texts.size() && !texts[line].isEmpty(); ++line) {
        const auto text = texts[line];
        const auto depth = text.lastIndexOf(u'\t') + 1;
        path.resize(static_cast<std::size_t>(depth));
        auto *item =
            new LevelItem(text.mid(depth).toString(), levelOf(records[line].split(QStringLiteral("{@}"))));
        path.back()->appendRow(item);
        path.push_back(item);
    }
    auto *model = new QStandardItemModel(view.get());
    model->appendRow(root);
    view->setHeaderHidden(true);
    view->setUniformRowHeights(true);
    view->setModel(model);
    view->expand(root->index());
    paint(*view);
    return view;
}

void benchFirstPaint(Shop &shop, std::size_t count)
{
    const bool isLargest = count == largest;
    const int rounds = isLargest ? 9 : 21;
    const auto files = shop.Files();
    const auto ours = [&] { return ourTree(shop); };
    Row("cache files to first paint, levels", count)
        .Rounds(rounds)
        .Ours(ours)
        .Peer("QStandardItemModel, filled detached", [&] { return bestStockTree(files); })
        .Limit("read and split both files", [&] { readAndSplit(files); })
        .PeerTarget(isLargest ? 0.2 : 0)
        .LimitTarget(isLargest ? 3 : 0)
        .GrowthTarget(count == largest ? 1.5 : 0)
        .Print();
    Row("cache files to first paint, levels", count)
        .Rounds(rounds)
        .Ours(ours)
        .Peer("QTreeWidget, item by item", [&] { return usualTree(files); })
        .Limit("read the bytes",
               [&] {
                   sink =
                       static_cast<std::size_t>(bytesOf(files.Tree).size() + bytesOf(files.Objects).size());
               })
        .Print();
}

void benchExpandAll(Shop &shop, std::size_t count)
{
    const auto ours = ourTree(shop);
    const auto stock = bestStockTree(shop.Files());
    TPrepared all{[&] { ours->collapseAll(); },
                  [&] {
                      ours->expandAll();
                      paint(*ours);
                  }};
    TPrepared allStock{[&] { stock->collapseAll(); },
                       [&] {
                           stock->expandAll();
                           paint(*stock);
                       }};
    Row("expand all and paint, levels", count)
        .Rounds(count == largest ? 9 : 21)
        .Ours(all)
        .Peer("QTreeView, uniform rows", allStock)
        .Print();
}

void benchRebuild(Shop &shop, std::size_t count)
{
    const auto view = shop.View();
    const auto text = shop.Connection().ServerText(LevelsQuery());
    Row("tree and cache files from SQLite, levels", count)
        .WallTime()
        .Rounds(count == largest ? 9 : 21)
        .Ours([&] { view->MettreAJourArbre(true); })
        .Limit("QSqlQuery, forward only, six texts",
               [&] {
                   QSqlQuery query(shop.Connection().Database());
                   query.setForwardOnly(true);
                   if (!query.exec(text))
                       std::abort();
                   qsizetype size = 0;
                   while (query.next())
                       for (int column = 0; column < 6; ++column)
                           size += query.value(column).toString().size();
                   sink = static_cast<std::size_t>(size);
               })
        .LimitTarget(count == largest ? 1.5 : 0)
        .GrowthTarget(count == largest ? 1.5 : 0)
        .Print();
}

constexpr int expandedNodes = 1'000;

// The identifiers of the expanded nodes are kept, all is collapsed, and they are expanded again and painted.
void benchExpanded(Shop &shop, std::size_t count)
{
    const auto ours = ourTree(shop);
    const auto &tree = *ours->Arbre();
    int left = expandedNodes;
    for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None && left > 0;
         node = tree.Next(node))
        if (tree.ChildCount(node) > 0) {
            ours->expand(ours->IndexDe(node));
            --left;
        }
    const auto usual = usualTree(shop.Files());
    auto *root = usual->topLevelItem(0);
    left = expandedNodes;
    for (QTreeWidgetItemIterator item(root->child(0)); *item && left > 0; ++item)
        if ((*item)->childCount() > 0) {
            (*item)->setExpanded(true);
            --left;
        }
    Row("1,000 expanded nodes kept and restored, levels", count)
        .Rounds(9)
        .Ours([&] {
            ours->EnregistrerConfiguration();
            ours->collapseAll();
            ours->ReproduireConfiguration();
            paint(*ours);
        })
        .Peer("QTreeWidget and QHash",
              [&] {
                  std::vector<int> ids;
                  QHash<int, QTreeWidgetItem *> items;
                  for (QTreeWidgetItemIterator item(root->child(0)); *item; ++item) {
                      const int id = levelOf(**item).ID;
                      items.insert(id, *item);
                      if ((*item)->isExpanded())
                          ids.push_back(id);
                  }
                  usual->collapseAll();
                  root->setExpanded(true);
                  for (const int id : ids)
                      items.value(id)->setExpanded(true);
                  paint(*usual);
              })
        .Print();
}

// Of what is shown, when each record was read once.
void printMemory(Shop &shop, std::size_t count)
{
    const auto ours = memoryALevel(count, [&] {
        auto view = ourTree(shop);
        std::size_t length = 0;
        for (auto node = TDescrTree::Root; node != TDescrTree::None; node = view->Arbre()->Next(node))
            length += static_cast<std::size_t>(view->Arbre()->Descr(node).LibLong.size());
        sink = length;
        return view;
    });
    const auto usual = memoryALevel(count, [&] { return usualTree(shop.Files()); });
    const auto stock = memoryALevel(count, [&] { return bestStockTree(shop.Files()); });
    const auto texts = textBytesALevel(Levels(count, 1).Rows);
    Row("memory a level of the shown tree, levels", count)
        .Unit("bytes")
        .Ours(ours)
        .Peer("QStandardItemModel", stock)
        .Limit("the text itself", texts)
        .Target(count == largest ? 250 : 0)
        .Print();
    Row("memory a level of the shown tree, levels", count)
        .Unit("bytes")
        .Ours(ours)
        .Peer("QTreeWidget", usual)
        .Print();
}

// A department gets another label, and so all levels below it another long label.
void benchCascade(const std::filesystem::path &folder, std::size_t count)
{
    Shop shop(folder, Levels(count, 1, 1, 5).Rows);
    const auto view = shop.View(QStringLiteral("order by DESCR_ART_CODE"));
    view->MettreAJourArbre(false);
    const auto department = view->Arbre()->Descr(1);
    auto label = department.Libelle, other = QStringLiteral("BIJOUX");
    Row("rename a department, levels below", count)
        .WallTime()
        .Rounds(count == largest ? 5 : 9)
        .Ours([&] {
            std::swap(label, other);
            view->MettreAJourNoeud(department.ID, department.Code, label, department.LibCourt, {});
        })
        .Limit("prepared update a row",
               [&] {
                   TTransaction whole(shop.Connection());
                   QSqlQuery update(shop.Connection().Database());
                   update.prepare(QStringLiteral(
                       "update descr_article set DESCR_ART_LIB_LONG = ? where DESCR_ART_ID = ?"));
                   const auto &tree = *view->Arbre();
                   for (auto node = tree.Next(TDescrTree::Root); node != TDescrTree::None;
                        node = tree.Next(node)) {
                       update.addBindValue(tree.LibLong(node));
                       update.addBindValue(tree.ID(node));
                       run(update);
                   }
                   whole.Commit();
               })
        .Print();
}

} // namespace

int main(int argc, char **argv)
{
    // Measured is what a machine does, not what a desktop adds.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::string name = std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX";
    const std::filesystem::path folder = mkdtemp(name.data());
    for (const std::size_t count : {std::size_t{1'000}, std::size_t{10'000}, largest}) {
        Shop shop(folder / std::to_string(count), Levels(count, 1).Rows);
        benchFirstPaint(shop, count);
        benchRebuild(shop, count);
        benchExpandAll(shop, count);
        benchExpanded(shop, count);
        benchCascade(folder / ("cascade" + std::to_string(count)), count);
        printMemory(shop, count);
    }
    std::filesystem::remove_all(folder);
}
