#include "batch_args.hpp"

#include <algorithm>
#include <optional>

namespace arborex::batch {

namespace {

bool takesValue(std::string_view flag) {
    return flag == "--remove-mapsheet" || flag == "--version" || flag == "--data" ||
           flag == "--model";
}

Answer yesNo(const std::string& value) {
    if (value == "yes") return Answer::Yes;
    if (value == "no") return Answer::No;
    throw UsageError("--remove-mapsheet must be yes or no, not '" + value + "'");
}

int16_t fileVersion(const std::string& value) {
    for (int16_t version : {int16_t{3226}, int16_t{200}, int16_t{111}})
        if (value == std::to_string(version)) return version;
    throw UsageError("--version must be 3226, 200 or 111, not '" + value + "'");
}

int16_t curveModel(const std::string& value) {
    if (value == "0") return 0;
    if (value == "1") return 1;
    throw UsageError("--model must be 0 (VDYP) or 1 (TIPSY), not '" + value + "'");
}

void apply(BatchOptions& options, const std::string& flag, const std::string& value) {
    if (flag == "--json")
        options.json = true;
    else if (flag == "--quiet")
        options.quiet = true;
    else if (flag == "--remove-mapsheet")
        options.removeMapsheet = yesNo(value);
    else if (flag == "--version")
        options.version = fileVersion(value);
    else if (flag == "--data")
        options.dataFolder = value;
    else if (flag == "--model")
        options.model = curveModel(value);
}

}  // namespace

BatchOptions parseOptions(const std::vector<std::string>& args,
                          std::initializer_list<std::string_view> allowed,
                          std::initializer_list<OwnFlag> own) {
    BatchOptions options;
    bool flagsEnded = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& word = args[i];
        if (flagsEnded || word.size() < 2 || word[0] != '-') {
            options.operands.push_back(word);
            continue;
        }
        if (word == "--") {
            flagsEnded = true;
            continue;
        }
        std::string flag = word;
        std::optional<std::string> value;
        if (auto equals = word.find('='); equals != std::string::npos) {
            flag = word.substr(0, equals);
            value = word.substr(equals + 1);
        }
        const auto ownFlag =
            std::find_if(own.begin(), own.end(), [&](const OwnFlag& f) { return f.name == flag; });
        if (ownFlag != own.end()) {
            std::vector<std::string> values;
            if (value) values.push_back(*value);
            const std::size_t wanted = static_cast<std::size_t>(ownFlag->values);
            while (values.size() < wanted) {
                if (i + 1 >= args.size())
                    throw UsageError(flag + " needs " + std::to_string(wanted) +
                                     (wanted == 1 ? " value" : " values"));
                values.push_back(args[++i]);
            }
            options.own.emplace_back(flag, std::move(values));
            continue;
        }
        if (std::find(allowed.begin(), allowed.end(), flag) == allowed.end())
            throw UsageError("unknown option " + flag);
        if (takesValue(flag)) {
            if (!value) {
                if (i + 1 >= args.size()) throw UsageError(flag + " needs a value");
                value = args[++i];
            }
        } else if (value) {
            throw UsageError(flag + " takes no value");
        }
        apply(options, flag, value.value_or(""));
    }
    return options;
}

const std::vector<std::string>* ownFlagValues(const BatchOptions& options, std::string_view name) {
    const std::vector<std::string>* last = nullptr;
    for (const auto& [flag, values] : options.own)
        if (flag == name) last = &values;
    return last;
}

bool switchGiven(const BatchOptions& options, const char* name) {
    const auto* values = ownFlagValues(options, name);
    if (!values) return false;
    if (values->empty() || values->at(0) == "yes") return true;
    if (values->at(0) == "no") return false;
    throw UsageError(std::string(name) + " takes yes or no, not '" + values->at(0) + "'");
}

}  // namespace arborex::batch
