#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/descrtree/Descr.h>
#include <Zelmar01/descrtree/DescrQueries.h>
#include <Zelmar01/descrtree/Labels.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

TEST(Descr, hasOneLineOfText)
{
    const TDescr descr(12, 3, "BAGUES - OR", "OR", "OR COURT", "1A");
    EXPECT_EQ(descr.ChaineObjet(), "12{@}3{@}BAGUES - OR{@}OR{@}OR COURT{@}1A{@}0");
    EXPECT_EQ(TDescr(descr.ChaineObjet()), descr);
    EXPECT_EQ(TDescr("12{@}3{@}BAGUES - OR{@}OR{@}OR COURT{@}1A{@}01"), descr);

    const TDescr awkward(-2147483647 - 1, 2147483647, "", "{@ } L'\"été\"\t{@", "עברית €", "{");
    EXPECT_EQ(TDescr(awkward.ChaineObjet()), awkward);
}

TEST(Descr, refusesMalformedText)
{
    for (const char *text :
         {"", "12", "12{@}3{@}a{@}b{@}c{@}1A", "12{@}3{@}a{@}b{@}c", "{@}3{@}a{@}b{@}c{@}1A{@}0",
          "x{@}3{@}a{@}b{@}c{@}1A{@}0", "12{@}3,5{@}a{@}b{@}c{@}1A{@}0", "12 {@}3{@}a{@}b{@}c{@}1A{@}0",
          "2147483648{@}3{@}a{@}b{@}c{@}1A{@}0", "12{@}99999999999999999999{@}a{@}b{@}c{@}1A{@}0"})
        EXPECT_THROW(TDescr(QString::fromUtf8(text)), EConvertError) << text;
}

TEST(Labels, aNewLevelDoesNotAskWhetherItsParentHasOne)
{
    EXPECT_EQ(ChainedLabel("", "OR"), " - OR");
    EXPECT_EQ(LongLabel("", "OR"), "OR");
}

TEST(DescrQueries, waitForNobodysLock)
{
    for (const auto &query : {LevelsQuery(), CountQuery(), ChildCodesQuery(-17), CodeQuery("3a")})
        EXPECT_TRUE(query.contains(" with (nolock)")) << query.toStdString();
}
