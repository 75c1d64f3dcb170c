#include <Zelmar01/data/binding/AmountText.h>

#include <QStringList>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr QChar apostrophe = u'\'', curlyApostrophe = u'’', minusSign = u'−';

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isPoint(QChar c)
{
    return c == u'.' || c == u',';
}

bool isBlankSeparator(QChar c)
{
    return c.isSpace() || c == apostrophe || c == curlyApostrophe;
}

// Also when a blank stands between it and the digits.
QStringView withoutCurrency(QStringView text)
{
    text = text.trimmed();
    for (const QStringView sign : {u"EUR"}) {
        if (text.startsWith(sign, Qt::CaseInsensitive))
            text = text.mid(sign.size());
        if (text.endsWith(sign, Qt::CaseInsensitive))
            text.chop(sign.size());
    }
    while (!text.isEmpty() && text.front().category() == QChar::Symbol_Currency)
        text = text.mid(1);
    while (!text.isEmpty() && text.back().category() == QChar::Symbol_Currency)
        text.chop(1);
    return text.trimmed();
}

// The place where the decimals begin; the end of the text when it has none.
qsizetype pointOf(QStringView text, const QLocale &locale)
{
    const auto last = std::find_if(text.rbegin(), text.rend(), isPoint);
    if (last == text.rend())
        return text.size();
    const auto place = text.rend() - last - 1;
    const auto count = text.count(*last);
    if (std::any_of(text.begin(), text.end(), [&](QChar c) { return isPoint(c) && c != *last; }))
        return count == 1 ? place : text.size(); // "1,234.50", "1.234,50"; "1.2,345,678" is refused later
    if (count > 1)
        return text.size();
    const auto whole = text.left(place);
    const bool isGroup = locale.groupSeparator() == QStringView(&*last, 1) && text.size() - place == 4 &&
                         !whole.isEmpty() && whole != u"0" && whole.size() <= 3;
    return isGroup ? text.size() : place;
}

// The digits of the whole part without what separates thousands; none for groups that are not three digits.
std::optional<QString> wholeDigits(QStringView text)
{
    QString digits;
    QChar separator;
    qsizetype groupStart = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isDigit(c)) {
            digits += c;
            continue;
        }
        const bool isFirst = separator.isNull();
        const bool isSame = c == separator || (c.isSpace() && separator.isSpace());
        const auto length = i - groupStart;
        if (!(isPoint(c) || isBlankSeparator(c)) || !(isFirst || isSame) || length > 3 || length < 1 ||
            (!isFirst && length != 3))
            return std::nullopt;
        separator = c;
        groupStart = i + 1;
    }
    if (!separator.isNull() && text.size() - groupStart != 3)
        return std::nullopt;
    return digits;
}

struct TSection
{
    QString Before, After; // what stands around the digits
    int WholeDigits = 0, Decimals = 0, LeastDecimals = 0;
    bool Thousands = false;
};

QStringList sectionsOf(const QString &format)
{
    QStringList sections(1);
    QChar quote;
    for (const QChar c : format) {
        if (c == u'\'' || c == u'"')
            quote = quote.isNull() ? c : c == quote ? QChar() : quote;
        if (c == u';' && quote.isNull())
            sections.append(QString());
        else
            sections.last() += c;
    }
    return sections;
}

TSection sectionOf(const QString &text)
{
    TSection section;
    QChar quote;
    bool digits = false, point = false;
    for (const QChar c : text) {
        if (!quote.isNull() ? c == quote : c == u'\'' || c == u'"') {
            quote = quote.isNull() ? c : QChar();
        } else if (!quote.isNull() || !QStringView(u"0#.,").contains(c)) {
            (digits ? section.After : section.Before) += c;
        } else if (c == u',') {
            section.Thousands = true;
        } else if (c == u'.') {
            point = digits = true;
        } else if (point) {
            ++section.Decimals;
            if (c == u'0')
                section.LeastDecimals = section.Decimals;
            digits = true;
        } else {
            section.WholeDigits += c == u'0';
            digits = true;
        }
    }
    return section;
}

QString digitsIn(const TDecimal &amount, const TSection &section, const QLocale &locale)
{
    auto text = amount.ToText();
    if (text.startsWith(u'-'))
        text.remove(0, 1);
    auto whole = text.section(u'.', 0, 0), decimals = text.section(u'.', 1);
    while (decimals.size() > section.LeastDecimals && decimals.endsWith(u'0'))
        decimals.chop(1);
    if (whole == u"0")
        whole.clear();
    whole = whole.rightJustified(section.WholeDigits, u'0');
    if (section.Thousands)
        for (auto place = whole.size() - 3; place > 0; place -= 3)
            whole.insert(place, locale.groupSeparator());
    return decimals.isEmpty() ? whole : whole + locale.decimalPoint() + decimals;
}

} // namespace

std::optional<TDecimal> ParseAmount(QStringView text, const QLocale &locale)
{
    text = text.trimmed();
    const auto isMinus = [&](QStringView t) { return t.startsWith(u'-') || t.startsWith(minusSign); };
    bool negative = isMinus(text);
    const bool isSigned = negative || text.startsWith(u'+');
    if (isSigned)
        text = text.mid(1);
    text = withoutCurrency(text);
    if (!isSigned && isMinus(text)) { // "€ -5"
        negative = true;
        text = text.mid(1).trimmed();
    }
    const auto point = pointOf(text, locale);
    const auto whole = wholeDigits(text.left(point));
    const auto decimals = text.mid(std::min(point + 1, text.size()));
    if (!whole || !std::all_of(decimals.begin(), decimals.end(), isDigit))
        return std::nullopt;
    auto plain = *whole + u'.' + decimals.toString();
    if (negative)
        plain.prepend(u'-');
    return TDecimal::FromText(plain);
}

QString FormatAmount(const TDecimal &amount, const QString &format, const QLocale &locale)
{
    const auto sections = sectionsOf(format);
    const auto shown = [&](qsizetype index) {
        const auto section =
            sectionOf(index < sections.size() && !sections[index].isEmpty() ? sections[index] : sections[0]);
        const auto rounded = format.isEmpty() ? amount : amount.Rounded(section.Decimals).value_or(amount);
        return std::pair(section, rounded);
    };
    const TDecimal zero;
    qsizetype index = amount < zero ? 1 : 0;
    auto [section, rounded] = shown(index);
    if (rounded == zero) { // -0.001 is no negative amount when it is shown
        index = sections.size() > 2 ? 2 : 0;
        std::tie(section, rounded) = shown(index);
    }
    if (format.isEmpty())
        section = {{}, {}, 1, rounded.Decimals(), rounded.Decimals(), false};
    if (index == 1 && sections.size() > 1 && !sections[1].isEmpty())
        section.Before.replace(u'-', locale.negativeSign());
    else if (index == 1)
        section.Before.prepend(locale.negativeSign());
    return section.Before + digitsIn(rounded, section, locale) + section.After;
}

} // namespace Zelmar01
