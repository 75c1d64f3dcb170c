#pragma once

#include <Zelmar01/controls/ControlColors.h>
#include <Zelmar01/controls/CustomLabel.h>

namespace Zelmar01 {

/// A label whose text looks engraved: large, navy, with a silver edge. For titles of forms.
class TzmLabel : public TCustomLabel
{
    Q_OBJECT
    Q_PROPERTY(int Depth READ Depth WRITE setDepth RESET resetDepth)
    Q_PROPERTY(TLabelEffect LabelEffect READ LabelEffect WRITE setLabelEffect RESET resetLabelEffect)
    Q_PROPERTY(QColor ShadowedColor READ shownShadowedColor WRITE setShadowedColor RESET resetShadowedColor)
    Q_PROPERTY(TBorderStyle BorderStyle READ BorderStyle WRITE setBorderStyle RESET resetBorderStyle)
    Q_PROPERTY(TEdges Edges READ Edges WRITE setEdges RESET resetEdges)
    Q_PROPERTY(bool Shadow READ Shadow WRITE setShadow RESET resetShadow)
public:
    /// No second text at all, one below and to the right, a staircase towards the light, or one away from it.
    enum TLabelEffect { leNone, leShadow, leRaised, leEngraved };
    Q_ENUM(TLabelEffect)
    /// The lines around the label: none, of one pixel, or of two.
    enum TBorderStyle { lbNone, lbSingle, lbThick };
    Q_ENUM(TBorderStyle)
    /// The sides that have such a line.
    enum TEdge { bLeft = 1, bTop = 2, bRight = 4, bBottom = 8 };
    Q_DECLARE_FLAGS(TEdges, TEdge)
    Q_FLAG(TEdges)

    explicit TzmLabel(QWidget *parent = nullptr);

    /// How many pixels the edge reaches beside the text, 2 at first; negative counts as 0.
    int Depth() const { return m_depth; }
    void setDepth(int depth);
    /// leEngraved at first.
    TLabelEffect LabelEffect() const { return m_effect; }
    void setLabelEffect(TLabelEffect effect);
    /// The colour of the edge, silver at first. Where it would come too near to that of the text, as on a
    /// dark desktop, a tone of the ground takes its place.
    TColor ShadowedColor() const { return m_shadowedColor; }
    void setShadowedColor(TColor color);

    /// lbThick at first, but on no side.
    TBorderStyle BorderStyle() const { return m_borderStyle; }
    void setBorderStyle(TBorderStyle style);
    TEdges Edges() const { return m_edges; }
    void setEdges(TEdges edges);
    /// Whether the label as a whole throws a shadow to the right and down.
    bool Shadow() const { return m_shadow; }
    void setShadow(bool shadow);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resetFont_Color() override { setFont_Color(clNavy); }
    void paintEvent(QPaintEvent *event) override;
    void paintText(QPainter &painter) const override;

private:
    QColor shownShadowedColor() const { return m_shadowedColor.Resolved(palette()); }
    void resetDepth() { setDepth(2); }
    void resetLabelEffect() { setLabelEffect(leEngraved); }
    void resetShadowedColor() { setShadowedColor(clSilver); }
    void resetBorderStyle() { setBorderStyle(lbThick); }
    void resetEdges() { setEdges({}); }
    void resetShadow() { setShadow(false); }
    QSize edge() const;
    void makeRoom();
    int lineWidth() const { return m_borderStyle; }

    int m_depth = 2;
    TLabelEffect m_effect = leEngraved;
    TColor m_shadowedColor = clSilver;
    TBorderStyle m_borderStyle = lbThick;
    TEdges m_edges;
    bool m_shadow = false;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(TzmLabel::TEdges)

} // namespace Zelmar01
