#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace Shop {

/// What a run without a user does in a user's place. Each raises an exception when it cannot.

[[noreturn]] void Fail(const QString &why);

/// The widget or other object of that name below a window.
template<class Object>
Object &Find(const QObject &window, const QString &name)
{
    auto *object = window.findChild<Object *>(name);
    if (!object)
        Fail(QStringLiteral("« %1 » manque sur la page").arg(name));
    return *object;
}

void Press(QWidget &widget, Qt::Key key);

/// Lets the windows work until something is so; `what` is for the case that it never comes.
void WaitUntil(const std::function<bool()> &isSo, const QString &what);

} // namespace Shop
