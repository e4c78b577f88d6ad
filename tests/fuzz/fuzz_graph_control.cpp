// Coverage-guided fuzzing of the graph control file reader. A crash, a sanitizer report, an
// escaped exception, a hang or a series whose values do not match its graph's x labels is a
// finding.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "report/graph_control_reader.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const arborex::GraphControl control =
        arborex::readGraphControl(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const arborex::ControlGraph& g : control.graphs)
        for (const arborex::ControlSeries& s : g.series)
            if (s.values.size() != g.xLabels.size()) std::abort();
    return 0;
}
