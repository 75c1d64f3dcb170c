#include <demo/SaleModel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Shop;

namespace {

TEST(Money, KeepsEveryCent)
{
    struct TCase
    {
        TCents WithVat, WithoutVat;
        const char16_t *Text;
    };
    for (const auto &row : {TCase{0, 0, u"0,00"}, TCase{1, 1, u"0,01"}, TCase{3, 3, u"0,03"}, // 2,5 rounds up
                            TCase{120, 100, u"1,20"}, TCase{18990, 15825, u"189,90"},
                            TCase{100'000'05, 83'333'38, u"100 000,05"},
                            TCase{123'456'789'99, 102'880'658'33, u"123 456 789,99"}}) {
        EXPECT_EQ(WithoutVat(row.WithVat), row.WithoutVat);
        EXPECT_EQ(AmountText(row.WithVat, u' '), QString::fromUtf16(row.Text));
    }
}

TEST(Sale, IsATableWhoseSumsAreThoseOfItsLines)
{
    SaleModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    QSignalSpy changed(&model, &SaleModel::Changed);
    const TArticle clasp{QStringLiteral("A"), QStringLiteral("Fermoir"), 1'00};
    const TArticle pearl{QStringLiteral("B"), QStringLiteral("Perle"), 4'01};
    EXPECT_EQ(model.Add(clasp), 0);
    EXPECT_EQ(model.Add(pearl), 1);
    EXPECT_EQ(model.Add(clasp), 0); // one more of the first
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.Sale().WithVat(), 6'01);
    EXPECT_EQ(model.Sale().WithoutVat(), 1'67 + 3'34);
    EXPECT_EQ(model.Sale().Vat(), 1'00);

    const auto quantity = model.index(1, SaleModel::Quantity);
    EXPECT_TRUE(model.setData(quantity, 99));
    for (const int refused : {0, -1, 100})
        EXPECT_FALSE(model.setData(quantity, refused));
    EXPECT_FALSE(model.setData(model.index(1, SaleModel::Name), 5));
    EXPECT_EQ(model.Sale().Lines[1].Quantity, 99);
    EXPECT_EQ(changed.count(), 4);

    model.Remove(7);
    model.Remove(0);
    EXPECT_EQ(model.Sale().WithVat(), 99 * 4'01);
    model.Clear();
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace
