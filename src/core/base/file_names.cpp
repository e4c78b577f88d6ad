#include "base/file_names.hpp"

#include <filesystem>
#include <system_error>

#include "base/text.hpp"

namespace fs = std::filesystem;

namespace arborex {

std::string changeExtension(const std::string& path, const std::string& extension) {
    auto slash = path.find_last_of("/\\");
    auto dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return path + extension;
    return path.substr(0, dot) + extension;
}

std::string displayName(const std::string& path) {
    auto slash = path.find_last_of("/\\");
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    auto dot = name.find_last_of('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

std::string findFileNoCase(const std::string& folder, const std::string& name) {
    std::error_code ec;
    fs::path dir = folder.empty() ? fs::path(".") : fs::path(folder);
    if (fs::is_regular_file(dir / name, ec)) return (dir / name).string();
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
        if (equalsNoCase(it->path().filename().string(), name) && it->is_regular_file(ec))
            return it->path().string();
    }
    return {};
}

bool fileExists(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

}  // namespace arborex
