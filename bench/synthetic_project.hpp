#pragma once
// A synthetic project for benchmarks: `polygons` polygons with full curves at the default grids
// (301 VDYP rows with their species mix, 36 TIPSY rows) that rise with age and differ from
// polygon to polygon, so that no row is a copy of its neighbour. Curves pass 150 m3/ha and
// 15 cm at ordinary ages, so that harvest-age searches walk as far as they do on real stands.

#include <optional>
#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex::bench {

// Every polygon's existing and future management.
enum class Managements {
    NaturalThenManaged,  // VDYP now, TIPSY later: two curves a polygon
    Alternating,         // VDYP throughout and TIPSY throughout, by turns: one curve a polygon
    // A woodlot-like mix that a whole calculation can run on, with curves from the growth
    // generator and harvest ages worked out as the yield run leaves them (see below).
    MixedForest,
};

// NaturalThenManaged and Alternating fill the curves and harvest ages only. MixedForest is ready
// for a calculation: stands of 2 to 60 ha (one block each at the default SPLIT) and an even
// spread of ages, in a fixed mix by polygon number out of every 20:
//   9  natural (VDYP), planted after harvest (TIPSY); a third of them with about 3% of road
//   2  the same with a commercial thin on the TIPSY curve, taken in every later rotation
//   2  natural, partial cut (SILVI 1, 40% removed, re-entry after 30 years), some with roads
//   3  managed (TIPSY) now and later, aged 1 to 60
//   2  managed with the commercial thin still to come in this rotation and in every later one
//   1  not commercial (NC), cleared within 15 years, then planted; some with roads
//   1  not satisfactorily restocked (NSR), restocking within 5 years, then planted
// The thinned TIPSY curves hold the thin as the TIPSY import leaves it: the grid row at the thin
// age is the stand after the thin, and TIPSYCACHE has the thin age, the whole m3/ha removed and
// the tenths before and after. Stands of one species mix and site index (4 mixes, site index
// 16 to 24) share their curves' values, though each polygon keeps its own rows. Curves are current
// (YIELDSTATE 3 where used), harvest ages come from UpdateYields with HAR1 and HAR2 at -1, and the
// project regenerates 2 years after a cut. Every call with the same arguments gives the same
// project.
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
