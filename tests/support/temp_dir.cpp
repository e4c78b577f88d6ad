#include "support/temp_dir.hpp"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace arborex::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "arborex-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(path_, ec);
}

std::string TempDir::file(const std::string& name) const {
    return path_ + "/" + name;
}

}  // namespace arborex::test
