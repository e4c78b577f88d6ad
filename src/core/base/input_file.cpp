#include "base/input_file.hpp"

#include <filesystem>

#include "base/errors.hpp"
#include "base/file_names.hpp"

namespace arborex {

namespace {

// The spelling of `path` on disk, its last element matched without regard to case.
std::string onDisk(const std::string& path) {
    const std::filesystem::path p(path);
    std::string folder = p.parent_path().string();
    if (!folder.empty()) folder += '/';
    const std::string found = findFileNoCase(folder.empty() ? "./" : folder, p.filename().string());
    return found.empty() ? path : found;
}

}  // namespace

int OpenInputFile(Host& host, const std::string& path, const std::string& title,
                  std::ifstream& in) {
    const std::string actual = path.empty() ? path : onDisk(path);
    std::error_code ec;
    int reason = ErrFileNotFound;
    if (!actual.empty() && std::filesystem::is_directory(actual, ec)) {
        reason = ErrPathFileAccess;
    } else if (!actual.empty() && std::filesystem::exists(actual, ec)) {
        in.open(actual, std::ios::binary);
        if (in.is_open()) return 1;
        reason = ErrPermissionDenied;
    }
    host.prompt.tell(title, path + "\n" + errorText(reason), Icon::Exclamation);
    return -1;
}

bool readTextLine(std::istream& in, std::string& line) {
    if (!std::getline(in, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
}

}  // namespace arborex
