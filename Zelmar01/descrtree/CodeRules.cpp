#include <Zelmar01/descrtree/CodeRules.h>

#include <Zelmar01/core/Windows1252.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

template<class Change>
QString changed(QString text, Change change)
{
    for (QChar &c : text) {
        const QChar other = change(c);
        if (CharToWindows1252(c.unicode()) && CharToWindows1252(other.unicode()))
            c = other;
    }
    return text;
}

bool isLastCharacter(const TParentCode &parent, QChar c)
{
    if (!parent)
        return c >= u'1' && c <= u'9';
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

QChar following(QChar c)
{
    if (c == u'9')
        return u'a';
    const auto byte = CharToWindows1252(c.unicode()).value_or(0);
    return QChar(static_cast<char16_t>(CharFromWindows1252(static_cast<unsigned char>(byte + 1))));
}

} // namespace

bool IsCodeForm(const TParentCode &parent, const QString &code)
{
    const auto length = parent ? parent->size() + 1 : 1;
    return code.size() == length && isLastCharacter(parent, code.back());
}

bool MayBeQueried(const QString &code)
{
    return !code.contains(u'\'');
}

QString NextFreeCode(const TParentCode &parent, const QStringList &codes)
{
    QString candidate = parent ? *parent + u'0' : QStringLiteral("1");
    if (codes.isEmpty())
        return candidate;
    for (const auto &code : codes) {
        if (LowerCode(candidate) != LowerCode(code))
            return UpperCode(candidate);
        candidate.back() = following(candidate.back());
    }
    return isLastCharacter(parent, candidate.back()) ? UpperCode(candidate) : QString();
}

QString UpperCode(const QString &code)
{
    return changed(code, [](QChar c) { return c.toUpper(); });
}

QString LowerCode(const QString &code)
{
    return changed(code, [](QChar c) { return c.toLower(); });
}

} // namespace Zelmar01
