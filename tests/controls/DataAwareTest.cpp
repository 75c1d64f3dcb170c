#include "EditorShop.h"

#include <Zelmar01/controls/zmCurrency.h>

using namespace Zelmar01;

TEST(DataAware, anAmountIsShownEditedAndPosted)
{
    EditorShop shop;
    Form form;
    form.setLocale(French);
    auto &edit = form.Add<TzmDBCurrencyEdit>();
    auto &other = form.Add<QLineEdit>();
    edit.setDataField(QStringLiteral("PRIX"));
    edit.setDataSource(&shop.Source);
    form.Show();
    other.setFocus();
    EXPECT_EQ(edit.text(), QStringLiteral("1\u202F234,50"));
    edit.setFocus();
    edit.selectAll();
    TypeKeys(edit, QStringLiteral("12.3"));
    EXPECT_EQ(shop.Articles.State(), dsEdit);
    QTest::keyClick(&edit, Qt::Key_Tab);
    EXPECT_EQ(edit.text(), QStringLiteral("12,30"));
    shop.Articles.Post();
    EXPECT_EQ(shop.InDatabase(1, "PRIX"), QStringLiteral("12.30"));
}
