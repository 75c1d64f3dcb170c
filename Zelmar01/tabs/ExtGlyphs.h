#pragma once

#include <Zelmar01/core/Colors.h>
#include <Zelmar01/tabs/ImageList.h>
#include <Zelmar01/tabs/TabTypes.h>

#include <QObject>
#include <QPixmap>
#include <QPointer>

class QWidget;

namespace Zelmar01 {

/// The glyphs of a tab control: a horizontal strip of NumGlyphs equal cells, and the images cut from it.
class TExtGlyphs : public QObject
{
    Q_OBJECT
public:
    /// `owner` is the tab control, which also owns the image list.
    explicit TExtGlyphs(QWidget *owner);
    ~TExtGlyphs() override;

    /// The strip. One made for a finer screen (QPixmap::devicePixelRatio) keeps its pixels there.
    const QPixmap &Glyph() const { return m_glyph; }
    void setGlyph(const QPixmap &glyph);
    /// Makes strip and number from the images of another list; nothing for null.
    void SetImageList(const TImageList *images);

    /// The number of cells, 0 at first, which shows none. Columns that are left over belong to no cell.
    int NumGlyphs() const { return m_numGlyphs; }
    void setNumGlyphs(int count);

    TExtGlyphPosition Position() const { return m_position; }
    void setPosition(TExtGlyphPosition position);

    /// The pixels between glyph and caption, 5 at first.
    int Spacing() const { return m_spacing; }
    void setSpacing(int spacing);

    /// The colour of the strip's pixels that are left out, clFuchsia at first.
    TColor TransparentColor() const { return m_transparentColor; }
    void setTransparentColor(TColor color);

    /// What is drawn: one image a cell.
    TImageList *ImageList() const { return m_imageList; }

    /// Gives notice of a change that asks for a repaint.
    void Changed();
    /// Cuts the strip again and gives notice of it.
    void ChangedGlyph();

signals:
    void OnChange(QObject *sender);
    void OnChangePicture(QObject *sender);

private:
    QPixmap m_glyph;
    QPointer<TImageList> m_imageList;
    int m_numGlyphs = 0;
    TExtGlyphPosition m_position = glPosLeft;
    int m_spacing = 5;
    TColor m_transparentColor = clFuchsia;
};

} // namespace Zelmar01
