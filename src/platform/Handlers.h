#pragma once

#include <functional>
#include <utility>

#include "platform/Application.h"
#include "platform/Failure.h"

namespace larder {

// Calls a handler of the program from within an event of the system. A failure that the handler
// lets through ends there: an exception must not travel through the system's event loop.
template <typename Result, typename... Parameters, typename... Arguments>
Result Fire(const std::function<Result(Parameters...)>& handler, Arguments&&... arguments) {
    if (!handler) return Result();
    const auto held = handler;  // the handler may replace itself
    try {
        return held(std::forward<Arguments>(arguments)...);
    } catch (const Failure& failure) {
        Application::ReportFailure(failure);
        return Result();
    }
}

}  // namespace larder
