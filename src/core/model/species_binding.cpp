#include "model/species_binding.hpp"

#include <cstddef>

namespace arborex {

namespace {

template <std::size_t N, typename Find>
void bind(std::array<Code2, N>& codes, std::array<int16_t, N>& rows,
          const std::vector<SpeciesRec>& table, Find find) {
    for (std::size_t s = 0; s < N; ++s) {
        const int16_t row = find(codes[s].str());
        rows[s] = row;
        codes[s] = table[static_cast<std::size_t>(row)].Code;
    }
}

}  // namespace

void findSpecIDX(Model& m) {
    const ReferenceTables& ref = m.Ref;
    const bool haveV = ref.SpeciesVCount > 0;
    const bool haveT = ref.SpeciesTCount > 0;
    if (!haveV && !haveT) return;
    for (int p = 0; p <= m.LastPoly; ++p) {
        PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        if (haveV)
            bind(poly.VS, poly.VSIDX, ref.SpeciesV,
                 [&ref](const std::string& code) { return FindVSpecIdx(ref, code); });
        if (haveT)
            bind(poly.TS, poly.TSIDX, ref.SpeciesT,
                 [&ref](const std::string& code) { return FindTSpecIdx(ref, code); });
    }
}

}  // namespace arborex
