#pragma once

#include <QByteArrayView>
#include <QString>

namespace Zelmar01 {

/// The text of a ticket: the bytes of a file, or of standard input when the name is empty, read as UTF-8 or
/// as Windows-1252. A byte order mark in front of UTF-8 is left out. Raises EInOutError for a file that
/// cannot be read and EConvertError for bytes that are not UTF-8.
QString ReadTicketText(const QString &file, bool isWindows1252);

/// Whether somebody types at standard input, so that reading it would wait for him.
bool StandardInputIsTerminal();

/// The place of the first byte that does not belong to well-formed UTF-8; -1 when all do.
qsizetype FirstByteOutsideUtf8(QByteArrayView text);

} // namespace Zelmar01
