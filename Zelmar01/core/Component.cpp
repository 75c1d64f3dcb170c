#include <Zelmar01/core/Component.h>

#include <Zelmar01/core/ExceptionDisplay.h>

#include <Zelmar01/core/Translation.h>

#include <QCoreApplication>
#include <QEvent>
#include <QVariant>

namespace Zelmar01 {

namespace {

void translateByQt()
{
    if (auto before = SetTranslation([](const char *context, const char *text) {
            return QCoreApplication::translate(context, text).toStdString();
        }))
        SetTranslation(std::move(before));
}

bool isBeingBuilt(const QObject *owner)
{
    return owner && owner->isWidgetType() && !owner->property("visible").toBool();
}

bool isRemoval(const QEvent *event, const QObject *child)
{
    return event->type() == QEvent::ChildRemoved && static_cast<const QChildEvent *>(event)->child() == child;
}

} // namespace

// Stands here because a program that has a component has this file linked.
Q_COREAPP_STARTUP_FUNCTION(translateByQt)

TComponent::TComponent(QObject *owner) : QObject(owner)
{
    m_loading = isBeingBuilt(owner);
    if (m_loading)
        owner->installEventFilter(this);
}

void TComponent::Loaded()
{
    if (m_loading && parent())
        parent()->removeEventFilter(this);
    m_loading = false;
}

bool TComponent::eventFilter(QObject *watched, QEvent *event)
{
    // A form that had been shown and hidden before the component came is polished already: Show ends it then.
    if (m_loading && watched == parent()) {
        if (event->type() == QEvent::Polish || event->type() == QEvent::Show) {
            ShowingExceptions([this] { Loaded(); });
        } else if (isRemoval(event, this)) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(this, &TComponent::followOwner, Qt::QueuedConnection);
        }
    }
    return QObject::eventFilter(watched, event);
}

// The component has been given to another owner, which is not known before the event loop runs.
void TComponent::followOwner()
{
    if (!m_loading)
        return;
    if (isBeingBuilt(parent()))
        parent()->installEventFilter(this);
    else
        ShowingExceptions([this] { Loaded(); });
}

} // namespace Zelmar01
