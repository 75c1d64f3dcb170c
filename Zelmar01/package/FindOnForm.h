#pragma once

#include <QWidget>

namespace Zelmar01 {

/// The component of that object name on the form that `from` stands on. Of several forms within each other
/// the nearest one that has it is meant; null when there is none, and for an empty name.
template<class TFormClass>
TFormClass *FindOnForm(const QWidget *from, const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    for (const auto *form = from->parentWidget(); form; form = form->parentWidget()) {
        if (auto *const found = form->findChild<TFormClass *>(name))
            return found;
    }
    return nullptr;
}

} // namespace Zelmar01
