#include <Zelmar01/data/SqlText.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace Zelmar01 {

namespace {

enum class TTokenKind { Word, Name, Literal, Sign };

// A piece of SQL: a bare word or number, a name in quotes or brackets, a literal, or a single other
// character. Blanks and comments are between the tokens.
struct TToken
{
    TTokenKind Kind;
    qsizetype Begin, End;
    QStringView Text;

    bool Is(QLatin1String word) const
    {
        return Kind == TTokenKind::Word && Text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool IsSign(char16_t sign) const { return Kind == TTokenKind::Sign && Text.front() == sign; }
    bool IsName() const { return Kind == TTokenKind::Word || Kind == TTokenKind::Name; }
    // A doubled closing character inside a name is one.
    QString Unquoted() const
    {
        if (Kind != TTokenKind::Name)
            return Text.toString();
        const QString closing = Text.front() == u'[' ? QStringLiteral("]") : QStringLiteral("\"");
        return Text.mid(1, std::max<qsizetype>(Text.size() - 2, 0))
            .toString()
            .replace(closing + closing, closing);
    }
};

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#' || c == u'@';
}

// The end of what begins with a quote or bracket; a doubled closing character stands for itself, and so does
// one behind a backslash in an escaped literal.
qsizetype endOfQuoted(QStringView sql, qsizetype begin, QChar closing, bool escaped = false)
{
    for (qsizetype at = begin + 1; at < sql.size(); ++at) {
        const bool doubled = sql[at] == closing && at + 1 < sql.size() && sql[at + 1] == closing;
        if (doubled || (escaped && sql[at] == u'\\'))
            ++at;
        else if (sql[at] == closing)
            return at + 1;
    }
    return sql.size();
}

// PostgreSQL's $$...$$ and $tag$...$tag$; the place itself where there is none.
qsizetype endOfDollarQuoted(QStringView sql, qsizetype begin)
{
    auto tagEnd = begin + 1;
    while (tagEnd < sql.size() && (sql[tagEnd].isLetterOrNumber() || sql[tagEnd] == u'_'))
        ++tagEnd;
    if (tagEnd >= sql.size() || sql[tagEnd] != u'$' || sql[begin + 1].isDigit())
        return begin;
    const auto tag = sql.mid(begin, tagEnd + 1 - begin);
    const auto end = sql.indexOf(tag, tagEnd + 1);
    return end < 0 ? sql.size() : end + tag.size();
}

qsizetype endOfLine(QStringView sql, qsizetype begin)
{
    const auto end = sql.indexOf(u'\n', begin);
    return end < 0 ? sql.size() : end + 1;
}

// Comments of the other kind nest, as they do on the server that hints are for.
qsizetype endOfComment(QStringView sql, qsizetype begin)
{
    int depth = 0;
    for (qsizetype at = begin; at + 1 < sql.size(); ++at) {
        const auto pair = sql.mid(at, 2);
        if (pair != u"/*" && pair != u"*/")
            continue;
        depth += pair == u"/*" ? 1 : -1;
        ++at;
        if (depth == 0)
            return at + 1;
    }
    return sql.size();
}

std::vector<TToken> tokensOf(QStringView sql)
{
    std::vector<TToken> tokens;
    const auto add = [&](TTokenKind kind, qsizetype begin, qsizetype end) {
        tokens.push_back({kind, begin, end, sql.mid(begin, end - begin)});
        return end;
    };
    for (qsizetype at = 0; at < sql.size();) {
        const QChar c = sql[at];
        if (c.isSpace())
            ++at;
        else if (sql.mid(at).startsWith(u"--"))
            at = endOfLine(sql, at);
        else if (sql.mid(at).startsWith(u"/*"))
            at = endOfComment(sql, at);
        else if (c == u'\'')
            at = add(TTokenKind::Literal, at, endOfQuoted(sql, at, c));
        else if (c == u'"')
            at = add(TTokenKind::Name, at, endOfQuoted(sql, at, c));
        else if (c == u'[')
            at = add(TTokenKind::Name, at, endOfQuoted(sql, at, u']'));
        else if (const auto end = c == u'$' ? endOfDollarQuoted(sql, at) : at; end != at)
            at = add(TTokenKind::Literal, at, end);
        else if (sql.mid(at).startsWith(u"E'", Qt::CaseInsensitive))
            at = add(TTokenKind::Literal, at, endOfQuoted(sql, at + 1, u'\'', true));
        else if (isWordCharacter(c)) {
            auto wordEnd = at;
            while (wordEnd < sql.size() && isWordCharacter(sql[wordEnd]))
                ++wordEnd;
            at = add(TTokenKind::Word, at, wordEnd);
        } else {
            at = add(TTokenKind::Sign, at, at + 1);
        }
    }
    return tokens;
}

bool isOneOf(const TToken &token, std::initializer_list<const char *> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *word) { return token.Is(QLatin1String(word)); });
}

