#include "model/reference_tables.hpp"

#include "model/model.hpp"

namespace arborex {

ReferenceTables::ReferenceTables() {
    SpeciesRec none;
    none.Code = "  ";
    none.Desc = "- None -";
    SpeciesV.push_back(none);
    SpeciesT.push_back(none);
    SpeciesVAlias.resize(1);
    SpeciesTAlias.resize(1);
    PSYUList.resize(1);
}

}  // namespace arborex
