#pragma once

#include <Zelmar01/core/Colors.h>

#include <QFont>
#include <QObject>

namespace Zelmar01 {

/// The font of a kind of captions: a font, a colour and a notice of change.
class TTabFont : public QObject
{
    Q_OBJECT
public:
    explicit TTabFont(QObject *parent = nullptr) : QObject(parent) {}

    /// What of the font is not set follows the application's font.
    QFont Font() const;
    void setFont(const QFont &font);

    TColor Color() const { return m_color; }
    void setColor(TColor color);

    /// The size in pixels, as a negative number. Setting a positive one sets the height of a whole line; 0
    /// leaves the font as it is.
    int Height() const;
    void setHeight(int height);

    /// Copies font and colour; always gives notice.
    void Assign(const TTabFont &other);

    /// The parts that were set, and the way back to none.
    const QFont &SetParts() const { return m_font; }

signals:
    void OnChange(QObject *sender);

private:
    QFont m_font;
    TColor m_color = clWindowText;
};

} // namespace Zelmar01
