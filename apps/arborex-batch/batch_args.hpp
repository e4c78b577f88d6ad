#pragma once
// The batch command line after its command word: operands and the flags a command allows.

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/prompt.hpp"

namespace arborex::batch {

// A command line that cannot be run as written; the text is the one-line reason.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct BatchOptions {
    std::vector<std::string> operands;
    bool json = false;                   // --json
    bool quiet = false;                  // --quiet
    Answer removeMapsheet = Answer::No;  // --remove-mapsheet yes|no
    int16_t version = 3226;              // --version 3226|200|111
    std::string dataFolder;              // --data DIR: the reference data, else the installed
    std::optional<int16_t> model;        // --model 0|1: a curve model, else the command's choice
    // A command's own flags as given, in order, each with its values as written (a switch's
    // value is empty, or what followed its "=").
    std::vector<std::pair<std::string, std::vector<std::string>>> own;
};

// A flag that one command reads itself: its name and how many words of value follow it. A
// switch (0 values) may still be written "--flag=yes" or "--flag=no".
struct OwnFlag {
    std::string_view name;
    int values = 0;
};

// Reads `args` (the words after the command) into options. A flag takes its value as the next
// word or after "=" ("--version 200", "--version=200"); "--" ends the flags. Throws UsageError
// for a flag not in `allowed` or `own`, a missing or bad value, or a flag given a value it takes
// none of.
BatchOptions parseOptions(const std::vector<std::string>& args,
                          std::initializer_list<std::string_view> allowed,
                          std::initializer_list<OwnFlag> own = {});

// The values of the last `name` among the command's own flags; nullptr when it was not given.
const std::vector<std::string>* ownFlagValues(const BatchOptions& options, std::string_view name);

// A switch among the command's own flags: given alone or as "yes" it is on, "no" or absent off;
// any other value throws UsageError.
bool switchGiven(const BatchOptions& options, const char* name);

}  // namespace arborex::batch
