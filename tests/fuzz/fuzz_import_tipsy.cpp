// Coverage-guided fuzzing of the TIPSY readers: every input is written to a file and read both
// as a yield report and as an error file into a small project. A crash, a sanitizer report, an
// exception other than ArborexError, a hang or curve tables resized by the reading is a finding.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/errors.hpp"
#include "fuzz/tipsy_report.hpp"
#include "support/fake_host.hpp"
#include "yield/tipsy_exchange.hpp"

namespace {

const std::string& inputPath() {
    static const std::string path =
        "/tmp/fuzz_import_tipsy_" + std::to_string(static_cast<long>(getpid())) + ".dat";
    return path;
}

template <typename Read>
void readCleanly(Read read) {
    try {
        read();
    } catch (const arborex::ArborexError&) {
        // An expected outcome of a damaged file: the caller's error boundary reports it.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::FILE* file = std::fopen(inputPath().c_str(), "wb");
    if (!file) std::abort();
    if (size > 0 && std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);

    arborex::Model m = arborex::test::tipsyProject({"A", "B", "C"});
    const int rows = m.TYield.rowCount();
    arborex::test::FakeHost host;
    readCleanly([&] { arborex::ImportTIPSY2(m, host, inputPath(), nullptr); });
    std::vector<arborex::PostItem> post;
    readCleanly([&] { arborex::LoadTIPSYError(m, host.prompt, inputPath(), post); });
    // libFuzzer ends without running exit handlers, so the input goes at once.
    std::remove(inputPath().c_str());
    if (m.TYield.polygonCount() != 3 || m.TYield.rowCount() != rows) std::abort();
    return 0;
}
