#pragma once

#include <Zelmar01/tabs/Rect.h>

#include <QFont>
#include <QRectF>
#include <QStaticText>

#include <unordered_map>

class QPainter;

namespace Zelmar01 {

/// Draws lines of captions, whose glyphs are looked up once and kept: text is what takes longest in a tab.
class TCaptionPictures
{
public:
    /// Draws a line with the painter's font and pen, its top left corner at `place`. The character behind a
    /// "&" is underlined.
    void Draw(QPainter &painter, const QString &line, TPoint place);

private:
    struct TPicture
    {
        QFont Font;
        QStaticText Text;
        QRectF Underline; // seen from the text's top left corner; empty for none
    };
    static TPicture make(const QString &line, const QFont &font);

    std::unordered_multimap<std::size_t, std::pair<QString, TPicture>> m_pictures;
};

} // namespace Zelmar01
