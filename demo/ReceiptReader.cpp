#include "ReceiptReader.h"

#include "ByteText.h"

#include <Zelmar01/core/Windows1252.h>
#include <Zelmar01/printing/Conversions.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

constexpr char escape = '\x1b';

// The bits of the print mode that ESC "!" sets.
constexpr unsigned char boldMode = 0x08;
constexpr unsigned char wideMode = 0x20;
constexpr unsigned char underlineMode = 0x80;

struct TCommand
{
    char Name;
    std::size_t Parameters;
};
// What ESC begins. Character font, station, line spacing, code page and backward feed change nothing here.
constexpr std::array<TCommand, 15> commands{{{'@', 0},
                                             {'!', 1},
                                             {'a', 1},
                                             {'E', 1},
                                             {'-', 1},
                                             {'d', 1},
                                             {'i', 0},
                                             {'m', 0},
                                             {'p', 3},
                                             {'M', 1},
                                             {'c', 2},
                                             {'3', 1},
                                             {'R', 1},
                                             {'t', 1},
                                             {'e', 1}}};

class Reader
{
public:
    Reader(std::string_view bytes, const TCharacterSet &characters) : m_rest(bytes), m_characters(characters)
    {
    }

    QList<TReceiptLine> Read()
    {
        while (!m_rest.empty())
            takeNext();
        endLine(false);
        return std::move(m_lines);
    }

private:
    void takeNext()
    {
        const auto byte = static_cast<unsigned char>(m_rest.front());
        if (m_rest.front() == escape) {
            takeCommand();
            return;
        }
        m_rest.remove_prefix(1);
        switch (byte) {
        case '\n':
            endLine(true);
            break;
        case '\r':
        case '\0':
            break;
        case '\a':
            mark(TReceiptMark::Drawer);
            break;
        case '\f':
            mark(TReceiptMark::PageEnd);
            break;
        default:
            if (const auto name = ControlName(byte); name.isEmpty())
                print(m_characters[byte]);
            else
                mark(TReceiptMark::Unknown, name);
        }
    }

    void takeCommand()
    {
        const auto *command =
            m_rest.size() < 2
                ? commands.end()
                : std::ranges::find_if(commands, [&](const TCommand &c) { return c.Name == m_rest[1]; });
        if (command == commands.end() || m_rest.size() < 2 + command->Parameters) {
            auto bytes = u"ESC"_s;
            if (m_rest.size() > 1) {
                const auto byte = static_cast<unsigned char>(m_rest[1]);
                const auto name = ControlName(byte);
                bytes += u' ' + (name.isEmpty() ? QString(m_characters[byte]) : name);
            }
            mark(TReceiptMark::Unknown, bytes);
            m_rest.remove_prefix(std::min<std::size_t>(m_rest.size(), 2));
            return;
        }
        const auto parameter = command->Parameters ? static_cast<unsigned char>(m_rest[2]) : 0U;
        m_rest.remove_prefix(2 + command->Parameters);
        obey(command->Name, parameter);
    }

    void obey(char command, unsigned parameter)
    {
        switch (command) {
        case '@':
            m_mode = {};
            m_alignment = Qt::AlignLeft;
            break;
        case '!':
            m_mode.Bold = parameter & boldMode;
            m_mode.Wide = parameter & wideMode;
            m_mode.Underlined = parameter & underlineMode;
            break;
        case 'E':
            m_mode.Bold = parameter & 1U;
            break;
        case '-':
            m_mode.Underlined = parameter & 3U;
            break;
        case 'a': // 0 to 2, or their digits
            m_alignment = parameter % '0' == 1   ? Qt::AlignHCenter
                          : parameter % '0' == 2 ? Qt::AlignRight
                                                 : Qt::AlignLeft;
            break;
        case 'd':
            endLine(false);
            for (unsigned line = 0; line < parameter; ++line)
                endLine(true);
            break;
        case 'i':
        case 'm':
            mark(TReceiptMark::Cut);
            break;
        case 'p':
            mark(TReceiptMark::Drawer);
            break;
        default:
            break;
        }
    }

    void print(QChar character)
    {
        if (m_line.Columns() + (m_mode.Wide ? 2 : 1) > PaperColumns)
            endLine(true);
        const auto sameMode = [&](const TReceiptSpan &span) {
            return span.Bold == m_mode.Bold && span.Wide == m_mode.Wide &&
                   span.Underlined == m_mode.Underlined;
        };
        if (m_line.Spans.isEmpty() || !sameMode(m_line.Spans.last()))
            m_line.Spans.append(m_mode);
        m_line.Spans.last().Text += character;
    }

    void endLine(bool evenEmpty)
    {
        if (!evenEmpty && m_line.Spans.isEmpty())
            return;
        m_line.Alignment = m_alignment;
        m_lines.append(std::exchange(m_line, {}));
    }

    void mark(TReceiptMark what, const QString &text = {})
    {
        endLine(false);
        TReceiptLine line;
        line.Mark = what;
        if (!text.isEmpty())
            line.Spans.append({text});
        m_lines.append(std::move(line));
    }

    std::string_view m_rest;
    const TCharacterSet &m_characters;
    QList<TReceiptLine> m_lines;
    TReceiptLine m_line;
    TReceiptSpan m_mode;
    Qt::Alignment m_alignment = Qt::AlignLeft;
};

} // namespace

int TReceiptLine::Columns() const
{
    int columns = 0;
    for (const auto &span : Spans)
        columns += static_cast<int>(span.Text.size()) * (span.Wide ? 2 : 1);
    return columns;
}

QString TReceiptLine::Text() const
{
    QString text;
    for (const auto &span : Spans)
        text += span.Text;
    return text;
}

TCharacterSet CharacterSetFor(int conversion)
{
    TCharacterSet characters;
    characters.fill(u'?');
    const auto show = [&](int from, int to, bool keepOnly) {
        for (int value = from; value < to; ++value) {
            const char byte = static_cast<char>(value);
            const auto sent = Zelmar01::ConvertText(conversion, {&byte, 1});
            if (!sent.empty() && (!keepOnly || sent.front() == byte))
                characters[static_cast<unsigned char>(sent.front())] = QChar(
                    static_cast<char16_t>(Zelmar01::CharFromWindows1252(static_cast<unsigned char>(byte))));
        }
    };
    show(0, 256, false);
    show(0, 128, true); // a letter of ASCII that keeps its place is that letter
    return characters;
}

QList<TReceiptLine> ReadReceipt(std::string_view bytes, const TCharacterSet &characters)
{
    return Reader(bytes, characters).Read();
}

} // namespace Shop
