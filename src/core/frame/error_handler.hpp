#pragma once
// The operation boundary. Core routines throw; the screen or command that started the work
// runs it through runGuarded, which logs each failure to "errorlog.txt" in the user's
// documents folder and lets the user retry the step, ignore it, or leave the section.

#include <exception>
#include <functional>
#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

// Logs the failure (date and time, number, routine, module) and shows the error screen.
// A log that cannot be written is passed over: the screen still shows.
ErrorChoice HandleError(Model& m, Host& host, int number, const std::string& detail,
                        const std::string& routine, const std::string& module);

// Runs `step` until it succeeds or the user leaves it. Returns true when the step completed,
// false after Ignore or Exit Section. Retry runs the whole step again.
bool runGuarded(Model& m, Host& host, const std::string& routine, const std::string& module,
                const std::function<void()>& step);

}  // namespace arborex
