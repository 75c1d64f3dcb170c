#include <Zelmar01/data/ClientDataSet.h>

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

std::u32string folded(const void *utf8, int size)
{
    const auto text = QString::fromUtf8(static_cast<const char *>(utf8), size);
    std::u32string characters;
    for (const uint character : text.toUcs4())
        characters += QChar::toCaseFolded(static_cast<char32_t>(character));
    return characters;
}

int compareFolded(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    return folded(a, sizeA).compare(folded(b, sizeB));
}

/// The same rows in memory and in a table of SQLite, whose ORDER BY says what an index has to do. Its own
/// collation compares UTF-8 byte by byte, and so by code points.
class TTwoTables
{
public:
    TTwoTables()
    {
        if (sqlite3_open(":memory:", &m_database) != SQLITE_OK)
            throw std::runtime_error("no SQLite");
        sqlite3_create_collation(m_database, "FOLDED", SQLITE_UTF8, nullptr, compareFolded);
        run("create table T (ID integer primary key, LABEL text, NUMBER integer, WEIGHT real, PRICE integer, "
            "SOLD integer, DAY text, HOUR text, MOMENT text, PICTURE blob)");
        m_rows.CreateDataSet({{QStringLiteral("ID"), ftInteger, 0, true, false},
                              {QStringLiteral("LABEL"), ftString, 0, false, false},
                              {QStringLiteral("NUMBER"), ftInteger, 0, false, false},
                              {QStringLiteral("WEIGHT"), ftFloat, 0, false, false},
                              {QStringLiteral("PRICE"), ftBCD, -1, false, false},
                              {QStringLiteral("SOLD"), ftBoolean, 0, false, false},
                              {QStringLiteral("DAY"), ftDate, 0, false, false},
                              {QStringLiteral("HOUR"), ftTime, 0, false, false},
                              {QStringLiteral("MOMENT"), ftDateTime, 0, false, false},
                              {QStringLiteral("PICTURE"), ftBytes, 0, false, false}});
    }
    ~TTwoTables() { sqlite3_close(m_database); }
    TTwoTables(const TTwoTables &) = delete;
    TTwoTables &operator=(const TTwoTables &) = delete;

    TClientDataSet &Rows() { return m_rows; }

    void Insert()
    {
        const bool isAtTheEnd = chance(2);
        isAtTheEnd ? m_rows.Append() : m_rows.Insert();
        m_rows.Fields()[0].setAsInteger(++m_lastId);
        for (int field = 1; field < m_rows.Fields().Count(); ++field)
            m_rows.Fields()[field].setValue(anyValue(field));
        write();
        m_rows.Post();
    }
    void Change()
    {
        goAnywhere();
        m_rows.Edit();
        const int field = 1 + m_random.bounded(m_rows.Fields().Count() - 1);
        m_rows.Fields()[field].setValue(anyValue(field));
        write();
        m_rows.Post();
    }
    void Delete()
    {
        goAnywhere();
        run("delete from T where ID = " + m_rows.Fields()[0].AsString().toStdString());
        m_rows.Delete();
    }

    /// The identifiers in the order of the dataset, and in that of SQLite for an index like this.
    std::vector<qint64> Ids() const
    {
        const auto column = m_rows.ColumnOf(m_rows.FieldByName(QStringLiteral("ID")));
        std::vector<qint64> ids;
        for (std::size_t row = 0; row < column.Count(); ++row)
            ids.push_back(column.Integer(row));
        return ids;
    }
    std::vector<qint64> IdsInOrderOf(const TIndexDef &index) const
    {
        QString terms;
        for (const auto &field : index.Fields.split(u';', Qt::SkipEmptyParts))
            terms += field + (index.Options.testFlag(ixCaseInsensitive) ? " collate FOLDED" : "") +
                     (index.IsDescending(field) ? " desc, " : ", ");
        std::vector<qint64> ids;
        const auto query = prepared("select ID from T order by " + terms.toStdString() + "ID");
        while (sqlite3_step(query.get()) == SQLITE_ROW)
            ids.push_back(sqlite3_column_int64(query.get(), 0));
        return ids;
    }

private:
    struct TFinalizer
    {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    using TStatement = std::unique_ptr<sqlite3_stmt, TFinalizer>;

