#pragma once

#include <QObject>
#include <QRect>
#include <QSize>

class QWidget;

namespace Zelmar01 {

/// Keeps a control at its place on a parent that has no layout: on one of its sides, filling what the others
/// leave, or at a fixed distance from some of its edges. Where the parent has a layout, the layout places the
/// control and this does nothing.
///
/// Controls on sides take their room one after the other in the order in which they are children of the
/// parent: those at the top first, then at the bottom, left, right, and last those that fill the rest.
class TPlacement : public QObject
{
    Q_OBJECT
public:
    enum TAlign { alNone, alTop, alBottom, alLeft, alRight, alClient, alCustom };
    Q_ENUM(TAlign)
    enum TAnchorKind { akLeft = 1, akTop = 2, akRight = 4, akBottom = 8 };
    Q_DECLARE_FLAGS(TAnchors, TAnchorKind)
    Q_FLAG(TAnchors)

    /// `control` owns the placement.
    explicit TPlacement(QWidget *control);

    /// alCustom is placed by the host, as alNone is, and never follows its anchors.
    TAlign Align() const { return m_align; }
    void setAlign(TAlign align);
    /// The edges of the parent to which a control of alNone keeps its distance when the parent changes its
    /// size. With two opposite ones it is stretched, with none of them it keeps its share of the room on both
    /// sides. Left and top at first.
    TAnchors Anchors() const { return m_anchors; }
    void setAnchors(TAnchors anchors);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *control() const;
    void follow();
    void keepDistance(const QSize &before, const QSize &now);
    static void alignChildren(const QWidget &form);

    QObject *m_followed = nullptr;
    TAlign m_align = alNone;
    TAnchors m_anchors = TAnchors(akLeft | akTop);
    QRect m_origin;       // where somebody else put the control,
    QSize m_formOfOrigin; // when the parent had this size
    QRect m_place;        // where this has put it since
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TPlacement::TAnchors)

} // namespace Zelmar01
