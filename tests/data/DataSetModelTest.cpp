#include "Samples.h"

#include <Zelmar01/data/DataSetModel.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QLocale>
#include <QRandomGenerator>

using namespace Zelmar01;

namespace {

QString text(const TDataSetModel &model, int row, int column)
{
    return model.index(row, column).data(Qt::DisplayRole).toString();
}

} // namespace

TEST(DataSetModel, showsRowsAsPeopleReadThem)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    TClientDataSet articles;
    fillWithArticles(articles);
    articles.FieldByName(QStringLiteral("PRIX")).setDisplayLabel(QStringLiteral("Prix TTC"));
    TDataSetModel model;
    model.setDataSet(&articles);
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Prix TTC"));
    EXPECT_EQ(text(model, 0, 2), QStringLiteral("1250,00"));
    EXPECT_EQ(text(model, 2, 2), QString());
    EXPECT_EQ(text(model, 4, 1), QStringLiteral("Étui"));
    EXPECT_TRUE(model.index(0, 2).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    EXPECT_EQ(DisplayTextOf(QDate(2026, 11, 21), QLocale()), QStringLiteral("21/11/2026"));
    QLocale::setDefault(before);
}

TEST(DataSetModel, followsTheDataSetThroughAnything)
{
    TClientDataSet articles;
    fillWithArticles(articles);
    TDataSetModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setDataSet(&articles);

    QRandomGenerator random(17);
    for (int step = 0; step < 2000; ++step) {
        switch (random.bounded(9)) {
        case 0:
            articles.Insert();
            articles.Fields()[0].setAsInteger(step);
            break;
        case 1:
            articles.Append();
            articles.Fields()[0].setAsInteger(step);
            break;
        case 2:
            articles.Cancel();
            break;
        case 3:
            articles.Edit();
            articles.Fields()[0].setAsInteger(random.bounded(50));
            articles.Post();
            break;
        case 4:
            if (articles.RecordCount() > 3)
                articles.Delete();
            break;
        case 5:
            articles.MoveBy(random.bounded(9) - 4);
            break;
        case 6:
            articles.setIndexFieldNames(random.bounded(2) ? QStringLiteral("ID") : QString());
            break;
        case 7:
            articles.First();
            break;
        default:
            articles.Last();
        }
        ASSERT_EQ(model.rowCount(), articles.ShownCount());
        const int shown = articles.ShownPlace();
        ASSERT_EQ(model.index(shown, 0).data(Qt::EditRole), articles.Fields()[0].Value()) << step;
    }
    articles.Close();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
}

TEST(DataSetModel, outlivesItsDataSet)
{
    TDataSetModel model;
    {
        TClientDataSet articles;
        fillWithArticles(articles);
        model.setDataSet(&articles);
    }
    EXPECT_EQ(model.rowCount(), 0);
}
