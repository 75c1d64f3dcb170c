#include "Bench.h"

#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/ComboBoxFk.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QHash>
#include <QListView>
#include <QListWidget>

#include <charconv>
#include <cstdlib>
#include <memory>

using namespace Zelmar01;

namespace {

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile qsizetype sink;

/// The same articles as a dataset, as ready lists and as columns of numbers.
struct TArticles
{
    explicit TArticles(int count)
    {
        Rows.CreateDataSet({{QStringLiteral("ID"), ftInteger, 0, false, false},
                            {QStringLiteral("LIBELLE"), ftString, 0, false, false}});
        for (int row = 0; row < count; ++row) {
            const int number = 7 * row + 1;
            const auto text = QStringLiteral("Alliance or jaune n° %1").arg(number);
            Numbers << number;
            Keys << QString::number(number);
            Texts << text;
            Rows.Append();
            Rows.Fields()[0].setAsInteger(number);
            Rows.Fields()[1].setAsString(text);
            Rows.Post();
        }
    }

    TClientDataSet Rows;
    QList<int> Numbers;
    QStringList Keys, Texts;
};

void paint(QWidget &widget)
{
    sink = widget.grab().width();
}

std::unique_ptr<QComboBox> stockCombo()
{
    auto box = std::make_unique<QComboBox>();
    box->setEditable(true);
    return box;
}

// As many write it: entry by entry, the box as wide as its widest entry.
std::unique_ptr<QComboBox> usualCombo(TArticles &articles)
{
    auto box = stockCombo();
    const auto &key = articles.Rows.Fields()[0], &text = articles.Rows.Fields()[1];
    for (articles.Rows.First(); !articles.Rows.Eof(); articles.Rows.Next())
        box->addItem(text.AsString(), key.AsString());
    return box;
}

struct TStockBox
{
    std::unique_ptr<QComboBox> Box = stockCombo();
    QStringList Keys;
};

// The fastest way with stock parts: all entries at once, keys beside them, a fixed width.
TStockBox bestCombo(TArticles &articles, bool fromLists)
{
    TStockBox stock;
    stock.Box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    stock.Box->setMinimumContentsLength(20);
    if (fromLists) {
        stock.Keys = articles.Keys;
        stock.Box->addItems(articles.Texts);
        return stock;
    }
    QStringList texts;
    const auto &key = articles.Rows.Fields()[0], &text = articles.Rows.Fields()[1];
    for (articles.Rows.First(); !articles.Rows.Eof(); articles.Rows.Next()) {
        stock.Keys << key.AsString();
        texts << text.AsString();
    }
    stock.Box->addItems(texts);
    return stock;
}

std::unique_ptr<TComboBoxFk> ourCombo(TArticles &articles, bool fromLists)
{
    auto box = std::make_unique<TComboBoxFk>();
    fromLists ? box->RemplirListe(articles.Keys, articles.Texts) : box->RemplirListe(articles.Rows, false);
    return box;
}

void benchComboFill(TArticles &articles, std::size_t size, int rounds)
{
    const auto emptyBox = [] {
        auto box = stockCombo();
        paint(*box);
        return box;
    };
    for (const bool fromLists : {false, true}) {
        const auto ours = [&] {
            auto box = ourCombo(articles, fromLists);
            paint(*box);
            return box;
        };
        const auto best = [&] {
            auto stock = bestCombo(articles, fromLists);
            paint(*stock.Box);
            return stock;
        };
        Row(fromLists ? "combo, fill from lists, paint, entries"
                      : "combo, fill from a dataset, paint, entries",
            size)
            .Rounds(rounds)
            .Ours(ours)
            .Peer("QComboBox, addItems, fixed width", best)
            .Limit("an empty QComboBox", emptyBox)
            .PeerTarget(size >= 100'000 ? 0.2 : 0)
            .Print();
    }
    Row("combo, fill from a dataset, paint, entries", size)
        .Rounds(rounds)
        .Ours([&] {
            auto box = ourCombo(articles, false);
            paint(*box);
            return box;
        })
        .Peer("QComboBox, addItem",
              [&] {
                  auto box = usualCombo(articles);
                  paint(*box);
                  return box;
              })
        .Print();
}

template<class Box>
auto opening(Box &box)
{
    return [&box] {
        box.showPopup();
        paint(*box.view()->window());
        box.hidePopup();
    };
}

void benchPopup(TArticles &articles, std::size_t size, int rounds)
{
    auto ours = ourCombo(articles, false);
    auto usual = usualCombo(articles);
    usual->setEditable(false); // where the style makes a menu of the list
    auto best = bestCombo(articles, false);
    auto *view = new QListView;
    view->setUniformItemSizes(true);
    best.Box->setView(view);
    best.Box->setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
    const auto few = stockCombo();
    few->setEditable(false);
    for (int row = 0; row < few->maxVisibleItems(); ++row)
        few->addItem(articles.Texts[row]);
    for (QComboBox *box : {static_cast<QComboBox *>(ours.get()), usual.get(), best.Box.get(), few.get()}) {
        box->setCurrentIndex(box->count() / 2);
        box->show();
    }
    Row("combo, open the list, entries", size)
        .Rounds(rounds)
        .Ours(opening(*ours))
        .Peer("QComboBox, uniform, no menu", opening(*best.Box))
        .Limit("QComboBox of 10 entries", opening(*few))
        .PeerTarget(size >= 100'000 ? 1 : 0)
        .Print();
    Row("combo, open the list, entries", size)
        .Rounds(rounds)
        .Ours(opening(*ours))
        .Peer("QComboBox", opening(*usual))
        .PeerTarget(size >= 100'000 ? 0.02 : 0)
        .Print();
}

void benchSelect(TArticles &articles, std::size_t size, int rounds)
{
    auto ours = ourCombo(articles, false);
    auto best = bestCombo(articles, false);
    best.Box->setCompleter(nullptr); // it would go through the entries each time
    QHash<QString, int> rowOf;
    for (int row = 0; row < articles.Keys.size(); ++row)
        rowOf.insert(articles.Keys[row], row);
    for (QComboBox *box : {static_cast<QComboBox *>(ours.get()), best.Box.get()}) {
        box->show();
        paint(*box);
    }
    ours->SelectionnerCle(articles.Keys[0]); // prepares the search
    int next = 0;
    const auto key = [&]() -> const QString & {
        next = (next + 7919) % static_cast<int>(articles.Keys.size());
        return articles.Keys[next];
    };
    Row("combo, select by key, entries", size)
        .Rounds(rounds)
        .Ours([&] { ours->SelectionnerCle(key()); })
        .Peer("QHash and setCurrentIndex", [&] { best.Box->setCurrentIndex(rowOf.value(key(), -1)); })
        .PeerTarget(size >= 100'000 ? 3 : 0)
        .Print();
    auto usual = usualCombo(articles);
    Row("combo, select by key, entries", size)
        .Rounds(std::min(rounds, 5))
        .Ours([&] { ours->SelectionnerCle(key()); })
        .Peer("findData and setCurrentIndex", [&] { usual->setCurrentIndex(usual->findData(key())); })
        .Print();
    Row("combo, first search by key, entries", size)
        .Rounds(rounds)
        .Ours([&] {
            TKeyListModel list;
            list.Fill(articles.Keys, articles.Texts);
            sink = list.RowOfKey(articles.Keys.last());
        })
        .Peer("QHash filled with the keys",
              [&] {
                  QHash<QString, int> rows;
                  for (int row = 0; row < articles.Keys.size(); ++row)
                      rows.insert(articles.Keys[row], row);
                  sink = rows.value(articles.Keys.last());
              })
        .Print();
}

// The fastest way with stock parts: items configured before they are added, of one size.
std::unique_ptr<QListWidget> stockList(const TArticles &articles, TDataSet *rows)
{
    auto list = std::make_unique<QListWidget>();
    list->setUniformItemSizes(true);
    const auto add = [&](const QString &text, int key) {
        auto *item = new QListWidgetItem(text);
        item->setData(Qt::UserRole, key);
        item->setCheckState(Qt::Unchecked);
        list->addItem(item);
    };
    if (!rows) {
        for (int row = 0; row < articles.Numbers.size(); ++row)
            add(articles.Texts[row], articles.Numbers[row]);
        return list;
    }
    const auto &key = rows->Fields()[0], &text = rows->Fields()[1];
    for (rows->First(); !rows->Eof(); rows->Next())
        add(text.AsString(), static_cast<int>(key.AsInteger()));
    return list;
}

/// A dataset over rows that are there already: closing and opening it costs little beside filling a list.
class Reopened : public TDataSet
{
public:
    explicit Reopened(const TArticles &articles) : m_rows(defs())
    {
        for (int row = 0; row < articles.Texts.size(); ++row) {
            m_rows.MutableColumn(0).Add<qint64>(articles.Numbers[row]);
            m_rows.MutableColumn(1).Add(articles.Texts[row]);
            m_rows.RowDone();
        }
    }

protected:
    TFieldDefs readRows(std::unique_ptr<TRows> &rows) override
    {
        rows = std::make_unique<TRows>(m_rows);
        return defs();
    }

private:
    static TFieldDefs defs()
    {
        return {{QStringLiteral("ID"), ftInteger, 0, false, false},
                {QStringLiteral("LIBELLE"), ftString, 0, false, false}};
    }

    TRows m_rows;
};

void benchCheckList(TArticles &articles, std::size_t size, int rounds)
{
    const double atSize = size >= 100'000 ? 1 : 0;
    Reopened rows(articles);
    const TArticles few(30);
    for (const bool fromLists : {false, true})
        Row(fromLists ? "check list, fill from lists, paint, entries"
                      : "check list, reopen, fill, paint, entries",
            size)
            .Rounds(rounds)
            .Ours([&] {
                auto list = std::make_unique<TCheckListBoxFK>();
                fromLists ? list->RemplirListe(articles.Numbers, articles.Texts) : list->RemplirListe(rows);
                paint(*list);
                return list;
            })
            .Peer(fromLists ? "QListWidget, uniform" : "QListWidget, uniform, reopened",
                  [&] {
                      if (!fromLists) {
                          rows.Close();
                          rows.Open();
                      }
                      auto list = stockList(articles, fromLists ? nullptr : &rows);
                      paint(*list);
                      return list;
                  })
            .Limit("QListWidget of 30 entries",
                   [&] {
                       auto list = stockList(few, nullptr);
                       paint(*list);
                       return list;
                   })
            .PeerTarget(0.1 * atSize)
            .Print();

    TCheckListBoxFK ours;
    ours.RemplirListe(articles.Numbers, articles.Texts);
    auto stock = stockList(articles, nullptr);
    auto fewShown = stockList(few, nullptr);
    for (QListView *list : {static_cast<QListView *>(&ours), static_cast<QListView *>(stock.get()),
                            static_cast<QListView *>(fewShown.get())}) {
        list->show();
        paint(*list);
    }
    bool check = false;
    Row("check list, check all, paint, entries", size)
        .Rounds(rounds)
        .Ours([&] {
            ours.ToutSelectionner();
            paint(ours);
        })
        .Peer("QListWidget, item by item",
              [&] {
                  check = !check;
                  for (int row = 0; row < stock->count(); ++row)
                      stock->item(row)->setCheckState(check ? Qt::Checked : Qt::Unchecked);
                  paint(*stock);
              })
        .Limit("paint 30 entries", [&] { paint(*fewShown); })
        .Print();
    for (int row = 0; row < stock->count(); ++row) {
        stock->item(row)->setCheckState(row % 2 ? Qt::Checked : Qt::Unchecked);
        ours.CocherCle(articles.Keys[row], row % 2);
    }
    Row("check list, checked keys as text, entries", size)
        .Rounds(rounds)
        .Ours([&] { sink = ours.ListeDesSelectionnes(QStringLiteral(",")).size(); })
        .Peer("QListWidget, item by item",
              [&] {
                  QString keys;
                  for (int row = 0; row < stock->count(); ++row)
                      if (const auto *item = stock->item(row); item->checkState() == Qt::Checked)
                          keys += QString::number(item->data(Qt::UserRole).toInt()) + u',';
                  sink = keys.size();
              })
        .Limit("write the numbers",
               [&] {
                   std::string keys(size * 12, ' ');
                   char *end = keys.data();
                   for (qsizetype row = 1; row < articles.Numbers.size(); row += 2) {
                       end = std::to_chars(end, end + 12, articles.Numbers[row]).ptr;
                       *end++ = ',';
                   }
                   sink = QString::fromLatin1(keys.data(), end - keys.data()).size();
               })
        .PeerTarget(atSize / 8)
        .Print();

    QHash<QString, int> rowOf;
    for (int row = 0; row < articles.Keys.size(); ++row)
        rowOf.insert(articles.Keys[row], row);
    int next = 0;
    const auto key = [&]() -> const QString & {
        next = (next + 7919) % static_cast<int>(articles.Keys.size());
        return articles.Keys[next];
    };
    Row("check list, select by key, entries", size)
        .Rounds(rounds)
        .Ours([&] { ours.SelectionnerCle(key()); })
        .Peer("QHash and setCurrentRow", [&] { stock->setCurrentRow(rowOf.value(key(), -1)); })
        .PeerTarget(atSize * 3)
        .Print();
}

} // namespace

// bench_keylists [ROUNDS]
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // That platform complains of every popup.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QApplication application(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
    for (const int size : {1'000, 10'000, 100'000}) {
        TArticles articles(size);
        const auto count = static_cast<std::size_t>(size);
        benchComboFill(articles, count, rounds);
        benchPopup(articles, count, rounds);
        benchSelect(articles, count, rounds);
        benchCheckList(articles, count, rounds);
    }
}
