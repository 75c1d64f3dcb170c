#include "Samples.h"

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/DataSource.h>

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <functional>
#include <utility>

using namespace Zelmar01;

namespace {

class DataSet : public testing::Test
{
protected:
    DataSet() { fillWithArticles(m_articles); }

    qint64 id() { return m_articles.FieldByName(QStringLiteral("ID")).AsInteger(); }

    TClientDataSet m_articles;
};

} // namespace

TEST_F(DataSet, walksBothWaysAndKnowsItsEnds)
{
    EXPECT_TRUE(m_articles.Bof());
    EXPECT_FALSE(m_articles.Eof());
    EXPECT_EQ(m_articles.MoveBy(3), 3);
    EXPECT_FALSE(m_articles.Bof());
    EXPECT_EQ(m_articles.RecNo(), 4);
    m_articles.Next();
    EXPECT_FALSE(m_articles.Eof()) << "on the last row";
    m_articles.Next();
    EXPECT_TRUE(m_articles.Eof());
    EXPECT_EQ(id(), 20);
    m_articles.Prior();
    EXPECT_EQ(id(), 3);
    EXPECT_EQ(m_articles.MoveBy(-10), -3);
    EXPECT_TRUE(m_articles.Bof());
    EXPECT_EQ(id(), 1);
    m_articles.Last();
    EXPECT_EQ(id(), 20);
    m_articles.setRecNo(2);
    EXPECT_EQ(id(), 12);
    EXPECT_THROW(m_articles.setRecNo(6), EDatabaseError);
}

TEST_F(DataSet, withoutRowsBothEndsMeet)
{
    TClientDataSet empty;
    empty.CreateDataSet({{QStringLiteral("ID"), ftInteger, 0, false, false}});
    for (const auto move : {&TDataSet::First, &TDataSet::Last, &TDataSet::Next, &TDataSet::Prior}) {
        (empty.*move)();
        EXPECT_TRUE(empty.Bof() && empty.Eof());
    }
    EXPECT_TRUE(empty.FieldByName(QStringLiteral("ID")).IsNull());
    EXPECT_THROW(empty.Delete(), EDatabaseError);
    empty.Edit();
    EXPECT_EQ(empty.State(), dsInsert);
}

TEST_F(DataSet, aClosedOneRefuses)
{
    m_articles.Close();
    EXPECT_THROW(m_articles.First(), EDatabaseError);
    EXPECT_THROW(m_articles.RecordCount(), EDatabaseError);
    EXPECT_THROW(m_articles.FieldByName(QStringLiteral("ID")), EDatabaseError);
    EXPECT_THROW(m_articles.Locate(QStringLiteral("ID"), 1), EDatabaseError);
    EXPECT_EQ(m_articles.State(), dsInactive);
}

TEST_F(DataSet, locates)
{
    struct TCase
    {
        const char *Fields;
        QVariant Values;
        TLocateOptions Options;
        int Id; // 0: not found
    };
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    for (const auto &c : {TCase{"ID", 12, {}, 12},
                          {"ID", 1, loCaseInsensitive | loPartialKey, 1},
                          {"ID", QStringLiteral("2"), loPartialKey, 2},
                          {"ID", 99, loPartialKey, 0},
                          {"ID", QStringLiteral("x"), {}, 0},
                          {"libelle", text("bague"), {}, 12},
                          {"LIBELLE", text("BAGUE"), loCaseInsensitive, 1},
                          {"LIBELLE", text("Col"), {}, 0},
                          {"LIBELLE", text("Col"), loPartialKey, 2},
                          {"LIBELLE", text("é"), loCaseInsensitive | loPartialKey, 20},
                          {"LIBELLE", {}, {}, 3},
                          {"PRIX", QStringLiteral("80.5"), {}, 12},
                          {"LIBELLE;PRIX", QVariantList{text("bague"), 80.5}, {}, 12},
                          {"LIBELLE;PRIX", QVariantList{text("Bague"), 80.5}, {}, 0}}) {
        m_articles.Last();
        EXPECT_EQ(m_articles.Locate(QString::fromLatin1(c.Fields), c.Values, c.Options), c.Id != 0)
            << c.Fields;
        EXPECT_EQ(id(), c.Id ? c.Id : 20) << c.Fields << ' ' << TextOfValue(c.Values).toStdString();
    }
    EXPECT_THROW(m_articles.Locate(QStringLiteral("PAS_LA"), 1), EDatabaseError);
}

TEST_F(DataSet, insertsBeforeAndAppendsBehind)
{
    m_articles.setRecNo(2);
    m_articles.Insert();
    EXPECT_EQ(m_articles.ShownCount(), 6);
    EXPECT_EQ(m_articles.ShownPlace(), 1);
    EXPECT_EQ(m_articles.RecordCount(), 5);
    EXPECT_EQ(m_articles.ValueAt(2, 0), 12);
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(7);
    m_articles.Next(); // posts
    EXPECT_EQ(id(), 12);
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1 7 12 2 3 20"));
}

TEST_F(DataSet, aMoveForgetsAnUnchangedRecordAndKeepsAChangedOne)
{
    m_articles.Append();
    m_articles.First();
    EXPECT_EQ(m_articles.RecordCount(), 5);
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(100);
    m_articles.Last();
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("100 12 2 3 20"));
}

