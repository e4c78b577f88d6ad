// Coverage-guided fuzzing of the project reader: every input is written to a file and loaded.
// A crash, a sanitizer report, an escaped exception, a hang or a model whose arrays no longer
// fit its counts is a finding.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/project_open.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"

namespace {

const std::string& inputPath() {
    static const std::string path =
        "/tmp/fuzz_load_arx_" + std::to_string(static_cast<long>(getpid())) + ".arx";
    return path;
}

bool arraysFitCounts(const arborex::Model& m) {
    const std::size_t count = m.LastPoly >= 0 ? static_cast<std::size_t>(m.LastPoly) + 1 : 1;
    const int n = static_cast<int>(count);
    return m.LastPoly >= -1 && m.Poly.size() == count && m.PolyC.size() == count &&
           m.PolyM.size() == count && m.HarvAge.size() == count && m.VYield.polygonCount() == n &&
           m.VMix.polygonCount() == n && m.TYield.polygonCount() == n &&
           m.VYield.rowCount() == m.Settings.YieldRows[0] + 1 &&
           m.VMix.rowCount() == m.Settings.YieldRows[0] + 1 &&
           m.TYield.rowCount() == m.Settings.YieldRows[1] + 1 && m.CutOrderLast >= -1 &&
           m.CutOrder.size() >= static_cast<std::size_t>(m.CutOrderLast + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::FILE* file = std::fopen(inputPath().c_str(), "wb");
    if (!file) std::abort();
    if (size > 0 && std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);

    arborex::Model m;
    arborex::ResetVars(m);
    arborex::SetDefaults(m);
    arborex::EmptyArrays(m);
    arborex::test::FakeHost host;
    // The first byte chooses the answer to the map sheet question of older files.
    host.prompt.answers.push_back(size > 0 && (data[0] & 1) ? arborex::Answer::Yes
                                                            : arborex::Answer::No);
    arborex::LoadARX(m, host, inputPath());
    // libFuzzer ends without running exit handlers, so the input goes at once.
    std::remove(inputPath().c_str());
    if (!arraysFitCounts(m)) std::abort();
    return 0;
}
