#include <data/binding/Form.h>
#include <support/Pictures.h>

#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QFontInfo>

using namespace Zelmar01;

namespace {

constexpr double readable = 4.5, visible = 2.9;

QStringList articles()
{
    return {QStringLiteral("Alliance « Éternité », platine"), QStringLiteral("Bague or 750, trois saphirs"),
            QStringLiteral("Bracelet jonc, argent doré, fermoir à cliquet et chaînette de sécurité"),
            QStringLiteral("Pendentif goutte, émeraude")};
}

} // namespace

TEST(Pictures, listsCanBeReadInEveryPalette)
{
    ASSERT_FALSE(QFontInfo(QApplication::font()).family().isEmpty());
    Pictures::InEachPalette([](Pictures &pictures) {
        Form form;
        auto &box = form.Add<TComboBoxFk>();
        box.RemplirListe({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")},
                         articles());
        box.SelectionnerCle(QStringLiteral("2"));
        auto &list = form.Add<TCheckListBoxFK>();
        list.RemplirListe({1, 2, 3, 4}, articles());
        list.CocherCle(QStringLiteral("1"), true);
        list.SelectionnerCle(QStringLiteral("4"));
        form.resize(280, 160);
        form.Show();
        list.setFocus();

        const auto seen = pictures.Take(form, QStringLiteral("lists"));
        const auto contrastOf = [&](const QWidget &widget, const QRect &place) {
            return Pictures::ContrastIn(seen, place.translated(widget.mapTo(&form, QPoint())));
        };
        EXPECT_GE(contrastOf(*box.lineEdit(), box.lineEdit()->rect()), readable)
            << pictures.Name().toStdString();
        for (int row = 0; row < list.Count(); ++row) {
            const auto place = list.visualRect(list.model()->index(row, 0)).adjusted(24, 1, -4, -1);
            EXPECT_GE(contrastOf(*list.viewport(), place), readable) << pictures.Name().toStdString() << row;
        }
        // A checked box and an empty one differ.
        const auto boxAt = [&](int row) {
            const auto place = list.visualRect(list.model()->index(row, 0));
            return seen.copy(QRect(list.viewport()->mapTo(&form, place.topLeft()) * seen.devicePixelRatio(),
                                   QSize(22, place.height()) * seen.devicePixelRatio()));
        };
        EXPECT_NE(boxAt(0), boxAt(1));
        EXPECT_EQ(boxAt(1), boxAt(2));
        EXPECT_GE(Pictures::ContrastIn(boxAt(1), QRect(0, 0, 22, 14)), visible)
            << pictures.Name().toStdString();

        box.showPopup();
        auto *rows = box.view();
        const auto open = pictures.Take(*rows->window(), QStringLiteral("popup"));
        for (int row = 0; row < box.count(); ++row) {
            const auto place = rows->visualRect(rows->model()->index(row, 0))
                                   .translated(rows->viewport()->mapTo(rows->window(), QPoint()))
                                   .adjusted(4, 1, -4, -1);
            EXPECT_GE(Pictures::ContrastIn(open, place), readable) << pictures.Name().toStdString() << row;
        }
        box.hidePopup();
    });
}
