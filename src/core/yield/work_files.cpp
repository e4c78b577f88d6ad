#include "yield/work_files.hpp"

#include <filesystem>

#include "base/file_names.hpp"

namespace arborex {

namespace {

constexpr const char* kWorkFiles[] = {
    kTipsyIniFile, kVdypErrorFile, kLineDefFile, kTipsyInFile,    kTipsyOutFile, kTipsyErrorFile,
    kVdypInFile,   kVdypOutFile,   kBtpFile,     "areagraph.txt", "graph.txt",   "tvgraph.txt",
};

}  // namespace

void deleteWorkFiles(const Model& m) {
    const std::string& folder = m.Paths[UserTemp];
    if (folder.empty()) return;  // never clean the working folder by accident
    for (const char* name : kWorkFiles) {
        const std::string found = findFileNoCase(folder, name);
        if (found.empty()) continue;
        std::error_code ignored;
        std::filesystem::remove(found, ignored);
    }
}

}  // namespace arborex