    TStatement prepared(const std::string &sql) const
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        return TStatement(statement);
    }
    void run(const std::string &sql) { sqlite3_step(prepared(sql).get()); }

    // Brings the record being edited to SQLite, in forms that it orders as the types mean them.
    void write()
    {
        const auto statement = prepared("insert or replace into T values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (int i = 0; i < m_rows.Fields().Count(); ++i) {
            const auto &field = m_rows.Fields()[i];
            const auto text = field.AsString().toUtf8();
            const auto size = static_cast<int>(text.size());
            if (field.IsNull())
                sqlite3_bind_null(statement.get(), i + 1);
            else if (field.DataType() == ftBCD)
                sqlite3_bind_int64(statement.get(), i + 1, field.AsDecimal().Rounded(4)->Unscaled());
            else if (field.DataType() == ftInteger || field.DataType() == ftBoolean)
                sqlite3_bind_int64(statement.get(), i + 1, field.AsInteger());
            else if (field.DataType() == ftFloat)
                sqlite3_bind_double(statement.get(), i + 1, field.AsFloat());
            else if (field.DataType() == ftBytes)
                sqlite3_bind_blob(statement.get(), i + 1, field.AsBytes().constData(),
                                  static_cast<int>(field.AsBytes().size()), SQLITE_TRANSIENT);
            else
                sqlite3_bind_text(statement.get(), i + 1, text.constData(), size, SQLITE_TRANSIENT);
        }
        sqlite3_step(statement.get());
    }

