#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

TTranslation &currentTranslation()
{
    static TTranslation translation;
    return translation;
}

} // namespace

TTranslation SetTranslation(TTranslation translation)
{
    return std::exchange(currentTranslation(), std::move(translation));
}

std::string Translate(const char *context, const char *text)
{
    const auto &translation = currentTranslation();
    return translation ? translation(context, text) : text;
}

std::string Filled(std::string_view text, std::initializer_list<std::string_view> values)
{
    std::string filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto number =
            text[at] == '%' && at + 1 < text.size() ? std::size_t(text[at + 1] - '1') : values.size();
        if (number < values.size()) {
            filled += values.begin()[number];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}

} // namespace Zelmar01
