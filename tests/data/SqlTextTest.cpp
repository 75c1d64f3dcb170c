#include <Zelmar01/data/SqlText.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

struct TText
{
    const char *Before, *After;
};
const TText hints[] = {
    {"select count(descr_art_id) from descr_article with (nolock)",
     "select count(descr_art_id) from descr_article "},
    {"FROM DESCR_ARTICLE da  with (nolock)  ORDER BY 1", "FROM DESCR_ARTICLE da    ORDER BY 1"},
    {"from a WITH(NOLOCK, RowLock) join b with ( updlock ) on 1=1", "from a  join b  on 1=1"},
    {"select 'with (nolock)' from a", "select 'with (nolock)' from a"},
    {"select 'it''s with (nolock)' from a", "select 'it''s with (nolock)' from a"},
    {"select \"with (nolock)\", [a]] with (nolock)] from a",
     "select \"with (nolock)\", [a]] with (nolock)] from a"},
    {"a -- with (nolock)\n with (nolock)", "a -- with (nolock)\n "},
    {"a /* with (nolock) /* b */ with (nolock) */ with (nolock)",
     "a /* with (nolock) /* b */ with (nolock) */ "},
    {"select E'\\' with (nolock)', $$' with (nolock)$$, $a$ $$ with (nolock)$a$ from b with (nolock)",
     "select E'\\' with (nolock)', $$' with (nolock)$$, $a$ $$ with (nolock)$a$ from b "},
    {"'a\\' with (nolock)", "'a\\' "},
    {"$1 with (nolock)", "$1 "},
    {"with (nolock", "with (nolock"},
    {"with (nolock,)", "with (nolock,)"},
    {"with (index(1))", "with (index(1))"},
    {"with x as (select 1) select 1", "with x as (select 1) select 1"},
    {"from a with /* fast */ (nolock) where", "from a  where"},
    {"widthwith (nolock)", "widthwith (nolock)"},
    {"'open", "'open"},
    {"", ""},
};

const TText tables[] = {
    {"select * from descr_article", "descr_article"},
    {"select ID, LIB from [Mes articles] a where x in (1, 2)", "[Mes articles]"},
    {"select * from dbo.DESCR_ARTICLE da with (nolock) order by 1, 2", "dbo.DESCR_ARTICLE"},
    {"SELECT a FROM \"T\" -- , x\n WHERE b = 'from c, d'", "\"T\""},
    {"select a from \"Le Dépôt\" . [b] as c;", "\"Le Dépôt\".[b]"},
    {"select a from b for update", "b"},
    {"select a from b c d", ""},
    {"select a from f(1)", ""},
    {"select a from b cross apply f(b.x)", ""},
    {"select * from a, b", ""},
    {"select * from a join b on a.x = b.x", ""},
    {"select distinct a from b", ""},
    {"select a, count(*) from b group by a", ""},
    {"select * from (select 1)", ""},
    {"select a from b where c in (select 1)", ""},
    {"select a from b union select c", ""},
    {"select 1", ""},
    {"update a set b = 1", ""},
    {"select a from", ""},
    {"", ""},
};

} // namespace

TEST(SqlText, hintsAreTakenOutAndNothingElse)
{
    for (const auto &text : hints)
        EXPECT_EQ(WithoutTableHints(QString::fromLatin1(text.Before)).toStdString(), text.After);
}

TEST(SqlText, aNameHasParts)
{
    const auto parts = PartsOfName(QStringLiteral("[a]]b] . \"C \"\"d\"\"\".E"));
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0].Text, QStringLiteral("a]b"));
    EXPECT_EQ(parts[1].Text, QStringLiteral("C \"d\""));
    EXPECT_TRUE(parts[1].Quoted);
    EXPECT_EQ(parts[2].Text, QStringLiteral("E"));
    EXPECT_FALSE(parts[2].Quoted);
}

TEST(SqlText, findsTheOneTable)
{
    for (const auto &text : tables)
        EXPECT_EQ(SingleTableOf(QString::fromUtf8(text.Before)).toStdString(), text.After) << text.Before;
}
