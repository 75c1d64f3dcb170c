#pragma once

#include <Zelmar01/printing/PrinterCodes.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// The code file in which a shop keeps its control codes (extension ".PCC").
///
/// It is a sequence of lines of 75 bytes: 72 bytes of content, then "*", CR, LF. The first line begins with
/// "DosPrintControlCodes"; then, for each printer type but ptPlain, comes a type line ("#Epson" and dashes)
/// and a line a code: ":" and the decimal list in columns 2 to 51, the name of the code in columns 52 to 72.
/// The reader takes the list from columns 2 to 50 and the name from columns 50 to 64, so that a list of up to
/// 48 characters comes back exactly.

/// Where a code file is: a name without extension gets ".PCC", a name without directory is taken from
/// ApplicationDirectory().
std::filesystem::path CodeFilePath(const std::filesystem::path &name);

/// Merges the codes found in a code file into `codes`; codes that the file does not name keep their values.
/// A file that is missing, foreign, unreadable or being written by somebody changes nothing. Raises
/// EConvertError for a malformed list; what was read before it stays applied.
void LoadCodeFile(const std::filesystem::path &file, TPrinterCodes &codes);

/// A code that a saved file holds but that cannot be read from it again.
struct TUnreadableCode
{
    TPrinterType Type;
    std::string_view Name;
    /// Characters of its decimal list; beyond 48 the code's own line is passed over by the reader.
    std::size_t ListLength;
    /// Beyond 50 characters the line is longer than a line may be, and the lines behind it are lost as well.
    bool LosesRest;
};

/// Writes all code sets but ptPlain and returns the codes that cannot be read from the file again. The file
/// is written in place, under a lock. Raises EInOutError: "Vous n'avez pas les droits pour effectuer cette
/// opération " when the file cannot be created or is locked, "Disque plein." when it is written short; it is
/// then left as far as it was written.
std::vector<TUnreadableCode> SaveCodeFile(const std::filesystem::path &file, const TPrinterCodes &codes);

/// Writes one code line to an open file (a file descriptor of the C library). True when all of it was
/// written.
bool WriteCodeLine(int handle, std::string_view key, std::string_view code);

} // namespace Zelmar01
