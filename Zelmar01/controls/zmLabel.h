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
public:
    /// No second text at all, one below and to the right, a staircase towards the light, or one away from it.
    enum TLabelEffect { leNone, leShadow, leRaised, leEngraved };
    Q_ENUM(TLabelEffect)

    explicit TzmLabel(QWidget *parent = nullptr);

    /// How many pixels the edge reaches beside the text, 2 at first; negative counts as 0.
    int Depth() const { return m_depth; }
    void setDepth(int depth);
    /// leEngraved at first.
    TLabelEffect LabelEffect() const { return m_effect; }
    void setLabelEffect(TLabelEffect effect);
    /// The colour of the edge, silver at first. Where it would come too near to that of the
    /// text, as on a dark desktop, a tone of the ground takes its place.
    TColor ShadowedColor() const { return m_shadowedColor; }
    void setShadowedColor(TColor color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintText(QPainter &painter) const override;

private:
    QColor shownShadowedColor() const { return m_shadowedColor.Resolved(palette()); }
    void resetDepth() { setDepth(2); }
    void resetLabelEffect() { setLabelEffect(leEngraved); }
    void resetShadowedColor() { setShadowedColor(clSilver); }
    QSize edge() const;

    int m_depth = 2;
    TLabelEffect m_effect = leEngraved;
    TColor m_shadowedColor = clSilver;
};

} // namespace Zelmar01
