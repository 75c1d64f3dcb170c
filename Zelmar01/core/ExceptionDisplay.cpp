#include <Zelmar01/core/ExceptionDisplay.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <cstdio>

namespace Zelmar01 {

namespace {

TExceptionDisplay &display()
{
    static TExceptionDisplay current;
    return current;
}

void writeToStandardError(const std::exception &exception)
{
    std::fprintf(stderr, "%s\n", exception.what());
    if (const auto *cause = CauseOf(exception))
        std::fprintf(stderr, "%s\n", cause->Words().c_str());
}

} // namespace

TExceptionDisplay SetExceptionDisplay(TExceptionDisplay replacement)
{
    return std::exchange(display(), std::move(replacement));
}

void ShowException(const std::exception &exception)
{
    if (const auto show = display()) // a copy: it may replace itself
        show(exception);
    else
        writeToStandardError(exception);
}

void ShowUnknownException()
{
    ShowException(EInvalidOperation(Translate("Zelmar01", "Erreur de nature inconnue")));
}

} // namespace Zelmar01
