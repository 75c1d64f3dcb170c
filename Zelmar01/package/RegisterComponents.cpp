#include <Zelmar01/package/RegisterComponents.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

TComponentRegistrar &theRegistrar()
{
    static TComponentRegistrar registrar;
    return registrar;
}

} // namespace

TComponentRegistrar SetComponentRegistrar(TComponentRegistrar registrar)
{
    return std::exchange(theRegistrar(), std::move(registrar));
}

void RegisterComponents(const std::string &page, const std::vector<TComponentClass> &classes)
{
    if (!theRegistrar())
        throw EInvalidOperation(Translate("Zelmar01", "Aucun concepteur de fiches n'attend de composants"));
    theRegistrar()(page, classes);
}

} // namespace Zelmar01
