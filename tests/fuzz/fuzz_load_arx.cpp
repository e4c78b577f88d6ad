// Coverage-guided fuzzing of the project reader: every input is written to an in-memory file and
// loaded through its /proc path, so that no disk work slows the run.
// A crash, a sanitizer report, an escaped exception, a hang or a model whose arrays no longer
// fit its counts is a finding.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "frame/project_open.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"

namespace {

int inputFile() {
    static const int fd = memfd_create("fuzz_load_arx", 0);
    if (fd < 0) std::abort();
    return fd;
}

const std::string& inputPath() {
    static const std::string path = "/proc/self/fd/" + std::to_string(inputFile());
    return path;
}

void writeInput(const std::uint8_t* data, std::size_t size) {
    if (ftruncate(inputFile(), 0) != 0) std::abort();
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = pwrite(inputFile(), data + done, size - done, static_cast<off_t>(done));
        if (n <= 0) std::abort();
        done += static_cast<std::size_t>(n);
    }
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
    writeInput(data, size);

    arborex::Model m;
    arborex::ResetVars(m);
    arborex::SetDefaults(m);
    arborex::EmptyArrays(m);
    arborex::test::FakeHost host;
    // The first byte chooses the answer to the map sheet question of older files.
    host.prompt.answers.push_back(size > 0 && (data[0] & 1) ? arborex::Answer::Yes
                                                            : arborex::Answer::No);
    arborex::LoadARX(m, host, inputPath());
    if (!arraysFitCounts(m)) std::abort();
    return 0;
}
