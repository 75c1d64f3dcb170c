#include "FrenchParserTexts.h"

#include <array>
#include <string_view>

namespace Zelmar01 {

namespace {

struct TText
{
    std::string_view English;
    const char16_t *French;
};
constexpr std::array<TText, 8> texts{{
    {"Usage: %1", u"Utilisation : %1"},
    {"[options]", u"[options]"},
    {"Options:", u"Options :"},
    {"Arguments:", u"Arguments :"},
    {"Unknown option '%1'.", u"Option inconnue « %1 »."},
    {"Unknown options: %1.", u"Options inconnues : %1."},
    {"Missing value after '%1'.", u"Valeur manquante après « %1 »."},
    {"Unexpected value after '%1'.", u"Valeur de trop après « %1 »."},
}};

} // namespace

QString FrenchParserTexts::translate(const char *context, const char *source, const char *, int) const
{
    if (std::string_view(context) == "QCommandLineParser")
        for (const auto &text : texts)
            if (text.English == source)
                return QString::fromUtf16(text.French);
    return {};
}

} // namespace Zelmar01
