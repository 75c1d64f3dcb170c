#include <data/binding/Form.h>
#include <support/Pictures.h>

#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QHeaderView>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

constexpr double readable = 4.5, visible = 2.9;

QStringList articles()
{
    return {u"Alliance « Éternité », platine"_s, u"Bague or 750, trois saphirs"_s,
            u"Bracelet jonc, argent doré, fermoir à cliquet et chaînette de sécurité"_s,
            u"Pendentif goutte, émeraude"_s};
}

} // namespace

TEST(Pictures, listsCanBeReadInEveryPalette)
{
    Pictures::InEachPalette([](Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        Form form;
        auto &box = form.Add<TComboBoxFk>();
        box.RemplirListe({u"1"_s, u"2"_s, u"3"_s, u"4"_s}, articles());
        box.SelectionnerCle(u"2"_s);
        auto &list = form.Add<TCheckListBoxFK>();
        list.RemplirListe({1, 2, 3, 4}, articles());
        list.CocherCle(u"1"_s, true);
        list.SelectionnerCle(u"4"_s);
        form.resize(280, 160);
        form.Show();
        list.setFocus();

        const auto seen = pictures.Take(form, u"lists"_s);
        const auto contrastOf = [&](const QWidget &widget, const QRect &place) {
            return Pictures::ContrastIn(seen, place.translated(widget.mapTo(&form, QPoint())));
        };
        EXPECT_GE(contrastOf(*box.lineEdit(), box.lineEdit()->rect()), readable);
        for (int row = 0; row < list.Count(); ++row) {
            const auto place = list.visualRect(list.model()->index(row, 0)).adjusted(24, 1, -4, -1);
            EXPECT_GE(contrastOf(*list.viewport(), place), readable) << row;
        }
        // A checked box and an empty one differ.
        const auto boxAt = [&](int row) {
            const auto place = list.visualRect(list.model()->index(row, 0));
            return seen.copy(QRect(list.viewport()->mapTo(&form, place.topLeft()) * seen.devicePixelRatio(),
                                   QSize(22, place.height()) * seen.devicePixelRatio()));
        };
        EXPECT_NE(boxAt(0), boxAt(1));
        EXPECT_EQ(boxAt(1), boxAt(2));
        EXPECT_GE(Pictures::ContrastIn(boxAt(1), QRect(0, 0, 22, 14)), visible);

        box.showPopup();
        auto *rows = box.view();
        const auto open = pictures.Take(*rows->window(), u"popup"_s);
        for (int row = 0; row < box.count(); ++row) {
            const auto place = rows->visualRect(rows->model()->index(row, 0))
                                   .translated(rows->viewport()->mapTo(rows->window(), QPoint()))
                                   .adjusted(4, 1, -4, -1);
            EXPECT_GE(Pictures::ContrastIn(open, place), readable) << row;
        }
        box.hidePopup();
    });
}

TEST(Pictures, gridCanBeReadInEveryPalette)
{
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    TClientDataSet rows;
    rows.CreateDataSet({{u"NOM"_s, ftString, 80, false, false},
                        {u"PRIX"_s, ftBCD, 2, false, false},
                        {u"ENTREE"_s, ftDate, 0, false, false},
                        {u"SOLDE"_s, ftBoolean, 0, false, false}});
    for (int row = 0; row < 4; ++row) {
        rows.Append();
        rows.Fields()[0].setAsString(articles()[row]);
        rows.Fields()[1].setAsDecimal(TDecimal(189'90 * (row * row * 7 + 1), 2));
        rows.Fields()[2].setAsDate(QDate(2024, 3, 14 + row));
        rows.Fields()[3].setAsBoolean(row % 2 == 0);
        rows.Post();
    }
    TDataSource source;
    source.setDataSet(&rows);
    Pictures::InEachPalette([&](Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        Form form;
        auto &grid = form.Add<TzmGrid>();
        grid.setDataSource(&source);
        grid.setColumns({u"NOM;240;;Désignation >"_s, u"PRIX;90"_s, u"ENTREE;90"_s, u"SOLDE;60"_s});
        form.resize(520, 190);
        form.Show();
        grid.setFocus();
        grid.setSelectedIndex(0);
        rows.setRecNo(2);
        QCoreApplication::processEvents();
        const auto seen = pictures.Take(form, u"grid"_s);
        const auto contrastOf = [&](const QWidget &widget, const QRect &place) {
            return Pictures::ContrastIn(seen, place.translated(widget.mapTo(&form, QPoint())));
        };
        const auto *titles = grid.horizontalHeader();
        for (int column = 0; column < 4; ++column) {
            const QRect title(titles->sectionViewportPosition(column) + 2, 2, titles->sectionSize(column) - 4,
                              titles->height() - 5);
            EXPECT_GE(contrastOf(*titles->viewport(), title), readable) << column;
            for (int row = 0; row < 4; ++row)
                EXPECT_GE(
                    contrastOf(*grid.viewport(),
                               grid.visualRect(grid.model()->index(row, column)).adjusted(2, 1, -3, -3)),
                    column == 3 ? visible : readable)
                    << row << column;
        }
        // The mark of the current row, and none beside the others.
        const auto *marks = grid.verticalHeader();
        const auto markAt = [&](int row) {
            return QRect(1, row * grid.rowHeight() + 1, marks->width() - 4, grid.rowHeight() - 4);
        };
        EXPECT_GE(contrastOf(*marks->viewport(), markAt(1)), readable);
        EXPECT_LT(contrastOf(*marks->viewport(), markAt(0)), 1.1);
        // The current cell stands out from those below it.
        const auto groundOf = [&](int row) {
            const auto place = grid.visualRect(grid.model()->index(row, 0));
            return seen.pixelColor(grid.viewport()->mapTo(&form, place.topLeft() + QPoint(1, 1)) *
                                   seen.devicePixelRatio());
        };
        EXPECT_GE(ContrastOf(groundOf(1), groundOf(2)), 1.5);
        grid.setOptions(grid.Options() | dgRowSelect);
        pictures.Take(form, u"grid-rows"_s);
        grid.setOptions(grid.Options() & ~TDBGridOptions(dgRowSelect));
        grid.setEditorMode(true);
        const auto editing = pictures.Take(form, u"grid-editing"_s);
        EXPECT_GE(Pictures::ContrastIn(editing, grid.visualRect(grid.currentIndex())
                                                    .adjusted(2, 2, -3, -3)
                                                    .translated(grid.viewport()->mapTo(&form, QPoint()))),
                  readable);
    });
    QLocale::setDefault(QLocale::c());
}
