// Any text as an amount, a date, a time, a format and an address: no crash, no hang, and what is read is what
// is shown again.

#include "Fuzz.h"

#include <Zelmar01/controls/GaugeGeometry.h>
#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/data/binding/AmountText.h>
#include <Zelmar01/data/binding/DateText.h>

#include <QApplication>

#include <cstdlib>
#include <cstring>

using namespace Zelmar01;

namespace {

const QLocale locales[] = {QLocale(QLocale::French, QLocale::France),
                           QLocale(QLocale::English, QLocale::UnitedStates),
                           QLocale(QLocale::German, QLocale::Switzerland)};

void require(bool promise)
{
    if (!promise)
        std::abort();
}

void asAmount(const QString &text)
{
    for (const auto &locale : locales)
        for (const auto *format : {"", ",0.00;-,0.00", "0.00"}) {
            const auto amount = ParseAmount(text, locale);
            if (!amount)
                continue;
            const auto shown = FormatAmount(*amount, QString::fromLatin1(format), locale);
            const auto again = ParseAmount(shown, locale);
            // Decimals added to many digits may be more than an amount holds.
            require(!again || *format || *again == *amount);
            require(again || amount->ToText().size() > TDecimal::MaxDecimals - 3);
            require(!again || FormatAmount(*again, QString::fromLatin1(format), locale) == shown);
        }
}

void asFormat(const QString &text)
{
    for (const auto &amount :
         {TDecimal(0), TDecimal(-123456, 2), TDecimal(5, 18), TDecimal(999'999'999'999'999'999)})
        for (const auto &locale : locales)
            require(FormatAmount(amount, text, locale).size() <= 40 + 2 * text.size());
}

void asDate(const QString &text)
{
    const QDate today(2026, 3, 15);
    for (const auto &pattern :
         {DatePattern(locales[0]), DatePattern(locales[1]), DatePatternOfMask(QStringLiteral("jj/MM"))})
        if (const auto date = ParseDate(text, pattern, today)) {
            require(date->isValid());
            require(ParseDate(date->toString(pattern), pattern, *date) == date);
        }
    ParseDate(text, DatePatternOfMask(text), today);
    const auto time = ParseTime(text);
    require(!time || (time->isValid() && ParseTime(time->toString(QStringLiteral("HH:mm:ss"))) == time));
}

void asAddress(const QString &text)
{
    static TLabelURL link;
    link.setURL(text);
    for (int type = 0; type <= utWais + 1; ++type) {
        link.setURLType(static_cast<TURLType>(type));
        const auto address = link.Address();
        require(type > utWais ? address.isEmpty() : address.endsWith(text));
        require(type != utNone || address == text);
        link.setURL(address);
        require(link.Address() == address || type > utWais);
        link.setURL(text);
    }
}

void asGauge(const std::string &input)
{
    int numbers[4] = {};
    std::memcpy(numbers, input.data(), std::min(input.size(), sizeof numbers));
    const int percent = GaugePercent(numbers[0], numbers[1], numbers[2]);
    const TGaugeRect rect{1, 1, numbers[3] & 0xFFFF, numbers[2] & 0xFFFF};
    require(HorizontalBar(rect, percent).Right <= std::max(rect.BarWidth(), 0));
    require(VerticalBar(rect, percent).Top >= std::min(1, rect.BarHeight()));
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const std::vector<std::string> seeds{"1 234,50",
                                                "-1,234.50",
                                                "12,50 €",
                                                "€ -5",
                                                "999999999999999999",
                                                "28/02/2026",
                                                "290224",
                                                "2026-02-28",
                                                "13h45",
                                                ",0.00;-,0.00;'néant'",
                                                "jj/MM/aaaa",
                                                "http://exemple.fr/?a=b",
                                                "HTTPS://X"};
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz", *arguments[] = {name, nullptr};
    static const bool isQuiet = qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(count, arguments);
    require(isQuiet);
    const std::string input(reinterpret_cast<const char *>(data), size);
    const auto text = QString::fromStdString(input);
    asAmount(text);
    asFormat(text);
    asDate(text);
    asAddress(text);
    asGauge(input);
    return 0;
}