    QVariant anyValue(int field)
    {
        if (chance(8))
            return {};
        const auto small = qint64(m_random.bounded(9)) - 4;
        const auto large = static_cast<qint64>(m_random.generate64());
        const QDate day(2026, 1, 1);
        switch (m_rows.Fields()[field].DataType()) {
        case ftString:
            return anyText();
        case ftFloat:
            return chance(2) ? double(small) / 2 : double(large) * 1e-9;
        case ftBCD: // of up to 18 digits, which no binary fraction tells apart
            return QVariant::fromValue(chance(2) ? TDecimal(small * 50, m_random.bounded(5))
                                                 : TDecimal(99'999'999'999'999'0000 - 9 * small, 4));
        case ftBoolean:
            return small > 0;
        case ftDate:
            return day.addDays(small * 400);
        case ftTime:
            return QTime(12 + int(small), m_random.bounded(2), 0);
        case ftDateTime:
            return QDateTime(day.addDays(small), QTime(12 + int(small), m_random.bounded(2)));
        case ftBytes:
            return anyText().toLatin1();
        default:
            return chance(2) ? small : large;
        }
    }

    // Texts that have beginnings of any length in common and differ in case, accents, and in characters whose
    // order as code points is another than as UTF-16.
    QString anyText()
    {
        static const auto characters = QStringLiteral("aAbBeEéÉzZœŒßẞÿŸİıK_ 1\uE000").toUcs4() +
                                       QStringLiteral("\U00010400\U00010428\U0001F48D").toUcs4() +
                                       QList<uint>{0};
        static const auto beginnings =
            QStringLiteral("|B|b|bague|Bague or|bague or|BAGUE OR 750|Bague or jaune").split(u'|');
        auto text = beginnings[m_random.bounded(int(beginnings.size()))];
        for (int left = m_random.bounded(3); left > 0; --left) {
            const auto character =
                static_cast<char32_t>(characters[m_random.bounded(int(characters.size()))]);
            text += QString::fromUcs4(&character, 1);
        }
        return text;
    }

    void goAnywhere() { m_rows.setRecNo(1 + m_random.bounded(m_rows.RecordCount())); }
    bool chance(int oneIn) { return m_random.bounded(oneIn) == 0; }

    TClientDataSet m_rows;
    sqlite3 *m_database = nullptr;
    QRandomGenerator m_random{42};
    int m_lastId = 0;
};

TIndexDef indexOn(const char *fields, TIndexOptions options = {}, const char *descFields = "")
{
    return {QStringLiteral("IDTEMP"), QString::fromLatin1(fields), options, QString::fromLatin1(descFields)};
}

void sort(TClientDataSet &rows, const TIndexDef &index)
{
    if (rows.IndexDefs().IndexOf(index.Name) >= 0)
        rows.DeleteIndex(index.Name);
    rows.AddIndex(index.Name, index.Fields, index.Options, index.DescFields);
    rows.setIndexName(index.Name);
}

std::string say(const TIndexDef &index)
{
    return (index.Fields + (index.Options.testFlag(ixCaseInsensitive) ? " folded, " : " plain, ") +
            (index.Options.testFlag(ixDescending) ? "down: " : "up ") + index.DescFields)
        .toStdString();
}

} // namespace

TEST(Sort, ordersAsSqliteDoes)
{
    TTwoTables tables;
    for (int row = 0; row < 2500; ++row)
        tables.Insert();
    for (const auto &index :
         {indexOn("LABEL"), indexOn("LABEL", ixCaseInsensitive), indexOn("LABEL", ixDescending),
          indexOn("LABEL;PRICE", ixCaseInsensitive),
          indexOn("LABEL;PRICE", ixCaseInsensitive | ixDescending, "PRICE"),
          indexOn("LABEL;PRICE", ixDescending, "LABEL"), indexOn("PRICE;LABEL", ixDescending, "PRICE"),
          indexOn("PRICE;LABEL", ixCaseInsensitive | ixDescending, "price;label"),
          indexOn("SOLD;LABEL", ixDescending, "SOLD"), indexOn("NUMBER;WEIGHT", ixDescending, "WEIGHT"),
          indexOn("WEIGHT;NUMBER"), indexOn("DAY;HOUR", ixDescending, "DAY"),
          indexOn("MOMENT;SOLD", ixDescending), indexOn("PICTURE;DAY", ixDescending, "PICTURE"),
          indexOn("SOLD;HOUR;LABEL;PRICE", ixCaseInsensitive | ixDescending, "LABEL"),
          indexOn("ID;LABEL", ixDescending, "ID"), indexOn("LABEL;ID;PRICE", ixDescending, "ID"),
          indexOn("")}) {
        sort(tables.Rows(), index);
        EXPECT_EQ(tables.Ids(), tables.IdsInOrderOf(index)) << say(index);
    }
}

// Among few rows there are fields whose values are all different, nulls apart.
TEST(Sort, ordersFewRows)
{
    TTwoTables tables;
    for (int row = 0; row < 30; ++row) {
        tables.Insert();
        for (const auto &index : {indexOn("LABEL;ID", ixDescending, "ID"), indexOn("PRICE;ID", ixDescending),
                                  indexOn("WEIGHT;NUMBER;LABEL", ixDescending, "NUMBER"),
                                  indexOn("NUMBER;LABEL;ID", ixDescending, "ID")}) {
            sort(tables.Rows(), index);
            EXPECT_EQ(tables.Ids(), tables.IdsInOrderOf(index)) << say(index) << ' ' << row;
        }
    }
}

TEST(Sort, keepsItsOrderThroughChanges)
{
    TTwoTables tables;
    for (int row = 0; row < 600; ++row)
        tables.Insert();
    const TIndexDef clicks[] = {indexOn("LABEL;PRICE", ixCaseInsensitive),
                                indexOn("PRICE;LABEL", ixDescending, "PRICE"),
                                indexOn("LABEL;PRICE", ixDescending, "LABEL;PRICE"),
                                indexOn("PRICE;LABEL", ixDescending, "LABEL"), indexOn("DAY;LABEL")};
    for (const int changes : {3, 12, 200}) // of which some, or all, are sorted apart from the others
        for (const auto &index : clicks) {
            sort(tables.Rows(), index);
            EXPECT_EQ(tables.Ids(), tables.IdsInOrderOf(index)) << say(index) << " after the last changes";
            for (int change = 0; change < changes; ++change) {
                tables.Insert();
                tables.Change();
                tables.Delete();
            }
            EXPECT_EQ(tables.Ids(), tables.IdsInOrderOf(index)) << say(index) << ' ' << changes;
        }
}
