#include "frame/project_open.hpp"

#include "model/project_file.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

bool LoadARX(Model& m, Host& host, const std::string& path) {
    return ReadArx(m, host, path, [](Model& loaded) {
        calcAllCutAges(loaded, 0);
        calcAllCutAges(loaded, 1);
    });
}

}  // namespace arborex
