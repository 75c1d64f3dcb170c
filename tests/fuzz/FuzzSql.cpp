// Any text in the places of an SQL text where anything may stand: no crash, no hang, hints in it are left
// alone, and those behind it are found.

#include "Fuzz.h"

#include <Zelmar01/data/Decimal.h>
#include <Zelmar01/data/SqlText.h>

#include <QStringList>

#include <cstdlib>

using namespace Zelmar01;

namespace {

void require(bool promise)
{
    if (!promise)
        std::abort();
}

bool isSubsequence(const QString &part, const QString &whole)
{
    qsizetype at = 0;
    for (const auto c : whole)
        at += at < part.size() && part[at] == c;
    return at == part.size();
}

void asWhole(const QString &text)
{
    const auto plain = WithoutTableHints(text);
    require(isSubsequence(plain, text));
    require(plain == text ||
            (text.contains(u'(') && text.contains(QLatin1String("with"), Qt::CaseInsensitive)));
    const auto table = SingleTableOf(text);
    require(table.isEmpty() || !PartsOfName(table).empty());
}

QString doubled(QString text, QChar mark)
{
    return text.replace(mark, QString(2, mark));
}

// The text as one token, or as a comment.
QStringList hidden(const QString &text)
{
    auto comment = text;
    comment.remove(u'*').remove(u'/');
    auto line = text;
    line.remove(u'\n');
    return {u'\'' + doubled(text, u'\'') + u'\'',
            u'"' + doubled(text, u'"') + u'"',
            u'[' + doubled(text, u']') + u']',
            QStringLiteral("1/*") + comment + QStringLiteral("/*") + comment + QStringLiteral("*/*/"),
            QStringLiteral("1--") + line + u'\n',
            QStringLiteral("$q$") + QString(text).remove(u'$') + QStringLiteral("$q$")};
}

void asPart(const QString &text)
{
    for (const auto &part : hidden(text)) {
        const auto before = "select " + part + " from t ", after = " where a = " + part;
        require(WithoutTableHints(before + "WITH (NoLock, updlock)" + after) == before + after);
        require(SingleTableOf(before + "with(nolock)" + after) == u"t");
        require(SingleTableOf(before + after + " union select 1 from u").isEmpty());
    }
}

void asName(const QString &text)
{
    for (const auto &quoted : {u'"' + doubled(text, u'"') + u'"', u'[' + doubled(text, u']') + u']'}) {
        const auto parts = PartsOfName("dbo." + quoted);
        require(parts.size() == 2 && !parts[0].Quoted && parts[1].Quoted && parts[1].Text == text);
        require(SingleTableOf("select * from " + quoted) == quoted);
    }
    PartsOfName(text);
}

void asDecimal(const QString &text)
{
    if (const auto number = TDecimal::FromText(text)) {
        const auto again = TDecimal::FromText(number->ToText());
        require(again && *again == *number && again->ToText() == number->ToText());
    }
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const std::vector<std::string> seeds{
        "select * from article with (nolock) where id = ? order by 1",
        "SELECT a.[x]]y] FROM \"Mes articles\" AS a WITH ( NOLOCK, ROWLOCK ) -- with (nolock)\nWHERE b = "
        "'it''s'",
        "select 1 from a /* with /* (nolock) */ */ join b with (index(1))",
        "select $t$ from x with (nolock) $t$, E'\\'' from dbo.t for update",
        "-123456789.012345678",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    asWhole(text);
    asPart(text);
    asName(text);
    asDecimal(text);
    return 0;
}
