#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/binding/KeyListModel.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <random>

using namespace Zelmar01;

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ');
}

} // namespace

TEST(KeyListModel, findsTheFirstRowWhateverTheLetterCase)
{
    TKeyListModel list;
    list.Fill(words("a B b É 7 007"), words("OR or Étui étui Straße STRASSE"));
    const QAbstractItemModelTester tester(&list);
    for (const auto &[key, row] :
         {std::pair("A", 0), {"b", 1}, {"é", 3}, {"7", 4}, {"007", 5}, {"07", -1}, {"", -1}})
        EXPECT_EQ(list.RowOfKey(QString::fromUtf8(key)), row) << key;
    for (const auto &[text, row] :
         {std::pair("or", 0), {"ÉTUI", 2}, {"strasse", 5}, {"STRAßE", 4}, {"o", -1}})
        EXPECT_EQ(list.RowOfText(QString::fromUtf8(text)), row) << text;
}

TEST(KeyListModel, keysThatAreNumbersAreFoundAsTheirTexts)
{
    TColumn keys(ftInteger), texts(ftString);
    for (const qint64 key : {qint64(5), qint64(0), qint64(-3), qint64(5), qint64(1) << 40}) {
        keys.Add(key);
        texts.Add(QString::number(key));
    }
    keys.Append({});
    texts.Append({});
    TKeyListModel list;
    list.Fill(keys, texts);
    for (const auto &[key, row] : {std::pair("5", 0),
                                   {"-3", 2},
                                   {"1099511627776", 4},
                                   {"", 5},
                                   {"0", 1},
                                   {"05", -1},
                                   {" 5", -1},
                                   {"+5", -1},
                                   {"-0", -1},
                                   {"5.0", -1},
                                   {"cinq", -1}})
        EXPECT_EQ(list.RowOfKey(QString::fromLatin1(key)), row) << key;
    EXPECT_EQ(list.Key(5), QString());
}

// Any fault of the hash table shows against a plain walk.
TEST(KeyListModel, findsWhatAWalkFinds)
{
    std::mt19937 random(7);
    QStringList keys, texts;
    for (int row = 0; row < 3000; ++row) {
        keys << QString::number(random() % 2000);
        texts << (random() % 2 ? u"Éa"_qs : u"éA"_qs) + QString::number(random() % 500);
    }
    TKeyListModel list;
    list.Fill(keys, texts);
    const auto walk = [](const QStringList &values, const QString &value) {
        for (int row = 0; row < values.size(); ++row)
            if (values[row].compare(value, Qt::CaseInsensitive) == 0)
                return row;
        return -1;
    };
    for (int value = 0; value < 2100; ++value) {
        const auto key = QString::number(value), text = u"ÉA"_qs + key;
        ASSERT_EQ(list.RowOfKey(key), walk(keys, key));
        ASSERT_EQ(list.RowOfText(text), walk(texts, text));
    }
}

TEST(KeyListModel, textsAndKeysComeAndGoTogether)
{
    TKeyListModel list;
    const QAbstractItemModelTester tester(&list);
    EXPECT_THROW(list.Fill(words("1 2"), words("un")), EInvalidOperation);
    list.Fill(words("1 2 3"), words("un deux trois"));
    EXPECT_EQ(list.RowOfKey(QStringLiteral("3")), 2);
    ASSERT_TRUE(list.insertRow(1));
    EXPECT_EQ(list.RowOfKey(QStringLiteral("3")), 3) << "found where it was before";
    EXPECT_TRUE(list.setData(list.index(1), QStringLiteral("neuf")));
    EXPECT_TRUE(list.setData(list.index(1), 9, Qt::UserRole));
    EXPECT_EQ(list.RowOfText(QStringLiteral("NEUF")), 1);
    EXPECT_EQ(list.RowOfKey(QStringLiteral("9")), 1);
    ASSERT_TRUE(list.removeRows(0, 1));
    EXPECT_EQ(list.Text(0) + list.Key(0), QStringLiteral("neuf9"));
    EXPECT_FALSE(list.removeRows(2, 2));
    EXPECT_FALSE(list.insertRows(4, 1));
    list.Clear();
    EXPECT_EQ(list.RowOfKey(QStringLiteral("9")), -1);
    EXPECT_TRUE(list.insertRow(0));
}

TEST(KeyListModel, matchesLikeAnyOtherModel)
{
    TKeyListModel list;
    list.Fill(words("1 2 3 4"), words("Or argent or Étain"));
    const auto match = [&](int start, const char *text, Qt::MatchFlags flags) {
        const auto hits = list.match(list.index(start), Qt::DisplayRole, QString::fromUtf8(text), 1, flags);
        // The library's own search says the same.
        const auto slow = list.QAbstractItemModel::match(list.index(start), Qt::DisplayRole,
                                                         QString::fromUtf8(text), 1, flags);
        EXPECT_EQ(hits, slow) << text;
        return hits.isEmpty() ? -1 : hits[0].row();
    };
    EXPECT_EQ(match(0, "o", Qt::MatchStartsWith), 0);
    EXPECT_EQ(match(1, "o", Qt::MatchStartsWith), 2);
    EXPECT_EQ(match(3, "o", Qt::MatchStartsWith | Qt::MatchWrap), 0);
    EXPECT_EQ(match(3, "o", Qt::MatchStartsWith), -1);
    EXPECT_EQ(match(0, "or", Qt::MatchFixedString | Qt::MatchCaseSensitive), 2);
    EXPECT_EQ(match(0, "ÉTAIN", Qt::MatchFixedString), 3);
    EXPECT_EQ(match(0, "rg", Qt::MatchContains), 1);
}
