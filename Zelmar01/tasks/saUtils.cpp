#include <Zelmar01/tasks/saUtils.h>

#include <QList>

#include <algorithm>
#include <array>
#include <chrono>
#include <compare>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

const QString jobEnding = u".job"_s;

// What neither case nor decomposition takes apart.
struct TLigature
{
    char32_t Letter, First, Second;
};
constexpr TLigature ligatures[] = {{U'œ', U'o', U'e'}, {U'æ', U'a', U'e'}, {U'ß', U's', U's'}};

constexpr int sign(std::strong_ordering order)
{
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

// The first bytes of characters in a key: what is no letter comes first, then digits, then letters. A
// character of ASCII is one byte, so that most keys need no memory of their own; any other has its number
// behind that of its kind. Keys are then compared as bytes.
constexpr unsigned otherSigns = 0x80, digits = otherSigns + 1, otherDigits = digits + 10,
                   smallLetters = otherDigits + 1, otherLetters = smallLetters + 26;

constexpr auto asciiBytes = [] {
    std::array<char, otherSigns> bytes{};
    for (unsigned c = 0; c < otherSigns; ++c) {
        const auto small = c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
        const auto byte = small >= 'a' && small <= 'z' ? smallLetters + small - 'a'
                          : c >= '0' && c <= '9'       ? digits + c - '0'
                                                       : c;
        bytes[c] = static_cast<char>(byte);
    }
    return bytes;
}();

void addLetter(std::string &letters, char32_t letter)
{
    if (letter < asciiBytes.size()) {
        letters += asciiBytes[letter];
        return;
    }
    const auto kind = QChar::isLetter(letter)  ? otherLetters
                      : QChar::isDigit(letter) ? otherDigits
                                               : otherSigns;
    letters += static_cast<char>(kind);
    for (const int shift : {16, 8, 0})
        letters += static_cast<char>(letter >> shift & 0xFF);
}

void addFolded(std::string &letters, char32_t letter)
{
    if (QChar::decompositionTag(letter) == QChar::Canonical) {
        for (const char32_t part : QChar::decomposition(letter).toUcs4())
            addFolded(letters, part);
        return;
    }
    const auto folded = QChar::toCaseFolded(letter);
    const auto *const pair = std::ranges::find(ligatures, folded, &TLigature::Letter);
    if (pair != std::end(ligatures)) {
        addLetter(letters, pair->First);
        addLetter(letters, pair->Second);
    } else if (!QChar::isMark(folded)) {
        addLetter(letters, folded);
    }
}

std::string lettersOf(const QString &text)
{
    std::string letters;
    letters.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i].unicode();
        if (unit < asciiBytes.size()) {
            letters += asciiBytes[unit];
        } else if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            addFolded(letters, QChar::surrogateToUcs4(text[i], text[i + 1]));
            ++i;
        } else {
            addFolded(letters, unit);
        }
    }
    return letters;
}

// The whole text without case, its accents behind their letters.
QString accentsOf(const QString &text)
{
    return text.normalized(QString::NormalizationForm_D).toCaseFolded();
}

// From the first difference on, small letters before others.
int compareCase(const QString &a, const QString &b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end())
        return sign(a.size() <=> b.size());
    if (inA->isLower() != inB->isLower())
        return inA->isLower() ? -1 : 1;
    return sign(inA->unicode() <=> inB->unicode());
}

// Where the extension of a file name begins; the end of a name without one.
qsizetype extensionOf(const QString &fileName)
{
    for (auto i = fileName.size(); i-- > 0;) {
        if (fileName[i] == u'.')
            return i;
        if (fileName[i] == u'/' || fileName[i] == u'\\' || fileName[i] == u':')
            break;
    }
    return fileName.size();
}

bool endsInJob(const QString &fileName)
{
    return WCompareText(fileName.mid(extensionOf(fileName)), jobEnding) == 0;
}

} // namespace

TCollationKey::TCollationKey(const QString &text) : m_letters(lettersOf(text)), m_text(text) {}

int TCollationKey::CompareText(const TCollationKey &other) const
{
    const int letters = sign(m_letters <=> other.m_letters);
    if (letters != 0 || m_text == other.m_text)
        return letters;
    return sign(accentsOf(m_text).compare(accentsOf(other.m_text)) <=> 0);
}

int TCollationKey::CompareStr(const TCollationKey &other) const
{
    const int text = CompareText(other);
    return text != 0 ? text : compareCase(m_text, other.m_text);
}

int WCompareText(const QString &a, const QString &b)
{
    return TCollationKey(a).CompareText(TCollationKey(b));
}

int WCompareStr(const QString &a, const QString &b)
{
    return TCollationKey(a).CompareStr(TCollationKey(b));
}

TDateTime SysTimeToDateTime(SYSTEMTIME time)
{
    constexpr std::array monthLengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = std::chrono::year{time.wYear}.is_leap();
    for (std::size_t month = 1; month < time.wMonth && month <= monthLengths.size(); ++month) {
        const int length = monthLengths[month - 1] + (isLeap && month == 2 ? 1 : 0);
        time.wDay = static_cast<std::uint16_t>(time.wDay + length);
    }
    const int year = time.wYear - 1;
    const int days = year * 365 + year / 4 - year / 100 + year / 400 + time.wDay;
    const auto milliseconds = time.wHour * std::int64_t{3'600'000} + time.wMinute * std::int64_t{60'000} +
                              time.wSecond * std::int64_t{1000} + time.wMilliseconds;
    return days - 693'594 + static_cast<double>(milliseconds) / 86'400'000.0;
}

SYSTEMTIME DateTimeToSystemTime(TDateTime moment)
{
    using namespace std::chrono;
    const auto parts = DecodeDateTime(moment);
    const sys_days day = year{parts.Year} / parts.Month / parts.Day;
    const auto word = [](auto value) { return static_cast<std::uint16_t>(value); };
    return {word(parts.Year),   word(parts.Month),      word(weekday(day).c_encoding()),
            word(parts.Day),    word(parts.Hour),       word(parts.Minute),
            word(parts.Second), word(parts.Millisecond)};
}

QString WithJobEnding(const QString &name)
{
    return endsInJob(name) ? name : name + jobEnding;
}

QString WithoutJobEnding(const QString &fileName)
{
    return endsInJob(fileName) ? fileName.chopped(jobEnding.size()) : fileName;
}

} // namespace Zelmar01
