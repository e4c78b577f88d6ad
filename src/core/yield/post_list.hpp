#pragma once
// The message lists of a yield run: what the checks find before it and what the models say
// after it.

#include <functional>
#include <string>

namespace arborex {

// One line of a list: text with tabs between its parts, and the polygon it is about (-1 for a
// line about the project), which a click on the line brings up.
struct PostItem {
    std::string text;
    int polygon = -1;
    bool operator==(const PostItem&) const = default;
};

// Warnings and errors that a model's error file held.
struct ErrorCounts {
    int warnings = 0;
    int errors = 0;
    // n + " Warnings / " + n + " Errors"
    std::string label() const {
        return std::to_string(warnings) + " Warnings / " + std::to_string(errors) + " Errors";
    }
};

// Told the import's progress as its label shows it ("37%").
using ImportProgress = std::function<void(const std::string& label)>;

}  // namespace arborex
