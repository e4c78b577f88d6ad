#include "frame/file_locations.hpp"

#include <filesystem>
#include <fstream>

#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/settings_store.hpp"
#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "model/model.hpp"

namespace arborex {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLocations = "FileLocations";

// Replaces every "%Name%" of `text`, compared without regard to case.
std::string expandVariable(std::string text, const std::string& name, const std::string& value) {
    const std::string upperName = toUpper(name);
    for (std::size_t at = toUpper(text).find(upperName); at != std::string::npos;
         at = toUpper(text).find(upperName, at + value.size()))
        text.replace(at, name.size(), value);
    return text;
}

// `relative` under `base`; with no base known (no home folder), under the working folder rather
// than the root of the file system.
std::string under(const std::string& base, const std::string& relative) {
    return base.empty() ? relative : withTrailingSlash(base) + relative;
}

// Where a program or help file lies by default.
enum class Place {
    Data,      // the data folder, Paths[0]
    Programs,  // the programs' folder: the graphing program is arborex-chart, beside arborex
    Guide,     // the user's guide, which is the program's manual
};

struct ProgramFile {
    int index;
    const char* key;
    const char* relative;
    Place place = Place::Data;
};

constexpr ProgramFile kProgramFiles[] = {
    {FileVDYPexe, "VDYPexe", "VDYP/vdypbat"},
    {FileTIPSYexe, "TIPSYexe", "TIPSY/btipsy"},
    {FileVDYPhelp, "VDYPhelp", "VDYP/vdyp.hlp"},
    {FileTIPSYhelp, "TIPSYhelp", "TIPSY/TIPSY32.hlp"},
    {FileManual, "ARBOREXhelp", "AXRM31.pdf", Place::Guide},
    {FileChartex, "Chartex", "arborex-chart", Place::Programs},
    {FileBTP, "BTPfile", "TIPSY/arborex2.btp"},
};

// PREFIX for a data folder PREFIX/share/arborex/ (the installed and the build tree's layout);
// empty for data kept elsewhere.
fs::path installPrefix(const std::string& dataFolder) {
    const fs::path data = fs::path(dataFolder).lexically_normal();
    const fs::path folder = data.has_filename() ? data : data.parent_path();
    if (folder.filename() != "arborex" || folder.parent_path().filename() != "share") return {};
    return folder.parent_path().parent_path();
}

// The folder of the programs for a data folder: PREFIX/bin/, else the data folder itself (data
// beside them).
std::string programsFolder(const std::string& dataFolder) {
    const fs::path prefix = installPrefix(dataFolder);
    return prefix.empty() ? dataFolder : withTrailingSlash((prefix / "bin").string());
}

// The guide's first page in PREFIX/share/doc/arborex/guide/: rendered to HTML when the build
// machine could, else the Markdown page. Data kept elsewhere keeps the manual beside it.
std::string manualFile(const std::string& dataFolder, const char* relative) {
    const fs::path prefix = installPrefix(dataFolder);
    if (prefix.empty()) return dataFolder + relative;
    const fs::path guide = prefix / "share/doc/arborex/guide";
    std::error_code ec;
    for (const char* page : {"index.html", "index.md"})
        if (fs::is_regular_file(guide / page, ec)) return (guide / page).string();
    return (guide / "index.html").string();
}

}  // namespace

std::string withTrailingSlash(const std::string& folder) {
    if (folder.empty() || folder.back() == '/') return folder;
    return folder + "/";
}

bool GetAppPath(Model& m, Host& host, const std::string& programFolder) {
    std::string folder = getRegistryStr(host.settings, kLocations, "ArborexFolder", false);
    if (folder.empty()) folder = withTrailingSlash(programFolder);
    for (;;) {
        if (!findFileNoCase(folder, "speciest.dat").empty()) {
            m.Paths[ArborexFolder] = folder;
            PutRegistryStr(host.settings, kLocations, "ArborexFolder", folder, false);
            return true;
        }
        const auto answer =
            host.prompt.input("Arborex Not Found (speciest.dat)",
                              "'Speciest.dat' not found.  Please enter the path to Arborex: ", "");
        if (!answer || trim(*answer).empty()) return false;
        folder = withTrailingSlash(trim(*answer));
    }
}

