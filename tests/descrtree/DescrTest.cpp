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

TEST(Labels, areChained)
{
    EXPECT_EQ(LongLabel("", "ANNEAUX"), "ANNEAUX");
    EXPECT_EQ(LongLabel("ANNEAUX - OR", "18 CARATS"), "ANNEAUX - OR - 18 CARATS");
    EXPECT_EQ(ChainedLabel("", "OR"), " - OR"); // a new level does not ask whether its parent has one
    EXPECT_EQ((TNodeTextRule{true, "-"}.Text("1A", "OR")), "1A-OR");
    EXPECT_EQ((TNodeTextRule{false, "-"}.Text("1A", "OR")), "OR");
    EXPECT_EQ(RootText(""), "Corvantix");
    EXPECT_EQ(RootText("Codes"), "Codes");
}

TEST(DescrQueries, areTheseToTheLetter)
{
    EXPECT_EQ(
        LevelsQuery(),
        "SELECT DISTINCT da.DESCR_ART_ID, da.DESCR_ART_ID_PERE, da.DESCR_ART_CODE, da.DESCR_ART_LIBELLE, "
        "da.DESCR_ART_LIB_LONG, da.DESCR_ART_LIB_COURT FROM DESCR_ARTICLE da  with (nolock)  ORDER BY "
        "da.DESCR_ART_CODE");
    EXPECT_EQ(CountQuery(), "select count(descr_art_id) from descr_article with (nolock)");
    EXPECT_EQ(ChildCodesQuery(0), "select descr_art_code from descr_article with (nolock) WHERE "
                                  "DESCR_ART_ID_PERE = 0 order by descr_art_code");
    EXPECT_EQ(ChildCodesQuery(-17), "select descr_art_code from descr_article with (nolock) WHERE "
                                    "DESCR_ART_ID_PERE = -17 order by descr_art_code");
    EXPECT_EQ(CodeQuery("3a"),
              "select descr_art_code from descr_article with (nolock)  WHERE descr_art_code = '3a'");
}
