#include "Samples.h"

#include <Zelmar01/data/DataErrors.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

class ClientDataSet : public testing::Test
{
protected:
    ClientDataSet() { fillWithArticles(m_articles); }

    TClientDataSet m_articles;
};

} // namespace

TEST_F(ClientDataSet, sortsByItsIndexes)
{
    struct TCase
    {
        const char *Fields;
        TIndexOptions Options;
        const char *DescFields;
        const char *Ids;
    };
    for (const auto &c : {TCase{"ID", {}, "", "1 2 3 12 20"},
                          {"ID", ixDescending, "", "20 12 3 2 1"},
                          {"LIBELLE", {}, "", "3 1 2 12 20"},
                          {"LIBELLE", ixCaseInsensitive, "", "3 1 12 2 20"},
                          {"LIBELLE;ID", ixCaseInsensitive | ixDescending, "ID", "3 12 1 2 20"},
                          {"PRIX", {}, "", "2 20 12 3 1"},
                          {"PRIX;LIBELLE", ixDescending, "PRIX", "1 3 12 20 2"},
                          {"", ixCaseInsensitive, "", "1 12 2 3 20"}}) {
        m_articles.AddIndex(QStringLiteral("IDTEMP"), QString::fromLatin1(c.Fields), c.Options,
                            QString::fromLatin1(c.DescFields));
        m_articles.setIndexName(QStringLiteral("IDTEMP"));
        EXPECT_EQ(column(m_articles, "ID"), QString::fromLatin1(c.Ids)) << c.Fields << c.DescFields;
        m_articles.DeleteIndex(QStringLiteral("idtemp"));
        EXPECT_TRUE(m_articles.IndexName().isEmpty());
        EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1 12 2 3 20"))
            << "back in the order in which they came";
    }
}

TEST_F(ClientDataSet, keepsTheCurrentRowAcrossASort)
{
    m_articles.Locate(QStringLiteral("ID"), 12);
    m_articles.setIndexFieldNames(QStringLiteral("PRIX"));
    EXPECT_EQ(m_articles.FieldByName(QStringLiteral("ID")).AsInteger(), 12);
    EXPECT_EQ(m_articles.RecNo(), 3);
}

TEST_F(ClientDataSet, aPostedRowGoesToItsPlace)
{
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    m_articles.Append();
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(5);
    m_articles.Post();
    EXPECT_EQ(m_articles.RecNo(), 4);
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(0);
    m_articles.Post();
    EXPECT_EQ(m_articles.RecNo(), 1);
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("0 1 2 3 12 20"));
}

TEST_F(ClientDataSet, anOrderThatCannotBeLeavesTheOneThereIs)
{
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    EXPECT_THROW(m_articles.setIndexName(QStringLiteral("PAS_LA")), EDatabaseError);
    m_articles.AddIndex(QStringLiteral("X"), QStringLiteral("ID;**--**"));
    EXPECT_THROW(m_articles.setIndexName(QStringLiteral("X")), EDatabaseError);
    EXPECT_EQ(m_articles.IndexFieldNames(), QStringLiteral("ID"));
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1 2 3 12 20"));
    EXPECT_THROW(m_articles.AddIndex(QStringLiteral("x"), {}), EDatabaseError);
    EXPECT_THROW(m_articles.DeleteIndex(QStringLiteral("Y")), EDatabaseError);
}

TEST_F(ClientDataSet, takesTheRowsOfAnother)
{
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    m_articles.Last();
    TClientDataSet copy;
    copy.LoadFrom(m_articles);
    EXPECT_EQ(column(copy, "ID"), QStringLiteral("1 2 3 12 20"));
    EXPECT_EQ(column(copy, "PRIX"), QStringLiteral("1250.00 - 80.50 80.50 9.90"));
    EXPECT_EQ(copy.FieldByName(QStringLiteral("LIBELLE")).Size(), 12);
    EXPECT_TRUE(m_articles.FieldByName(QStringLiteral("ID")).AsInteger() == 20) << "the source has moved";
}
