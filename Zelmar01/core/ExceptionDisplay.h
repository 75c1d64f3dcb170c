#pragma once

#include <Zelmar01/core/Exceptions.h>

#include <exception>
#include <functional>
#include <utility>

namespace Zelmar01 {

/// Shows an exception to the user.
using TExceptionDisplay = std::function<void(const std::exception &)>;

/// Replaces the exception display and returns the one before. An empty function goes back to the default, a
/// line on standard error; a host with windows calls UseMessageBoxes() (core/WidgetBoxes.h) instead.
TExceptionDisplay SetExceptionDisplay(TExceptionDisplay display);

/// Hands an exception to the exception display.
void ShowException(const std::exception &exception);

/// The same for something thrown that is no std::exception.
void ShowUnknownException();

/// Runs a piece of work that the event loop called, where nothing may be thrown: what it raises goes to the
/// exception display. What the display itself raises is lost.
template<class Work>
void ShowingExceptions(Work &&work) noexcept
{
    try {
        try {
            std::forward<Work>(work)();
        } catch (const std::exception &exception) {
            ShowException(exception);
        } catch (...) {
            ShowUnknownException();
        }
    } catch (...) {
        return; // there is nobody left to tell
    }
}

} // namespace Zelmar01
