#pragma once

#include <Zelmar01/core/Exceptions.h>

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// A UTF-8 text in the code page of Windows' ANSI calls; none when a character has no place there.
std::optional<std::string> AnsiText(const std::string &text);

/// What one of Windows' ANSI calls answered, in UTF-8.
std::string Utf8Text(const char *text);

/// The cause that a GetLastError() value stands for, met while working on `subject` (a port or a printer,
/// UTF-8). The reason is Windows' own, in French where Windows has it.
TSystemCause CauseFromWindows(DWORD code, const std::string &subject);

/// A name that cannot be handed to Windows' ANSI calls.
TSystemCause UnspeakableName(const std::string &name);

} // namespace Zelmar01
