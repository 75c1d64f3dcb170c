#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// Says a French text of the library, in UTF-8, in the language of the host; a text that it does not know
/// comes back as it is. `context` is "Zelmar01".
using TTranslation = std::function<std::string(const char *context, const char *text)>;

/// Replaces what translates the texts of the rooms without Qt and returns what did before; none leaves them
/// in French. An application with components needs no call: from its QCoreApplication on, their texts go
/// through Qt's translation like those of all other rooms.
TTranslation SetTranslation(TTranslation translation);

/// A text in the language of the host. Both arguments are literals, so that lupdate finds them.
std::string Translate(const char *context, const char *text);

/// `text` with %1 to %9 replaced by `values`. A number without a value stays as it is.
std::string Filled(std::string_view text, std::initializer_list<std::string_view> values);

/// What Translate() is called with later: marks the text of a table for lupdate and returns it unchanged.
constexpr const char *Translatable(const char *, const char *text)
{
    return text;
}

} // namespace Zelmar01
