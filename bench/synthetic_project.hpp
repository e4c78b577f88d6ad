#pragma once
// A synthetic project for benchmarks: `polygons` polygons with full curves at the default grids
// (301 VDYP rows with their species mix, 36 TIPSY rows) that rise with age and differ from
// polygon to polygon, so that no row is a copy of its neighbour. Curves pass 150 m3/ha and
// 15 cm at ordinary ages, so that harvest-age searches walk as far as they do on real stands.

#include <optional>
#include <string>

#include "frame/host.hpp"
#include "model/model.hpp"

namespace arborex::bench {

// Every polygon's existing and future management.
enum class Managements {
    NaturalThenManaged,  // VDYP now, TIPSY later: two curves a polygon
    Alternating,         // VDYP throughout and TIPSY throughout, by turns: one curve a polygon
};

Model syntheticProject(int polygons, Managements managements);

// A prompt that always takes the default button and never chooses a file.
class DefaultPrompt final : public Prompt {
public:
    Answer ask(const std::string&, const std::string&, Buttons, Answer defaultAnswer,
               Icon) override {
        return defaultAnswer;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string& proposed) override {
        return proposed;
    }
    std::optional<FileChoice> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> saveFile(const FileRequest&) override { return std::nullopt; }
};

struct QuietHost {
    DefaultPrompt prompt;
    SilentStatus status;
    MemorySettings settings;
    HostViews views;
    ProcessEnvironment system;
    Host host{prompt, status, settings, views, system};
};

}  // namespace arborex::bench
