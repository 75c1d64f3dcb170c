#pragma once

#include <Zelmar01/controls/ControlColors.h>
#include <Zelmar01/controls/GaugeGeometry.h>
#include <Zelmar01/core/Inherited.h>
#include <Zelmar01/core/Placement.h>

#include <QImage>
#include <QWidget>

namespace Zelmar01 {

/// A picture in memory that a control is painted into.
class TBltBitmap : public QImage
{
public:
    using QImage::QImage;

    /// Takes the size and the scale of another picture and becomes all of one opaque colour.
    void MakeLike(const QImage &pattern, const QColor &color);
};

/// Shows how far a value has come between a minimum and a maximum: a bar from left to right, or from the
/// bottom up, with the percentage over it.
///
/// It is painted when the whole percentage changes and not otherwise, at once, so that a loop that takes long
/// shows its progress without giving the event loop a turn. The procedures below the class drive it through
/// such a loop.
///
/// While a form is being loaded, which ends when the gauge is first polished (just before it is first shown),
/// at Loaded(), or at the first call of SetMinValue, SetMaxValue, SetProgress, StepBy, StepIt or one of the
/// procedures, Min, Max and Progress are kept as they come, in any order.
///
/// ForeColor and BackColor are always written to forms: what a form leaves out is the green on navy that a
/// gauge begins with, not the black on white that its properties are reset to elsewhere.
class TzmGauge : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Zelmar01::TPlacement::TAlign Align READ Align WRITE setAlign RESET resetAlign)
    Q_PROPERTY(Zelmar01::TPlacement::TAnchors Anchors READ Anchors WRITE setAnchors RESET resetAnchors)
    Q_PROPERTY(int Min READ Min WRITE setMin RESET resetMin)
    Q_PROPERTY(int Max READ Max WRITE setMax RESET resetMax)
    Q_PROPERTY(int Progress READ Progress WRITE setProgress)
    Q_PROPERTY(TzmGaugeKind Kind READ Kind WRITE setKind RESET resetKind)
    Q_PROPERTY(bool ShowText READ ShowText WRITE setShowText RESET resetShowText)
    Q_PROPERTY(TBorderStyle BorderStyle READ BorderStyle WRITE setBorderStyle RESET resetBorderStyle)
    Q_PROPERTY(QColor ForeColor READ shownForeColor WRITE setForeColor)
    Q_PROPERTY(QColor BackColor READ shownBackColor WRITE setBackColor)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont STORED false)
    Q_PROPERTY(QColor Font_Color READ shownFontColor WRITE setFont_Color RESET resetFont_Color)