void DefaultPaths(Model& m, Host& host) {
    SystemEnvironment& env = host.system;
    m.Paths[UserTemp] = under(env.variable("APPDATA"), "Arborex/temp/");

    std::string shared = getRegStr(host.settings, kLocations, "DefaultUserDocuments", "", true);
    shared = expandVariable(shared, "%UserName%", env.variable("USERNAME"));
    shared = expandVariable(shared, "%UserProfile%", env.variable("USERPROFILE"));
    m.Paths[DefaultUserDocuments] = shared;
    m.Paths[UserDocuments] = !shared.empty() ? withTrailingSlash(shared)
                                             : env.documentsFolder() + "/" + "Arborex for Windows/";

    const std::string& data = m.Paths[ArborexFolder];
    for (const ProgramFile& file : kProgramFiles) {
        std::string& path = m.Files[static_cast<std::size_t>(file.index)];
        switch (file.place) {
            case Place::Data:
                path = data + file.relative;
                break;
            case Place::Programs:
                path = programsFolder(data) + file.relative;
                break;
            case Place::Guide:
                path = manualFile(data, file.relative);
                break;
        }
    }
    // The editors' defaults ask the desktop, which is slow; LoadRegistry asks only for those
    // that the user has not set.
    for (int i = FileEditorWord; i <= FileEditorImage; ++i)
        m.Files[static_cast<std::size_t>(i)].clear();
}

bool MakePath(const std::string& path) {
    if (path.empty()) return false;
    std::error_code ec;
    if (fs::is_directory(path, ec)) return true;
    // On a share ("//server/share/...") the server and the share cannot be made: start below.
    fs::path target(path);
    if (path.rfind("//", 0) == 0) {
        fs::path built;
        int level = 0;
        for (const auto& part : target) {
            built /= part;
            if (part.empty() || part == "/" || part == "//" || ++level <= 2) continue;
            if (!fs::is_directory(built, ec) && !fs::create_directory(built, ec)) return false;
        }
        return fs::is_directory(path, ec);
    }
    fs::create_directories(target, ec);
    return fs::is_directory(path, ec);
}

std::string checkPathRW(const std::string& path, const std::string& runId) {
    const std::string scratch = withTrailingSlash(path) + "Arborex" + runId + ".tmp";
    {
        std::ofstream out(scratch, std::ios::binary);
        if (!out) throw ArborexError(ErrPathFileAccess, scratch);
        out << "This file can be deleted";
        out.close();
        if (!out) throw ArborexError(ErrPathFileAccess, scratch);
    }
    std::error_code ec;
    if (!fs::remove(scratch, ec)) throw ArborexError(ErrPermissionDenied, scratch);
    return {};
}

std::string checkFileExists(const std::string& path) {
    if (trim(path).empty()) return "File not found!";
    std::error_code ec;
    if (fs::is_regular_file(path, ec)) return {};
    return "File not found: " + path;
}

void CheckPaths(Model& m, Host& host) {
    for (int folder : {UserTemp, UserDocuments}) {
        const std::string& path = m.Paths[static_cast<std::size_t>(folder)];
        runGuarded(m, host, "CheckPaths", "modNew", [&] {
            MakePath(path);
            checkPathRW(path, m.RunId);
        });
    }
    std::string missing;
    for (int i = FileVDYPexe; i <= FileBTP; ++i) {
        const std::string message = checkFileExists(m.Files[static_cast<std::size_t>(i)]);
        if (message.empty()) continue;
        if (!missing.empty()) missing += "\n";
        missing += message;
    }
    if (!missing.empty()) host.prompt.tell(kProgramTitle, missing, Icon::Exclamation);
}

std::string FindAssociatedApp(Host& host, const std::string& ext) {
    const std::string folder = host.system.variable("APPDATA");
    if (folder.empty()) return {};
    const std::string scratch = folder + "/test" + ext;
    {
        std::ofstream out(scratch, std::ios::binary);
        if (!out) return {};
        out << "Temp file";
    }
    std::string program = host.system.applicationFor(scratch);
    std::error_code ec;
    fs::remove(scratch, ec);
    return program;
}

}  // namespace arborex
