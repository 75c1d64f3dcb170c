#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// How the parameters of a job become the arguments of its program, on every system alike and without a
/// shell: no variable, pattern, pipe or redirection means anything in them.
///
/// Blanks and tabs part arguments. Between two double quotes they do not, and the quotes themselves go away:
/// "a b" is one argument, "" an empty one. Within quotes, two quotes in a row are one that stays. Backslashes
/// are as they are, but in front of a quote: there each two of them are one, and an odd one makes the quote a
/// part of the argument. A quote that is never closed holds to the end. Single quotes are letters.
std::vector<std::u16string> SplitParameters(std::u16string_view parameters);

/// The parameters that are split into just these arguments.
std::u16string JoinParameters(const std::vector<std::u16string> &arguments);

} // namespace Zelmar01
