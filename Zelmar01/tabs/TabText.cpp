#include <Zelmar01/tabs/TabText.h>

#include <algorithm>
#include <limits>

namespace Zelmar01 {

namespace {

constexpr int boxMargin = 2;
constexpr int glyphMargin = 8;

int widthOf(const QString &line, const QFontMetrics &metrics)
{
    return metrics.horizontalAdvance(PlainCaption(line));
}

QString onOneLine(QString caption)
{
    return caption.replace(QLatin1String("\r\n"), QLatin1String(" "))
        .replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QLatin1Char('\r'), QLatin1Char(' '));
}

} // namespace

QString PlainCaption(const QString &caption)
{
    if (!caption.contains(QLatin1Char('&')))
        return caption;
    QString plain;
    plain.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == QLatin1Char('&') && ++i == caption.size())
            break;
        plain += caption[i];
    }
    return plain;
}

QChar AcceleratorOf(const QString &caption)
{
    for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != QLatin1Char('&'))
            continue;
        if (caption[++i] != QLatin1Char('&'))
            return caption[i].isSpace() ? QChar() : caption[i].toUpper();
    }
    return {};
}

QStringList WrappedCaption(const QString &caption, int width, const QFontMetrics &metrics)
{
    QStringList lines;
    auto text = caption;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    for (const auto &paragraph : text.split(QLatin1Char('\n'))) {
        if (widthOf(paragraph, metrics) <= width) {
            lines << paragraph;
            continue;
        }
        QString line;
        for (qsizetype at = 0; at < paragraph.size();) {
            auto end = at;
            while (end < paragraph.size() && paragraph[end] == QLatin1Char(' '))
                ++end;
            while (end < paragraph.size() && paragraph[end] != QLatin1Char(' '))
                ++end;
            const auto longer = line + paragraph.mid(at, end - at);
            if (!line.isEmpty() && widthOf(longer, metrics) > width) {
                lines << line;
                line = paragraph.mid(at, end - at).trimmed();
            } else {
                line = longer;
            }
            at = end;
        }
        lines << line;
    }
    return lines;
}

TCaptionLayout LayOutCaption(const TRect &rect, TPoint offset, const QString &caption, TAlignment alignment,
                             bool wordWrap, const QFontMetrics &metrics)
{
    const auto box = rect.Grown(-boxMargin, -boxMargin);
    auto textRect = box;
    textRect.Left += offset.X;
    textRect.Top += offset.Y;

    const auto texts =
        wordWrap ? WrappedCaption(caption, textRect.Width(), metrics) : QStringList(onOneLine(caption));
    std::vector<int> widths;
    for (const auto &text : texts)
        widths.push_back(widthOf(text, metrics));
    const int wholeHeight = static_cast<int>(texts.size()) * metrics.height();
    const int wholeWidth = *std::max_element(widths.begin(), widths.end());
    const int height = std::min(wholeHeight, textRect.Height());
    const int width = std::min(wholeWidth, textRect.Width());

    textRect.Top += (textRect.Height() - height) / 2;
    if (alignment == taCenter) {
        textRect.Left = box.Left + offset.X + (box.Width() - width - offset.X) / 2;
        textRect.Right = textRect.Left + width;
    }

    TCaptionLayout layout;
    layout.Box = textRect;
    layout.IsClipped = wholeHeight > height || wholeWidth > width;
    layout.GlyphCorner = {textRect.Left - offset.X, textRect.Top - offset.Y};
    for (std::size_t line = 0; line < widths.size(); ++line) {
        const int room = textRect.Width() - widths[line];
        const int shift = alignment == taCenter ? room / 2 : alignment == taRightJustify ? room : 0;
        const int left = textRect.Left + std::max(0, shift);
        const int top = textRect.Top + static_cast<int>(line) * metrics.height();
        layout.Lines.push_back(
            {texts[static_cast<qsizetype>(line)], {left, top, left + widths[line], top + metrics.height()}});
    }
    return layout;
}

TCaptionPlace PlaceCaption(const TTabContent &content)
{
    const bool vertical = IsVertical(content.Position);
    if (!content.HasGlyph)
        return vertical ? TCaptionPlace{{glyphMargin, 0}, taLeftJustify, false} : TCaptionPlace();
    if (content.IsDisabled)
        return {};
    if (content.GlyphPosition == glPosTop)
        return {{0, content.GlyphHeight + content.Spacing}, taCenter, true};
    const int besides = content.GlyphWidth + content.Spacing;
    return vertical ? TCaptionPlace{{besides + glyphMargin, 0}, taLeftJustify, true}
                    : TCaptionPlace{{besides, 0}, taCenter, true};
}

QSize ContentSize(const TTabContent &content, const QString &caption, bool wordWrap, int width,
                  const QFontMetrics &metrics)
{
    const auto place = PlaceCaption(content);
    const int room = width > 0 ? width - 2 * boxMargin - place.Offset.X : std::numeric_limits<int>::max();
    const auto lines = wordWrap ? WrappedCaption(caption, room, metrics) : QStringList(onOneLine(caption));
    QSize size(0, static_cast<int>(lines.size()) * metrics.height());
    for (const auto &line : lines)
        size.setWidth(std::max(size.width(), widthOf(line, metrics)));
    size += QSize(place.Offset.X, place.Offset.Y);
    if (!place.ShowsGlyph)
        return size;
    return content.GlyphPosition == glPosTop ? size.expandedTo({content.GlyphWidth, 0})
                                             : size.expandedTo({0, content.GlyphHeight});
}

TPoint PlaceGlyph(const TTabContent &content, const TRect &rect, TPoint captionsCorner)
{
    if (content.GlyphPosition == glPosTop)
        return {rect.Left + (rect.Width() - content.GlyphWidth) / 2, captionsCorner.Y};
    const int y = rect.Top + (rect.Height() - content.GlyphHeight) / 2;
    return {IsVertical(content.Position) ? rect.Left + glyphMargin : captionsCorner.X, y};
}

} // namespace Zelmar01
