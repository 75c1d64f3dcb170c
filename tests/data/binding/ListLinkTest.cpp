#include "Form.h"

#include <data/Samples.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/binding/ListLink.h>

#include <gtest/gtest.h>

#include <QSignalSpy>

using namespace Zelmar01;

namespace {

class ListLink : public testing::Test
{
protected:
    ListLink()
    {
        fillWithArticles(m_articles);
        m_source.setDataSet(&m_articles);
        m_link.setListSource(&m_source);
    }

    QString shown() const
    {
        QStringList rows;
        for (int row = 0; row < m_list.Count(); ++row)
            rows << m_list.Key(row) + u':' + m_list.Text(row);
        return rows.join(u' ');
    }

    Told m_told;
    TClientDataSet m_articles;
    TDataSource m_source;
    TKeyListModel m_list;
    TListLink m_link{m_list, nullptr};
};

const auto all = QStringLiteral("1:Bague 12:bague 2:Collier 3: 20:Étui");

} // namespace

TEST_F(ListLink, followsItsDatasetWithoutMovingIt)
{
    EXPECT_EQ(shown(), all);
    EXPECT_EQ(m_articles.RecNo(), 1);
    m_articles.Close();
    EXPECT_EQ(shown(), QString());
    fillWithArticles(m_articles);
    m_link.Refresh();
    EXPECT_EQ(shown(), all);
    m_source.setDataSet(nullptr);
    EXPECT_EQ(shown(), QString());
    m_source.setDataSet(&m_articles);
    EXPECT_EQ(shown(), all);
}

TEST_F(ListLink, manyChangesFillItOnce)
{
    QSignalSpy filled(&m_link, &TListLink::OnListChange);
    m_articles.Delete();
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("LIBELLE")).setAsString(QStringLiteral("x"));
    m_articles.Post();
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    EXPECT_EQ(shown(), all);
    EXPECT_EQ(m_told.Take(), QStringList());
    EXPECT_EQ(shown(), QStringLiteral("2:Collier 3: 12:x 20:Étui"));
    EXPECT_EQ(filled.count(), 1);
    m_link.Refresh();
    EXPECT_EQ(filled.count(), 1) << "nothing had changed";
}

TEST_F(ListLink, takesTheFieldsItIsTold)
{
    m_link.setKeyField(QStringLiteral("libelle"));
    m_link.setListField(QStringLiteral("PRIX"));
    EXPECT_EQ(m_list.Text(1), QStringLiteral("80.50"));
    EXPECT_EQ(m_list.Key(3), QString());
    EXPECT_THROW(m_link.setListField(QStringLiteral("PAS_LA")), EDatabaseError);
    EXPECT_EQ(m_list.Count(), 0);
    // Opened later, in a slot, the same fault goes to the user.
    m_articles.Close();
    m_articles.Open();
    EXPECT_EQ(m_told.Take().size(), 1);
}
