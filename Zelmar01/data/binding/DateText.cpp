#include <Zelmar01/data/binding/DateText.h>

#include <QStringList>

#include <algorithm>
#include <vector>

namespace Zelmar01 {

namespace {

constexpr int yearsBack = 50;

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The digits of a date, a text a number; none when there is something else between them.
std::optional<QStringList> numbersOf(QStringView text)
{
    QStringList numbers;
    bool inNumber = false;
    for (const QChar c : text.trimmed()) {
        if (isDigit(c) && !inNumber)
            numbers.append(QString());
        if (isDigit(c))
            numbers.last() += c;
        else if (!c.isSpace() && !QStringView(u"/.-").contains(c))
            return std::nullopt;
        inNumber = isDigit(c);
    }
    return numbers;
}

// "dMy" for "dd/MM/yyyy".
QString orderOf(const QString &pattern)
{
    QString order;
    for (const QChar c : pattern)
        if (QStringView(u"dMy").contains(c) && !order.contains(c))
            order += c;
    return order;
}

// Digits alone, cut in twos, with what is left for the year: "280226", "28022026", "2802".
QStringList cut(const QString &digits, const QString &order)
{
    QStringList parts;
    qsizetype from = 0;
    for (const QChar part : order) {
        const qsizetype length = part == u'y' ? digits.size() - 4 : 2;
        if (length > 0)
            parts << digits.mid(from, length);
        from += length;
    }
    return parts;
}

int fullYear(const QString &digits, QDate today)
{
    const int year = digits.toInt();
    if (digits.size() != 2)
        return digits.size() == 4 ? year : 0;
    const int first = today.year() - yearsBack;
    return first + ((year - first) % 100 + 100) % 100;
}

} // namespace

QString DatePattern(const QLocale &locale)
{
    QString pattern;
    QChar last;
    for (const QChar c : locale.dateFormat(QLocale::ShortFormat)) {
        if (c != last || !c.isLetter())
            pattern += c == u'y'                ? QStringLiteral("yyyy")
                       : c == u'd' || c == u'M' ? QString(2, c)
                                                : QString(c);
        last = c;
    }
    return orderOf(pattern).size() == 3 ? pattern : QStringLiteral("yyyy-MM-dd");
}

QString DatePatternOfMask(const QString &mask)
{
    QString pattern;
    for (const QChar c : mask)
        pattern += c == u'j' || c == u'J' || c == u'D'   ? u'd'
                   : c == u'm'                           ? u'M'
                   : c == u'a' || c == u'A' || c == u'Y' ? u'y'
                                                         : c;
    return pattern;
}

std::optional<QDate> ParseDate(QStringView text, const QString &pattern, QDate today)
{
    auto numbers = numbersOf(text);
    if (!numbers)
        return std::nullopt;
    auto order = orderOf(pattern);
    const bool hasYear = order.contains(u'y');
    if (numbers->size() == 1)
        *numbers = cut(numbers->first(), order);
    else if (numbers->size() == 3 && numbers->first().size() == 4)
        order = QStringLiteral("yMd");
    if (numbers->size() == 2)
        order.remove(u'y');
    if (numbers->size() != order.size() || numbers->size() < 2)
        return std::nullopt;
    const auto part = [&](QChar which) { return numbers->value(order.indexOf(which)); };
    const int day = part(u'd').toInt(), month = part(u'M').toInt();
    if (part(u'd').size() > 2 || part(u'M').size() > 2)
        return std::nullopt;
    int year = order.contains(u'y') ? fullYear(part(u'y'), today) : today.year();
    while (!hasYear && day == 29 && month == 2 && !QDate::isLeapYear(year))
        --year;
    const QDate date(year, month, day);
    return date.isValid() && year > 0 ? std::optional(date) : std::nullopt;
}

std::optional<QTime> ParseTime(QStringView text)
{
    auto parts = text.trimmed().toString().toLower().replace(u'h', u':').split(u':');
    if (parts.size() == 2 && parts[1].isEmpty())
        parts.removeLast();
    else if (parts.size() < 2)
        return std::nullopt;
    std::vector<int> numbers(3);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const auto &part = parts[i];
        if (i >= 3 || part.isEmpty() || part.size() > 2 || !std::all_of(part.begin(), part.end(), isDigit))
            return std::nullopt;
        numbers[static_cast<std::size_t>(i)] = part.toInt();
    }
    const QTime time(numbers[0], numbers[1], numbers[2]);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace Zelmar01
