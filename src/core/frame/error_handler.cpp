#include "frame/error_handler.hpp"

#include <fstream>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "model/project_file.hpp"

namespace arborex {

ErrorChoice HandleError(Model& m, Host& host, int number, const std::string& detail,
                        const std::string& routine, const std::string& module) {
    try {
        std::ofstream log(m.Paths[UserDocuments] + "errorlog.txt", std::ios::app);
        if (log)
            log << formatDate(dateNow(), "yyyy-mm-dd hh:nn:ss") << "\t" << number << "\t" << routine
                << "\t" << module << "\r\n";
    } catch (...) {
        // Logging must never raise a second failure.
    }
    std::string message = errorText(number);
    if (!detail.empty()) message += " (" + detail + ")";
    FailureReport report{number, message, routine + " / " + module, {}};
    // A second failure inside the backup raises its own screen over this one.
    if (m.LastPoly >= 0)
        report.backup = [&m, &host] {
            runGuarded(m, host, "Saveas", "BASARBO", [&] { Saveas(m, host); });
        };
    return host.prompt.reportError(report);
}

bool runGuarded(Model& m, Host& host, const std::string& routine, const std::string& module,
                const std::function<void()>& step) {
    for (;;) {
        try {
            step();
            return true;
        } catch (...) {
            std::string detail;
            const int number = failureNumberOf(std::current_exception(), detail);
            if (HandleError(m, host, number, detail, routine, module) != ErrorChoice::Retry)
                return false;
        }
    }
}

}  // namespace arborex