bool isHint(const TToken &token)
{
    return isOneOf(token, {"nolock", "readuncommitted", "readcommitted", "readpast", "repeatableread",
                           "rowlock", "paglock", "tablock", "tablockx", "updlock", "xlock", "holdlock",
                           "serializable", "nowait", "snapshot"});
}

// What may follow a table without other rows coming in.
bool endsFrom(const TToken &token)
{
    return token.IsSign(u';') || isOneOf(token, {"where", "order", "limit", "offset", "fetch", "for"});
}

// The number of tokens of a hint clause that begins at `at`; 0 when there is none.
std::size_t hintClause(const std::vector<TToken> &tokens, std::size_t at)
{
    if (at + 3 >= tokens.size() || !tokens[at].Is(QLatin1String("with")) || !tokens[at + 1].IsSign(u'('))
        return 0;
    for (auto i = at + 2; i + 1 < tokens.size() && isHint(tokens[i]); i += 2) {
        if (tokens[i + 1].IsSign(u')'))
            return i + 2 - at;
        if (!tokens[i + 1].IsSign(u','))
            return 0;
    }
    return 0;
}

} // namespace

QString WithoutTableHints(const QString &sql)
{
    const auto tokens = tokensOf(sql);
    QString result;
    qsizetype copied = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const auto count = hintClause(tokens, i);
        if (count == 0)
            continue;
        result += QStringView(sql).mid(copied, tokens[i].Begin - copied);
        copied = tokens[i + count - 1].End;
        i += count - 1;
    }
    result += QStringView(sql).mid(copied);
    return result;
}

QString SingleTableOf(const QString &sql)
{
    const QString plain = WithoutTableHints(sql);
    const auto tokens = tokensOf(plain);
    std::size_t from = 0, selects = 0, froms = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (isOneOf(tokens[i],
                    {"join", "apply", "union", "intersect", "except", "group", "having", "distinct"}))
            return {};
        selects += tokens[i].Is(QLatin1String("select"));
        if (tokens[i].Is(QLatin1String("from"))) {
            from = i;
            ++froms;
        }
    }
    if (tokens.empty() || !tokens.front().Is(QLatin1String("select")) || selects != 1 || froms != 1)
        return {};

    auto at = from + 1;
    if (at >= tokens.size() || !tokens[at].IsName())
        return {};
    QString table = tokens[at].Text.toString();
    for (; at + 2 < tokens.size() && tokens[at + 1].IsSign(u'.') && tokens[at + 2].IsName(); at += 2)
        table += u'.' + tokens[at + 2].Text.toString();
    if (++at < tokens.size() && tokens[at].Is(QLatin1String("as")))
        ++at;
    if (at < tokens.size() && tokens[at].IsName() && !endsFrom(tokens[at]))
        ++at; // an alias
    return at >= tokens.size() || endsFrom(tokens[at]) ? table : QString();
}

std::vector<TNamePart> PartsOfName(const QString &name)
{
    std::vector<TNamePart> parts;
    for (const auto &token : tokensOf(name))
        if (token.IsName())
            parts.push_back({token.Unquoted(), token.Kind == TTokenKind::Name});
    return parts;
}

} // namespace Zelmar01
