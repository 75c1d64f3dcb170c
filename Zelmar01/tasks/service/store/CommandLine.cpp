#include <Zelmar01/tasks/service/store/CommandLine.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

bool isBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

} // namespace

std::vector<std::u16string> SplitParameters(std::u16string_view parameters)
{
    std::vector<std::u16string> arguments;
    bool inArgument = false, quoted = false;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const char16_t c = parameters[i];
        if (isBlank(c) && !quoted) {
            inArgument = false;
            continue;
        }
        if (!inArgument) {
            arguments.emplace_back();
            inArgument = true;
        }
        auto &argument = arguments.back();
        if (c == u'\\') {
            const auto end = std::min(parameters.find_first_not_of(u'\\', i), parameters.size());
            const auto count = end - i;
            const bool beforeQuote = end < parameters.size() && parameters[end] == u'"';
            argument.append(beforeQuote ? count / 2 : count, u'\\');
            i = end - 1;
            if (beforeQuote && count % 2 != 0) {
                argument += u'"';
                ++i;
            }
        } else if (c != u'"') {
            argument += c;
        } else if (quoted && i + 1 < parameters.size() && parameters[i + 1] == u'"') {
            argument += u'"';
            ++i;
        } else {
            quoted = !quoted;
        }
    }
    return arguments;
}

std::u16string JoinParameters(const std::vector<std::u16string> &arguments)
{
    std::u16string parameters;
    for (const auto &argument : arguments) {
        if (!parameters.empty())
            parameters += u' ';
        const bool quoted = argument.empty() || argument.find_first_of(u" \t") != argument.npos;
        if (quoted)
            parameters += u'"';
        std::size_t backslashes = 0;
        for (const char16_t c : argument) {
            // Those in front of a quote count twice, and one more makes the quote a letter.
            if (c == u'"')
                parameters.append(backslashes + 1, u'\\');
            backslashes = c == u'\\' ? backslashes + 1 : 0;
            parameters += c;
        }
        if (quoted) {
            parameters.append(backslashes, u'\\');
            parameters += u'"';
        }
    }
    return parameters;
}

} // namespace Zelmar01
