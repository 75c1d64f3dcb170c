#include "TicketText.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Windows1252Text.h>

#include <QFile>

#include <cstdio>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

bool openInput(QFile &input, const QString &file)
{
    if (!file.isEmpty())
        return input.open(QIODevice::ReadOnly);
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    return input.open(stdin, QIODevice::ReadOnly);
}

QByteArray readBytes(const QString &file)
{
    QFile input(file);
    const bool opened = openInput(input, file);
    auto bytes = opened ? input.readAll() : QByteArray();
    if (opened && input.error() == QFileDevice::NoError)
        return bytes;
    const auto name = file.isEmpty() ? u"entrée standard"_s : file;
    throw EInOutError("Texte du ticket illisible",
                      {0, (name + " : " + input.errorString()).toStdString(), {}});
}

// The length of the well-formed sequence at the start of `text`; 0 when there is none.
qsizetype sequenceLength(QByteArrayView text)
{
    struct TForm
    {
        unsigned char FirstLead, LastLead, FirstSecond, LastSecond;
        qsizetype Length;
    };
    // The second byte excludes overlong forms, surrogates and what lies beyond U+10FFFF.
    static constexpr TForm forms[] = {
        {0x00, 0x7F, 0, 0, 1},       {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
        {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
        {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
    };
    const auto within = [&](qsizetype at, unsigned char first, unsigned char last) {
        const auto byte = static_cast<unsigned char>(text[at]);
        return byte >= first && byte <= last;
    };
    for (const auto &form : forms) {
        if (!within(0, form.FirstLead, form.LastLead))
            continue;
        if (text.size() < form.Length || (form.Length > 1 && !within(1, form.FirstSecond, form.LastSecond)))
            return 0;
        for (qsizetype i = 2; i < form.Length; ++i)
            if (!within(i, 0x80, 0xBF))
                return 0;
        return form.Length;
    }
    return 0;
}

} // namespace

qsizetype FirstByteOutsideUtf8(QByteArrayView text)
{
    for (qsizetype at = 0; at < text.size();) {
        const auto length = sequenceLength(text.sliced(at));
        if (length == 0)
            return at;
        at += length;
    }
    return -1;
}

bool StandardInputIsTerminal()
{
#ifdef _WIN32
    return _isatty(_fileno(stdin)) != 0;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

QString ReadTicketText(const QString &file, bool isWindows1252)
{
    const auto bytes = readBytes(file);
    if (isWindows1252)
        return FromWindows1252({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (const auto at = FirstByteOutsideUtf8(bytes); at >= 0)
        throw EConvertError(
            u"Le texte n'est pas de l'UTF-8 : octet %1 (hexa) au décalage %2 ; est-ce du windows-1252 "
            "(--encoding windows-1252) ?"_s.arg(static_cast<unsigned char>(bytes[at]), 2, 16, QChar(u'0'))
                .arg(at)
                .toStdString());
    auto text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    return text;
}

} // namespace Zelmar01
