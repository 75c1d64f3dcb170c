#include <Zelmar01/package/ComponentHolder.h>

#include <Zelmar01/core/WidgetBoxes.h>

#include <QEvent>
#include <QMetaMethod>
#include <QPainter>
#include <QStyle>

namespace Zelmar01 {

namespace {

constexpr int side = 32, margin = 4;

} // namespace

TComponentHolder::TComponentHolder(QWidget *parent) : QWidget(parent)
{
    UseMessageBoxes();
    setFixedSize(sizeHint());
    QWidget::setVisible(IsDesigning());
}

void TComponentHolder::hold(TComponent *component)
{
    m_component = component;
    // A form that is on screen already is not polished again.
    if (parentWidget() && parentWidget()->isVisible())
        component->Loaded();
}

void TComponentHolder::SetIcon(const QIcon &icon)
{
    m_icon = icon;
    update();
}

bool TComponentHolder::IsDesigning() const
{
    for (const auto *widget = parentWidget(); widget; widget = widget->parentWidget()) {
        if (widget->inherits("QDesignerFormWindowInterface"))
            return true;
    }
    return false;
}

QSize TComponentHolder::sizeHint() const
{
    return {side, side};
}

void TComponentHolder::setVisible(bool visible)
{
    QWidget::setVisible(visible && IsDesigning());
}

// A form designer makes a widget first and puts it on the form afterwards.
bool TComponentHolder::event(QEvent *event)
{
    if (event->type() == QEvent::ParentChange || event->type() == QEvent::Polish)
        QWidget::setVisible(IsDesigning());
    return QWidget::event(event);
}

void TComponentHolder::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), margin, margin);
    m_icon.paint(&painter, rect().adjusted(margin, margin, -margin, -margin));
}

void TComponentHolder::connectNotify(const QMetaMethod &signal)
{
    const auto *const meta = m_component ? m_component->metaObject() : nullptr;
    const int event = meta ? meta->indexOfSignal(signal.methodSignature()) : -1;
    // Below those are the signals that every object has.
    if (event >= TComponent::staticMetaObject.methodCount())
        connect(m_component, meta->method(event), this, signal, Qt::UniqueConnection);
}

} // namespace Zelmar01
