#pragma once

#include <Zelmar01/core/Colors.h>
#include <Zelmar01/core/Inherited.h>
#include <Zelmar01/core/Placement.h>

#include <QLabel>

namespace Zelmar01 {

/// A QLabel with a font colour and a place of its own: what the labels of this room have in common.
///
/// The caption is QLabel's text and is plain text unless another format is set; its place is QLabel's
/// alignment, across and down; width, height, tool tip and actions are the widget's. With ShowAccelChar an
/// ampersand underlines the character behind it, and Alt with that character goes to the label's buddy.
///
/// A fixed font colour on a ground of the desktop, or the reverse, is painted with as much contrast as a text
/// needs; the properties keep their values.
class TCustomLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(Zelmar01::TPlacement::TAlign Align READ Align WRITE setAlign RESET resetAlign)
    Q_PROPERTY(Zelmar01::TPlacement::TAnchors Anchors READ Anchors WRITE setAnchors RESET resetAnchors)
    Q_PROPERTY(QColor Color READ shownColor WRITE setColor RESET resetColor)
    Q_PROPERTY(QColor Font_Color READ shownFontColor WRITE setFont_Color RESET resetFont_Color)
    Q_PROPERTY(bool ParentColor READ ParentColor WRITE setParentColor)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont STORED false)
    Q_PROPERTY(bool ShowAccelChar READ ShowAccelChar WRITE setShowAccelChar)
    Q_PROPERTY(bool Transparent READ Transparent WRITE setTransparent)
public:
    explicit TCustomLabel(QWidget *parent = nullptr);

    /// The caption as it is read: without the ampersands that underline.
    QString PlainCaption() const;

    /// The place on a parent without a layout (core/Placement.h).
    TPlacement::TAlign Align() const { return m_placement->Align(); }
    void setAlign(TPlacement::TAlign align) { m_placement->setAlign(align); }
    TPlacement::TAnchors Anchors() const { return m_placement->Anchors(); }
    void setAnchors(TPlacement::TAnchors anchors) { m_placement->setAnchors(anchors); }

    /// The ground of a label that is not transparent; setting it ends ParentColor, with which it is the
    /// parent's.
    TColor Color() const { return m_color; }
    void setColor(TColor color);
    bool ParentColor() const { return m_parentColor; }
    void setParentColor(bool parentColor);
    bool Transparent() const { return m_transparent; }
    void setTransparent(bool transparent);

    /// Whether the font is the parent's (core/Inherited.h).
    bool ParentFont() const { return HasParentFont(*this); }
    void setParentFont(bool parentFont) { SetParentFont(*this, parentFont); }
    TColor Font_Color() const { return m_fontColor; }
    void setFont_Color(TColor color);

    bool ShowAccelChar() const { return m_showAccelChar; }
    void setShowAccelChar(bool show);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    // What RESET gives back: the presets of a descendant.
    virtual void resetAlign() { setAlign(TPlacement::alNone); }
    virtual void resetAnchors() { setAnchors(TPlacement::akLeft | TPlacement::akTop); }
    virtual void resetFont_Color() { setFont_Color(clBtnText); }

    /// The ground that the text is painted on, and a colour of the text as it is to be painted there.
    QColor ground() const;
    QColor readable(TColor color) const;
    /// The colour of the caption: the font colour, or that of the desktop for what is disabled.
    QColor captionColor() const;
    void paintCaption(QPainter &painter, const QColor &color, const QRect &place) const;
    /// Paints all of a plain caption.
    virtual void paintText(QPainter &painter) const;
    /// The room for the caption within the label, and what the caption takes of it.
    QRect captionRect() const;
    QRect captionBounds() const;

private:
    bool hasGround() const;
    int captionFlags() const;

    QColor shownColor() const { return m_color.Resolved(palette()); }
    QColor shownFontColor() const { return m_fontColor.Resolved(palette()); }
    void resetColor();

    TPlacement *m_placement;
    TColor m_color = clBtnFace, m_fontColor = clBtnText;
    bool m_parentColor = true, m_transparent = true, m_showAccelChar = true;
};

} // namespace Zelmar01
