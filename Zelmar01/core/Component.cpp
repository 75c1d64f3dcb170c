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

} // namespace

// Stands here because a program that has a component has this file linked.
Q_COREAPP_STARTUP_FUNCTION(translateByQt)

TComponent::TComponent(QObject *owner) : QObject(owner)
{
    m_loading = owner && owner->isWidgetType() && !owner->property("visible").toBool();
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
    if (m_loading && watched == parent() &&
        (event->type() == QEvent::Polish || event->type() == QEvent::Show))
        ShowingExceptions([this] { Loaded(); });
    return QObject::eventFilter(watched, event);
}

} // namespace Zelmar01
