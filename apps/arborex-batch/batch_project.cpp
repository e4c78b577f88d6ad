#include "batch_project.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <ostream>

#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "frame/file_locations.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"

namespace arborex::batch {

namespace {

bool allDigits(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

}  // namespace

void requireOperands(const BatchOptions& options, std::size_t count, const std::string& form) {
    if (options.operands.size() != count)
        throw UsageError("usage: " + std::string(kProgram) + " " + form);
    for (const std::string& operand : options.operands)
        if (operand.empty()) throw UsageError("an empty operand in: " + form);
}

// Without the species table of TIPSY the program does not run.
std::unique_ptr<Model> newModel(BatchHost& batch, const BatchOptions& options) {
    auto m = std::make_unique<Model>();
    programDefaults(*m);
    const std::string folder =
        options.dataFolder.empty() ? installedDataFolder() : withTrailingSlash(options.dataFolder);
    if (findFileNoCase(folder, "speciest.dat").empty())
        throw ArborexError(ErrFileNotFound,
                           folder + "speciest.dat (give the reference data's folder with --data)");
    m->Paths[ArborexFolder] = folder;
    LoadReferenceData(*m, batch.host());
    return m;
}

bool loadProject(Model& m, BatchHost& batch, const std::string& path, std::ostream& err) {
    if (LoadARX(m, batch.host(), path)) return true;
    std::string reason = batch.prompt().lastMessage();
    if (reason.empty()) reason = "not a project";
    err << kProgram << ": cannot load " << path << ": " << reason << '\n';
    return false;
}

bool saveProject(Model& m, BatchHost& batch, const std::string& path, int16_t version,
                 std::ostream& err) {
    try {
        SaveArx(m, batch.host(), path, version, false);
        return true;
    } catch (...) {
        err << kProgram << ": cannot save " << path << ": "
            << failureReason(std::current_exception(), path) << '\n';
        return false;
    }
}

// A name wins over an index, so that a polygon named "12" is found by its name.
int16_t polygonOperand(const Model& m, const std::string& operand, const std::string& path) {
    const std::string wanted = trim(operand);
    if (!wanted.empty())
        for (int p = 0; p <= m.LastPoly; ++p)  // an int: polygon 32767 is the last there can be
            if (equalsNoCase(m.Poly.at(static_cast<std::size_t>(p)).NAME.str(), wanted))
                return static_cast<int16_t>(p);
    if (allDigits(wanted)) {
        int index = -1;
        const auto parsed = std::from_chars(wanted.data(), wanted.data() + wanted.size(), index);
        if (parsed.ec == std::errc() && index <= m.LastPoly) return static_cast<int16_t>(index);
    }
    throw UsageError("no polygon '" + operand + "' in " + path + ": give a polygon's name or " +
                     (m.LastPoly < 0 ? std::string("add polygons first")
                                     : "an index 0.." + std::to_string(m.LastPoly)));
}

std::string failureReason(const std::exception_ptr& failure, const std::string& path) {
    std::string detail;
    const int number = failureNumberOf(failure, detail);
    std::string reason = errorText(number);
    const bool namesPath = !path.empty() && detail.rfind(path, 0) == 0;
    if (!detail.empty() && !namesPath) reason += ": " + detail;
    return reason;
}

void useInstalledDefaultPolygon(Model& m, Host& host) {
    const std::string documents = m.Paths[UserDocuments];
    m.Paths[UserDocuments] = m.Paths[ArborexFolder];
    const bool loaded = LoadDefaults(m, host);
    m.Paths[UserDocuments] = documents;
    if (!loaded) projectFollowingPolygon(m.DefaultPoly, m.DefaultPolyC, m.DefaultPolyM);
}

}  // namespace arborex::batch
