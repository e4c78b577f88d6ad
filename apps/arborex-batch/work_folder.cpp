#include "work_folder.hpp"

#include <stdlib.h>

#include <filesystem>

#include "base/errors.hpp"

namespace arborex::batch {

WorkFolder::WorkFolder(const std::string& prefix) {
    std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "-XXXXXX")).string();
    if (!mkdtemp(pattern.data())) throw ArborexError(ErrPathFileAccess, pattern);
    path_ = pattern + "/";
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace arborex::batch