TEST_F(DataSet, aRefusedPostKeepsTheUserWhereHeWas)
{
    QObject::connect(&m_articles, &TDataSet::BeforePost, &m_articles,
                     [](TDataSet *dataSet, QString &refusal) {
                         if (dataSet->FieldByName(QStringLiteral("ID")).AsInteger() < 0)
                             refusal = QStringLiteral("Identifiant négatif");
                     });
    m_articles.setRecNo(3);
    m_articles.Edit();
    auto &number = m_articles.FieldByName(QStringLiteral("ID"));
    for (const QVariant &refused : {QVariant(-1), QVariant()}) { // the host's rule; a required field
        number.setValue(refused);
        EXPECT_THROW(m_articles.Next(), EDatabaseError);
        EXPECT_EQ(m_articles.State(), dsEdit);
        EXPECT_EQ(m_articles.RecNo(), 3);
        EXPECT_EQ(number.Value().isValid(), refused.isValid());
    }
    m_articles.Cancel();
    EXPECT_EQ(id(), 2);
}

TEST_F(DataSet, takesWhatAControlHoldsBeforeTheRecordIsLeft)
{
    // A control that holds a number the record does not have yet.
    int held = 0;
    QObject::connect(&m_articles, &TDataSet::UpdateRecord, &m_articles,
                     [&held](TDataSet *dataSet, QString &refusal) {
                         if (held < 0)
                             refusal = QStringLiteral("Identifiant négatif");
                         else if (held > 0)
                             dataSet->FieldByName(QStringLiteral("ID")).setAsInteger(std::exchange(held, 0));
                     });
    const std::function<void()> ways[] = {[this] { m_articles.Post(); }, [this] { m_articles.Next(); },
                                          [this] { m_articles.Append(); },
                                          [this] { m_articles.setIndexFieldNames(QStringLiteral("PRIX")); }};
    for (const auto &leave : ways) {
        m_articles.First();
        m_articles.Edit();
        held = -1;
        EXPECT_THROW(leave(), EDatabaseError);
        EXPECT_EQ(m_articles.State(), dsEdit);
        held = 50;
        leave();
        m_articles.First();
        EXPECT_TRUE(m_articles.Locate(QStringLiteral("ID"), 50));
        m_articles.Delete();
    }
    EXPECT_EQ(m_articles.RecordCount(), 1);
}

TEST_F(DataSet, handsOutWholeColumnsInTheirOrder)
{
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    m_articles.Last();
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("LIBELLE")).setAsString(QStringLiteral("x"));
    const auto labels = m_articles.ColumnOf(m_articles.FieldByName(QStringLiteral("LIBELLE")));
    QStringList texts;
    for (std::size_t row = 0; row < labels.Count(); ++row)
        texts << (labels.IsNull(row) ? QStringLiteral("-") : labels.AsText(row));
    EXPECT_EQ(texts.join(u' '), QStringLiteral("Bague Collier - bague Étui"));
    EXPECT_EQ(m_articles.State(), dsEdit) << "the cursor was moved";
}

TEST_F(DataSet, deletesAndStaysNear)
{
    m_articles.setRecNo(2);
    m_articles.Delete();
    EXPECT_EQ(id(), 2);
    m_articles.Last();
    m_articles.Delete();
    EXPECT_EQ(id(), 3);
    EXPECT_TRUE(m_articles.Eof());
    m_articles.Append();
    m_articles.Delete(); // a record that was never there
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1 2 3"));
    QObject::connect(&m_articles, &TDataSet::BeforeDelete, &m_articles,
                     [](TDataSet *, QString &refusal) { refusal = QStringLiteral("Non"); });
    EXPECT_THROW(m_articles.Delete(), EDatabaseError);
    EXPECT_EQ(m_articles.RecordCount(), 3);
}

TEST_F(DataSet, bookmarksOutliveSortingAndKnowDeletedRows)
{
    m_articles.setRecNo(4);
    const auto three = m_articles.GetBookmark();
    m_articles.setIndexFieldNames(QStringLiteral("ID"));
    m_articles.First();
    EXPECT_TRUE(m_articles.GotoBookmark(three));
    EXPECT_EQ(id(), 3);
    m_articles.Delete();
    EXPECT_FALSE(m_articles.GotoBookmark(three));
    EXPECT_FALSE(m_articles.GotoBookmark(std::nullopt));
}

TEST_F(DataSet, aDataSourceTellsItsControls)
{
    TDataSource source;
    QSignalSpy replaced(&source, &TDataSource::DataSetReplaced), states(&source, &TDataSource::OnStateChange),
        data(&source, &TDataSource::OnDataChange);
    source.setDataSet(&m_articles);
    EXPECT_EQ(replaced.count(), 1);
    data.clear();
    m_articles.Next();
    EXPECT_EQ(data.count(), 1);
    states.clear();
    EXPECT_TRUE(source.Edit());
    EXPECT_EQ(states.count(), 1);
    data.clear();
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(5);
    ASSERT_EQ(data.count(), 1);
    EXPECT_EQ(data[0][1].value<TField *>(), &m_articles.Fields()[0]);
    m_articles.Cancel();
    source.setAutoEdit(false);
    EXPECT_FALSE(source.Edit());

    auto other = std::make_unique<TClientDataSet>();
    source.setDataSet(other.get());
    data.clear();
    m_articles.First();
    EXPECT_EQ(data.count(), 0) << "still listens to the dataset before";
    other.reset();
    EXPECT_EQ(source.DataSet(), nullptr);
    EXPECT_EQ(source.State(), dsInactive);
}
