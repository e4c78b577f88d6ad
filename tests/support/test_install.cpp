#include "support/test_install.hpp"

#include <filesystem>
#include <fstream>

namespace arborex::test {

namespace fs = std::filesystem;

void installProgramFolder(const std::string& folder) {
    fs::create_directories(folder);
    fs::copy(std::string(ARBOREX_SOURCE_DIR) + "/data", folder,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (const char* program :
         {"VDYP/vdypbat", "TIPSY/btipsy", "VDYP/vdyp.hlp", "TIPSY/TIPSY32.hlp", "AXRM31.pdf",
          "arborex-chart", "TIPSY/arborex2.btp"}) {
        const fs::path path = fs::path(folder) / program;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "stand-in";
    }
}

void setUpUser(FixedEnvironment& system, const std::string& root) {
    system.variables = {
        {"APPDATA", root + "/appdata"}, {"USERNAME", "pat"}, {"USERPROFILE", root + "/home"}};
    system.documents = root + "/documents";
}

}  // namespace arborex::test
