#pragma once

#include <QBrush>
#include <QEvent>

class QWidget;

namespace Zelmar01 {

// What controls take over from the form they stand on, and what stands for it here. This is the one table for
// the controls of all rooms:
//
//   Align, Anchors   TPlacement (core/Placement.h); they act where the parent has no layout
//   Constraints      minimumSize and maximumSize of QWidget
//   ParentFont       HasParentFont() and SetParentFont(), over the font of QWidget
//   ParentColor      GroundBehind(), and IGround for controls that paint a ground for their children
//   PopupMenu        the actions of QWidget, with the contextMenuPolicy ActionsContextMenu

/// A control that paints a ground of its own, on which its children lie.
class IGround
{
public:
    virtual QBrush Ground() const = 0;

protected:
    ~IGround() = default;
};

/// What a control that paints no ground lets through: the ground of the nearest ancestor that has one, which
/// is an IGround, a widget that fills its background, or the window.
QBrush GroundBehind(const QWidget &control);

/// The event that tells a control that the ground behind it has changed.
QEvent::Type GroundChange();

/// Tells the descendants of a control about its new ground. Those on an IGround of their own hear of it from
/// that one.
void TellGroundChanged(const QWidget &control);

/// Whether a control takes its font over from its parent.
bool HasParentFont(const QWidget &control);
/// Takes the font over from the parent, or keeps the one that the control has now.
void SetParentFont(QWidget &control, bool parentFont);

} // namespace Zelmar01
