// Coverage-guided fuzzing of the text import: every input is a pasted table imported into a
// small project. A crash, a sanitizer report, an escaped exception, a hang or a damaged
// project (exchange_import_check.hpp) is a finding.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "exchange/text_import.hpp"
#include "fuzz/exchange_import_check.hpp"
#include "support/fake_host.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const arborex::Model before = arborex::test::exchangeFuzzProject();
    arborex::Model m = before;
    arborex::test::FakeHost host;
    arborex::PolygonImport run;
    // The first byte answers the duplicate question beforehand, or leaves it to be asked.
    if (size > 0) run.DupMode = static_cast<int16_t>(data[0] % 3) - 1;
    arborex::TxtToColumns(m, host, std::string_view(reinterpret_cast<const char*>(data), size),
                          run);
    if (!arborex::test::importDamage(before, m, run).empty()) std::abort();
    return 0;
}
