#include <Zelmar01/core/Inherited.h>

#include <QApplication>
#include <QWidget>

namespace Zelmar01 {

QBrush GroundBehind(const QWidget &control)
{
    const auto *last = &control;
    for (const auto *widget = control.parentWidget(); widget; widget = widget->parentWidget()) {
        if (const auto *ground = dynamic_cast<const IGround *>(widget))
            return ground->Ground();
        last = widget;
        if (widget->isWindow() || widget->autoFillBackground())
            break;
    }
    return last->palette().brush(last->isWindow() ? QPalette::Window : last->backgroundRole());
}

QEvent::Type GroundChange()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

void TellGroundChanged(const QWidget &control)
{
    for (auto *child : control.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow())
            continue;
        QEvent event(GroundChange());
        QApplication::sendEvent(child, &event);
        if (!dynamic_cast<const IGround *>(child))
            TellGroundChanged(*child);
    }
}

bool HasParentFont(const QWidget &control)
{
    return !control.testAttribute(Qt::WA_SetFont);
}

void SetParentFont(QWidget &control, bool parentFont)
{
    auto font = parentFont ? QFont() : control.font();
    if (!parentFont)
        font.setResolveMask(QFont::AllPropertiesResolved);
    control.setFont(font);
}

} // namespace Zelmar01
