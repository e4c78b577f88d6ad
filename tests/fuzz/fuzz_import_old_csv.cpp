// Coverage-guided fuzzing of the classic import: every input is a classic file read into a
// small project, with the comma or the tab by its first byte. A crash, a sanitizer report, an
// escaped exception, a hang or a damaged project (exchange_import_check.hpp) is a finding.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "exchange/classic_csv.hpp"
#include "fuzz/exchange_import_check.hpp"
#include "support/fake_host.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const arborex::Model before = arborex::test::exchangeFuzzProject();
    arborex::Model m = before;
    arborex::test::FakeHost host;
    arborex::PolygonImport run;
    const char delimiter = size > 0 && (data[0] & 1) ? '\t' : ',';
    arborex::importOldCsvText(m, host, std::string_view(reinterpret_cast<const char*>(data), size),
                              delimiter, "fuzz.csv", run);
    if (!arborex::test::importDamage(before, m, run).empty()) std::abort();
    return 0;
}