public:
    enum TzmGaugeKind { gkHorizontalBar, gkVerticalBar };
    Q_ENUM(TzmGaugeKind)
    enum TBorderStyle { bsNone, bsSingle };
    Q_ENUM(TBorderStyle)

    explicit TzmGauge(QWidget *parent = nullptr);

    bool IsLoading() const { return m_loading; }
    void Loaded();

    /// The bounds, 0 and 100 at first. Setting one beyond the other raises EInvalidOperation; setting one
    /// beyond Progress takes Progress along.
    int Min() const { return m_min; }
    int Max() const { return m_max; }
    void SetMinValue(int value);
    void SetMaxValue(int value);
    /// The value between them; others are brought to the nearest bound.
    int Progress() const { return m_progress; }
    void SetProgress(int value);
    /// Adds to the value; a sum beyond the integers stops at the bound.
    void StepBy(int delta);
    void StepIt() { StepBy(1); }

    /// The writers that forms use; they differ from those above while the form is being loaded, and in a form
    /// designer, where errors are shown.
    void setMin(int value);
    void setMax(int value);
    void setProgress(int value);

    /// The percentage shown, cut to a whole number; 0 when Min and Max are the same.
    int GetPercentDone() const { return GaugePercent(m_min, m_max, m_progress); }

    TzmGaugeKind Kind() const { return m_kind; }
    void setKind(TzmGaugeKind kind);
    /// Whether the percentage is written over the bar, as it is at first.
    bool ShowText() const { return m_showText; }
    void setShowText(bool show);
    /// bsSingle, as at first, leaves one pixel of the back colour around the bar; no line is drawn.
    TBorderStyle BorderStyle() const { return m_borderStyle; }
    void setBorderStyle(TBorderStyle style);
    /// The colours of the bar, green at first, and of what is behind it, navy at first.
    TColor ForeColor() const { return m_foreColor; }
    void setForeColor(TColor color);
    TColor BackColor() const { return m_backColor; }
    void setBackColor(TColor color);
    /// The colour of the percentage, white at first; its font is the widget's, Arial of 14 points at first.
    TColor Font_Color() const { return m_fontColor; }
    bool ParentFont() const { return HasParentFont(*this); }
    void setParentFont(bool parentFont) { SetParentFont(*this, parentFont); }
    void setFont_Color(TColor color);

    /// The place on a parent without a layout (core/Placement.h).
    TPlacement::TAlign Align() const { return m_placement->Align(); }
    void setAlign(TPlacement::TAlign align) { m_placement->setAlign(align); }
    TPlacement::TAnchors Anchors() const { return m_placement->Anchors(); }
    void setAnchors(TPlacement::TAnchors anchors) { m_placement->setAnchors(anchors); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// Paints the gauge through a picture in memory. `rect` below is that of the bar, in pixels of the gauge.
    virtual void Paint();
    virtual void PaintAsBar(TBltBitmap &bitmap, const TGaugeRect &rect);
    virtual void PaintAsText(TBltBitmap &bitmap, const TGaugeRect &rect);

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    friend void FinirProgressBar(TzmGauge *gauge);

    void endLoading();
    bool isDesigning() const;
    void writeBound(int &member, int value, void (TzmGauge::*set)(int));
    int between(long long value) const;
    void moveTo(long long value);
    void boundMoved();
    template<class TValue>
    void change(TValue &member, TValue value);
    TGaugeRect bar(const TGaugeRect &rect) const;
    QColor textOn(TColor ground) const;

    QColor shownForeColor() const { return m_foreColor.Resolved(palette()); }
    QColor shownBackColor() const { return m_backColor.Resolved(palette()); }
    QColor shownFontColor() const { return m_fontColor.Resolved(palette()); }
    void resetAlign() { setAlign(TPlacement::alNone); }
    void resetAnchors() { setAnchors(TPlacement::akLeft | TPlacement::akTop); }
    void resetMin() { setMin(0); }
    void resetMax() { setMax(100); }
    void resetKind() { setKind(gkHorizontalBar); }
    void resetShowText() { setShowText(true); }
    void resetBorderStyle() { setBorderStyle(bsSingle); }
    void resetFont_Color() { setFont_Color(clWhite); }

    TPlacement *m_placement;
    int m_min = 0, m_max = 100, m_progress = 0;
    TzmGaugeKind m_kind = gkHorizontalBar;
    TBorderStyle m_borderStyle = bsSingle;
    bool m_showText = true, m_loading = true;
    TColor m_foreColor = clGreen, m_backColor = clNavy, m_fontColor = clWhite;
};

using TzmGaugeKind = TzmGauge::TzmGaugeKind;
using TBorderStyle = TzmGauge::TBorderStyle;
using enum TzmGauge::TzmGaugeKind;
using enum TzmGauge::TBorderStyle;

// A long loop: ParamJauge once, AfficherJauge at each step, FinirProgressBar or RazJauge at the end. Each
// lets the application take its pending messages before it returns, so anything may have happened by then:
// another start of the same loop, or the end of the gauge, which does no harm in here. Each does nothing for
// null.

/// From 0 to `count`, with the first step shown at once.
void ParamJauge(TzmGauge *gauge, int count);
/// One step.
void AfficherJauge(TzmGauge *gauge);
/// Back to an empty gauge from 0 to 100.
void RazJauge(TzmGauge *gauge);
/// The value becomes the maximum, but what is shown stays until the gauge is next painted.
void FinirProgressBar(TzmGauge *gauge);

} // namespace Zelmar01
