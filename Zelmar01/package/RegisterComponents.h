#pragma once

#include <QWidget>

#include <functional>
#include <string>
#include <vector>

namespace Zelmar01 {

/// A class of components, as a form designer needs it to offer it and to make its objects.
struct TComponentClass
{
    std::string Name;   ///< in the list of components, such as "TDosPrint"
    std::string Header; ///< what code includes for it, such as "Zelmar01/printing/DosPrint.h"
    /// The class whose objects stand on forms: the component's own, or that of its holder.
    const QMetaObject *FormClass;
    /// Makes one; `parent` owns it.
    QWidget *(*Create)(QWidget *parent);
};

/// The describing values of a control, from its class alone.
template<class TControl>
TComponentClass ControlClass(const char *name, const char *header)
{
    return {name, header, &TControl::staticMetaObject,
            [](QWidget *parent) -> QWidget * { return new TControl(parent); }};
}

/// Takes the classes that are registered for a page of a palette.
using TComponentRegistrar =
    std::function<void(const std::string &page, const std::vector<TComponentClass> &classes)>;

/// Sets who takes them and returns who did before. A form designer sets itself while it calls the Register
/// procedures (Units.h).
TComponentRegistrar SetComponentRegistrar(TComponentRegistrar registrar);

/// Offers classes for a page of the palette. Raises EInvalidOperation when nobody takes them.
void RegisterComponents(const std::string &page, const std::vector<TComponentClass> &classes);

} // namespace Zelmar01
