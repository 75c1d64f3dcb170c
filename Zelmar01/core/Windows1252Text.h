#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Zelmar01 {

/// A text brought from the screen's characters to Windows-1252.
struct TWindows1252Text
{
    /// One byte a character; "?" where the code page has no place for it.
    std::string Bytes;
    /// The characters without a place, each once, in the order in which they were met; empty when all fit.
    QString Missing;
};

/// Brings a text to Windows-1252. An accent that stands as a character of its own behind its letter is first
/// joined with it, so that text typed or pasted on any system keeps its accents.
TWindows1252Text ToWindows1252(const QString &text);

/// The characters that the bytes stand for.
QString FromWindows1252(std::string_view bytes);

} // namespace Zelmar01
