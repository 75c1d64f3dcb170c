#include "CaptionPictures.h"

#include <Zelmar01/tabs/TabText.h>

#include <QHash>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace Zelmar01 {

namespace {

// More lines than a control shows; beyond, captions have changed again and again.
constexpr std::size_t mostPictures = 256;

// The place of the character behind "&" in the text without marks, -1 for none.
qsizetype markedIn(const QString &line)
{
    qsizetype marks = 0;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        if (line[i] != QLatin1Char('&'))
            continue;
        if (line[i + 1] != QLatin1Char('&'))
            return i - marks;
        ++marks;
        ++i;
    }
    return -1;
}

} // namespace

TCaptionPictures::TPicture TCaptionPictures::make(const QString &line, const QFont &font)
{
    const auto plain = PlainCaption(line);
    TPicture picture{font, QStaticText(plain), {}};
    picture.Text.setTextFormat(Qt::PlainText);
    picture.Text.setPerformanceHint(QStaticText::AggressiveCaching);
    picture.Text.prepare({}, font);
    if (const auto marked = markedIn(line); marked >= 0) {
        QTextLayout layout(plain, font);
        layout.beginLayout();
        const auto whole = layout.createLine();
        layout.endLayout();
        const QFontMetricsF metrics(font);
        const double from = whole.cursorToX(static_cast<int>(marked));
        const double to = whole.cursorToX(static_cast<int>(marked) + 1);
        picture.Underline = QRectF(qMin(from, to), metrics.ascent() + metrics.underlinePos(), qAbs(to - from),
                                   qMax(1.0, metrics.lineWidth()));
    }
    return picture;
}

void TCaptionPictures::Draw(QPainter &painter, const QString &line, TPoint place)
{
    const auto font = painter.font();
    const auto key = qHash(line);
    const auto [first, last] = m_pictures.equal_range(key);
    auto found = std::find_if(first, last, [&](const auto &entry) {
        return entry.second.second.Font == font && entry.second.first == line;
    });
    if (found == last) {
        if (m_pictures.size() >= mostPictures)
            m_pictures.clear();
        found = m_pictures.emplace(key, std::pair(line, make(line, font)));
    }
    const auto &picture = found->second.second;
    painter.drawStaticText(place.X, place.Y, picture.Text);
    if (!picture.Underline.isEmpty())
        painter.fillRect(picture.Underline.translated(place.X, place.Y), painter.pen().color());
}

} // namespace Zelmar01
