#include "Samples.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/DataErrors.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

struct TConversion
{
    QVariant From;
    TFieldType Type;
    QString Text; // null: refused
};

QVariant decimal(const char *text)
{
    return QVariant::fromValue(*TDecimal::FromText(QString::fromLatin1(text)));
}

} // namespace

TEST(Field, valuesAreBroughtToItsType)
{
    const TConversion conversions[] = {
        {QStringLiteral(" 42 "), ftInteger, QStringLiteral("42")},
        {QStringLiteral("4.2"), ftInteger, {}},
        {QStringLiteral("9223372036854775807"), ftInteger, QStringLiteral("9223372036854775807")},
        {QStringLiteral("9223372036854775808"), ftInteger, {}},
        {Q_UINT64_C(18446744073709551615), ftInteger, {}},
        {3.0, ftInteger, QStringLiteral("3")},
        {3.5, ftInteger, {}},
        {decimal("7.00"), ftInteger, QStringLiteral("7")},
        {decimal("7.01"), ftInteger, {}},
        {QStringLiteral("0.10"), ftBCD, QStringLiteral("0.10")},
        {0.1, ftBCD, QStringLiteral("0.1")},
        {12345678.9, ftBCD, QStringLiteral("12345678.9")},
        {QStringLiteral("abc"), ftBCD, {}},
        {QStringLiteral("true"), ftBoolean, QStringLiteral("1")},
        {0, ftBoolean, QStringLiteral("0")},
        {QStringLiteral("oui"), ftBoolean, {}},
        {QStringLiteral("2024-02-29"), ftDate, QStringLiteral("2024-02-29")},
        {QStringLiteral("2023-02-29"), ftDate, {}},
        {QDateTime(QDate(2024, 2, 29), QTime(23, 59)), ftDate, QStringLiteral("2024-02-29")},
        {QStringLiteral("13:45"), ftTime, QStringLiteral("13:45:00")},
        {QStringLiteral("2026-11-21 08:30:00"), ftDateTime, QStringLiteral("2026-11-21T08:30:00")},
        {QStringLiteral("é"), ftBytes, QStringLiteral("é")},
        {decimal("1.50"), ftString, QStringLiteral("1.50")},
        {QDate(2026, 1, 2), ftString, QStringLiteral("2026-01-02")},
    };
    for (const auto &conversion : conversions) {
        SCOPED_TRACE(TextOfValue(conversion.From).toStdString());
        if (conversion.Text.isNull())
            EXPECT_THROW(ConvertValue(conversion.From, conversion.Type, QStringLiteral("F")), EConvertError);
        else
            EXPECT_EQ(TextOfValue(ConvertValue(conversion.From, conversion.Type, QStringLiteral("F"))),
                      conversion.Text);
    }
    EXPECT_FALSE(ConvertValue({}, ftInteger, {}).isValid());
}

TEST(Field, refusesWhatItCannotHoldAndStaysAsItWas)
{
    TClientDataSet articles;
    fillWithArticles(articles);
    auto &label = articles.FieldByName(QStringLiteral("libelle"));
    EXPECT_THROW(label.setAsString(QStringLiteral("x")), EDatabaseError) << "not in edit state";
    articles.Edit();
    EXPECT_THROW(label.setAsString(QStringLiteral("treize signes")), EDatabaseError);
    EXPECT_EQ(label.AsString(), QStringLiteral("Bague"));
    auto &price = articles.FieldByName(QStringLiteral("PRIX"));
    EXPECT_THROW(price.setAsString(QStringLiteral("cher")), EConvertError);
    price.setAsString(QStringLiteral("19.995"));
    EXPECT_EQ(price.AsString(), QStringLiteral("20.00"));
    price.Clear();
    EXPECT_TRUE(price.IsNull());
    EXPECT_EQ(price.AsDecimal(), TDecimal());
    label.setReadOnly(true);
    EXPECT_THROW(label.Clear(), EDatabaseError);
}
