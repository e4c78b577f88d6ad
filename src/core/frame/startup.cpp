#include "frame/startup.hpp"

#include <algorithm>
#include <filesystem>
#include <random>
#include <system_error>

#include "base/display_format.hpp"
#include "base/file_names.hpp"
#include "base/messages.hpp"
#include "base/split_csv.hpp"
#include "base/text.hpp"
#include "model/reference_tables.hpp"

namespace arborex {

std::string makeRunId(double fraction) {
    // Rounding a fraction just below 1 would give a seventh digit; the id stays six wide.
    const double value = std::clamp(fraction * 1000000.0, 0.0, 999999.0);
    return formatNumber(value, "000000");
}

std::string makeRunId() {
    std::random_device seed;
    std::mt19937 engine(seed());
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    return makeRunId(unit(engine));
}

// "-" always opens an option. "/" does too, unless the token goes on with further folders: an
// absolute path on a system whose paths begin with "/" is a project, not an option.
static bool isOption(const std::string& token) {
    if (token[0] == '-') return true;
    return token[0] == '/' && token.find('/', 1) == std::string::npos;
}

CommandLine parseCommandLine(const std::string& joinedArgs) {
    CommandLine result;
    std::vector<std::string> tokens;
    const int last = SplitCSV(trim(joinedArgs), ' ', tokens);
    for (int i = 1; i <= last; ++i) {
        const std::string token = trim(tokens[static_cast<std::size_t>(i)]);
        if (token.empty()) continue;  // runs of blanks split into empty fields
        if (isOption(token)) {
            if (toUpper(token.substr(1)) == "LOG") result.logMode = true;
            continue;
        }
        result.projectPath = token;
    }
    return result;
}

std::string joinArguments(const std::vector<std::string>& args) {
    std::string joined;
    for (const auto& arg : args) {
        if (!joined.empty()) joined += ' ';
        if (arg.find_first_of(" \"") == std::string::npos && !arg.empty()) {
            joined += arg;
            continue;
        }
        joined += '"';
        for (char c : arg) {
            if (c == '"') joined += '"';
            joined += c;
        }
        joined += '"';
    }
    return joined;
}

void dropMissingProject(Prompt& prompt, std::string& path) {
    if (path.empty() || fileExists(path)) return;
    prompt.tell("File Not Found!", "File not found: " + path, Icon::Exclamation);
    path.clear();
}

void LoadReferenceData(Model& m, Host& host) {
    const std::string& folder = m.Paths[ArborexFolder];
    LoadChoices(m.Ref, host, folder, true);
    LoadMessages(m.Messages, host, folder + "MESSAGES.DAT");
    LoadSpeciesV(m.Ref, host, folder + "SPECIESV.DAT");
    LoadSpeciesT(m.Ref, host, folder + "SPECIEST.DAT");
    loadPSYU(m.Ref, host, folder + "PSYU.DAT");
    SetAgeInc(m);
}

}  // namespace arborex
