#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/saUtils.h>

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <random>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// In the order of WCompareStr; WCompareText holds those equal that have a comma between them.
const QString namesInOrder =
    u"(ancien)|1.job|12|a-b|a.job,A.job|a1|b.job,B.job|cote,cOte,Cote|coté,COTÉ|côte|côté,Côté|"
    "cotes|oeuvre|œuvre,Œuvre|oeuvrer|strasse,STRASSE|straße|z|Ωmega"_s;

struct TMomentCase
{
    SYSTEMTIME Time;
    double Expected;
};
const TMomentCase momentCases[] = {
    {{}, -693959.0},
    {{1899, 12, 0, 30}, 0.0},
    {{1899, 12, 0, 31, 6}, 1.25},
    {{1900, 3, 0, 1}, 61.0}, // 1900 had no 29 February
    {{2000, 3, 0, 1}, 36586.0},
    {{2024, 2, 0, 29, 23, 59, 59, 999}, 45351.0 + 86399.999 / 86400},
    {{2024, 12, 6, 31, 12}, 45657.5},
    {{2024, 13, 0, 1}, 45658.0}, // a month more than there are
    {{2024, 65535, 0, 1}, 45658.0},
    {{2023, 2, 0, 31}, 44988.0},
    {{2024, 1, 9, 1, 48}, 45294.0},
};

struct TNameCase
{
    const char *Given;
    const char *File; // as WithJobEnding has it
    const char *Name; // as WithoutJobEnding has the file
};
const TNameCase nameCases[] = {
    {"Backup", "Backup.job", "Backup"},
    {"Backup.job", "Backup.job", "Backup"},
    {"Backup.JOB", "Backup.JOB", "Backup"},
    {"Backup.jobs", "Backup.jobs.job", "Backup.jobs"},
    {"Backup.", "Backup..job", "Backup."},
    {"été.2027", "été.2027.job", "été.2027"},
    {"a.job/b", "a.job/b.job", "a.job/b"},
    {"job", "job.job", "job"},
    {"", ".job", ""},
    {".job", ".job", ""},
};

} // namespace

TEST(Collation, ordersNamesAsPeopleDo)
{
    QList<QStringList> rows;
    for (const auto &row : namesInOrder.split(u'|'))
        rows << row.split(u',');
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < rows.size(); ++j)
            for (const auto &a : rows[i])
                for (const auto &b : rows[j]) {
                    SCOPED_TRACE((a + u" and "_s + b).toStdString());
                    const auto sign = [](auto first, auto second) {
                        return (first > second) - (first < second);
                    };
                    const auto within = [&](const QString &name) { return rows[i].indexOf(name); };
                    EXPECT_EQ(WCompareText(a, b), sign(i, j));
                    EXPECT_EQ(WCompareStr(a, b), i != j ? sign(i, j) : sign(within(a), within(b)));
                }
}

// What the asymmetry of the list and its search needs: any order of any texts is one order.
TEST(Collation, isATotalOrderOfRandomTexts)
{
    std::mt19937 random(2027);
    const auto letters = u"aAbBéÉe\u0301oOœŒsß1-. \U0001D49C"_s; // the last one falls apart into halves
    const auto text = [&] {
        QString made;
        for (auto i = random() % 4; i > 0; --i)
            made += letters[static_cast<qsizetype>(random()) % letters.size()];
        return made;
    };
    for (int i = 0; i < 20'000; ++i) {
        const auto a = text(), b = text(), c = text();
        ASSERT_EQ(WCompareStr(a, b), -WCompareStr(b, a));
        ASSERT_EQ(WCompareStr(a, b) == 0, a == b);
        if (const int textOrder = WCompareText(a, b); textOrder != 0) {
            ASSERT_EQ(WCompareStr(a, b), textOrder);
        }
        if (WCompareStr(a, b) < 0 && WCompareStr(b, c) < 0) {
            ASSERT_LT(WCompareStr(a, c), 0);
        }
    }
}

TEST(Moments, comeFromTheServicesRecords)
{
    for (const auto &moment : momentCases)
        EXPECT_DOUBLE_EQ(SysTimeToDateTime(moment.Time), moment.Expected)
            << moment.Time.wYear << '-' << moment.Time.wMonth << '-' << moment.Time.wDay;
}

TEST(Moments, goToTheServiceWithTheirDayOfTheWeek)
{
    EXPECT_EQ(DateTimeToSystemTime(45657.5), (SYSTEMTIME{2024, 12, 2, 31, 12}));
    EXPECT_EQ(DateTimeToSystemTime(EncodeDate(2027, 1, 3)), (SYSTEMTIME{2027, 1, 0, 3}));
    EXPECT_THROW(DateTimeToSystemTime(-693959.0), EConvertError);
}

TEST(JobNames, endInJobAsFilesAlone)
{
    for (const auto &name : nameCases) {
        EXPECT_EQ(WithJobEnding(name.Given).toStdString(), name.File);
        EXPECT_EQ(WithoutJobEnding(name.File).toStdString(), name.Name);
    }
}
