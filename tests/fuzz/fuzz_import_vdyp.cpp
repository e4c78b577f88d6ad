// Coverage-guided fuzzing of the VDYP output reader: every input is written to a file and
// imported into a small project. A crash, a sanitizer report, an exception other than
// ArborexError, a hang or curve arrays that changed size is a finding.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/errors.hpp"
#include "fuzz/vdyp_output_sample.hpp"
#include "support/fake_host.hpp"
#include "yield/vdyp_exchange.hpp"

namespace {

const std::string& inputPath() {
    static const std::string path =
        "/tmp/fuzz_import_vdyp_" + std::to_string(static_cast<long>(getpid())) + ".dat";
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::FILE* file = std::fopen(inputPath().c_str(), "wb");
    if (!file) std::abort();
    if (size > 0 && std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);

    arborex::Model m = arborex::test::vdypProject();
    // The first byte chooses how MAI is had and whether species volumes are read.
    m.Settings.NETMAI = static_cast<int16_t>(size > 0 && (data[0] & 1));
    m.Settings.YIELDMODE = static_cast<int16_t>(size > 0 && (data[0] & 2) ? 0 : 1);
    arborex::test::FakeHost host;
    try {
        arborex::ImportVDYP(m, host, inputPath(), nullptr);
    } catch (const arborex::ArborexError&) {
        // A damaged file may fail, as long as it fails as the program's own error.
    }
    // libFuzzer ends without running exit handlers, so the input goes at once.
    std::remove(inputPath().c_str());
    if (m.VYield.polygonCount() != 3 || m.VYield.rowCount() != 5 || m.VMix.rowCount() != 5)
        std::abort();
    return 0;
}
