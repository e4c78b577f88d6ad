#include "polygon_command.hpp"

#include <algorithm>
#include <array>
#include <exception>
#include <ostream>
#include <string_view>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "json_writer.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_fields.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "project_summary.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm =
    "polygon PROJECT ACTION ... [--save OUT] [--json] [--quiet] [--data DIR]";

// The words each action takes after PROJECT ACTION; set takes one KEY=VALUE or more.
struct ActionForm {
    std::string_view name;
    std::size_t words;
    std::string_view form;
};
constexpr std::array<ActionForm, 9> kActions = {{{"list", 0, "list"},
                                                 {"add", 1, "add NAME [--copy-of POLYGON]"},
                                                 {"delete", 1, "delete POLYGON"},
                                                 {"undelete", 1, "undelete POLYGON"},
                                                 {"rename", 2, "rename POLYGON NEW"},
                                                 {"split", 0, "split --max HA --size HA"},
                                                 {"reorder", 0, "reorder"},
                                                 {"purge", 0, "purge"},
                                                 {"set", 2, "set POLYGON KEY=VALUE ..."}}};

// What an action did, for the text and the JSON.
struct ActionResult {
    std::string action;
    std::vector<std::string> lines;  // for people, project text in its own bytes
    std::vector<int> changed;        // polygons made or changed
    PolygonChanges changes;          // set only
    int removed = 0;                 // purge only
    std::string refusal;             // the program's text when the action was refused
};

// The lines of a text whose every line ends in "\r\n", as the message boxes take them.
std::vector<std::string> crlfLines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.find("\r\n", from);
        lines.push_back(text.substr(from, end - from));
        from = end == std::string::npos ? end : end + 2;
    }
    return lines;
}

std::string quotedName(const Model& m, int p) {
    return "\"" + trim(m.Poly.at(static_cast<std::size_t>(p)).NAME.str()) + "\"";
}

std::string polygonTitle(const Model& m, int p) {
    return "polygon " + std::to_string(p) + " " + quotedName(m, p);
}

float hectares(const std::string& flag, const std::vector<std::string>* values) {
    if (!values) throw UsageError("split needs --max HA and --size HA");
    const auto number = strictNumber(values->at(0));
    if (!number)
        throw UsageError(flag + " needs a number of hectares, not '" + values->at(0) + "'");
    return static_cast<float>(*number);
}

// KEY=VALUE with KEY one of the setter's keys, in any case.
std::pair<std::string, std::string> keyValue(const std::string& word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) throw UsageError("set takes KEY=VALUE, not '" + word + "'");
    std::string key = toUpper(trim(word.substr(0, equals)));
    const std::vector<std::string> keys = polygonValueKeys();
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
        std::string known;
        for (const std::string& k : keys) known += (known.empty() ? "" : " ") + k;
        throw UsageError("no polygon field '" + word.substr(0, equals) + "' (keys: " + known + ")");
    }
    return {key, word.substr(equals + 1)};
}

// Everything that can be checked without the project, so that a wrong line loads nothing.
const ActionForm& checkCommandLine(const BatchOptions& options) {
    if (options.operands.size() < 2 || options.operands[0].empty())
        throw UsageError("usage: " + std::string(kProgram) + " " + kForm);
    const std::string& action = options.operands[1];
    const auto form = std::find_if(kActions.begin(), kActions.end(),
                                   [&](const ActionForm& f) { return f.name == action; });
    if (form == kActions.end())
        throw UsageError("no polygon action '" + action +
                         "' (list, add, delete, undelete, rename, split, reorder, purge or set)");
    const std::size_t words = options.operands.size() - 2;
    if (form->name == "set" ? words < form->words : words != form->words)
        throw UsageError("usage: " + std::string(kProgram) + " polygon PROJECT " +
                         std::string(form->form));
    for (const auto& [flag, values] : options.own) {
        const bool fits = (flag == "--save" && form->name != "list") ||
                          (flag == "--copy-of" && form->name == "add") ||
                          ((flag == "--max" || flag == "--size") && form->name == "split");
        if (!fits) throw UsageError(flag + " does not go with polygon " + action);
    }
    if (form->name == "split") {
        hectares("--max", ownFlagValues(options, "--max"));
        hectares("--size", ownFlagValues(options, "--size"));
    }
    if (form->name == "set")
        for (std::size_t i = 3; i < options.operands.size(); ++i) keyValue(options.operands[i]);
    return *form;
}

// What polychanged does when the user keeps the change, without asking.
void setValues(Model& m, Prompt& prompt, int p, const std::vector<std::string>& words,
               ActionResult& result) {
    const auto i = static_cast<std::size_t>(p);
    const PolyData before = m.Poly.at(i);
    const PolyCalc beforeC = m.PolyC.at(i);
    const PolyMgmt beforeM = m.PolyM.at(i);
    for (const std::string& word : words) {
        const auto [key, value] = keyValue(word);
        try {
            setPolygonValue(m, prompt, p, key, value);
        } catch (const ArborexError&) {
            throw UsageError(word + ": " + failureReason(std::current_exception(), {}));
        }
    }
    result.changes =
        comparePolygon(before, beforeC, beforeM, m.Poly[i], m.PolyC[i], m.PolyM[i], false);
    applyStaleMarks(m, p, result.changes.marks);
    if (result.changes.vxChanged) updateVDYPmix(m, p);
    result.changed.push_back(p);
    if (!result.changes.any()) {
        result.lines.push_back("No change to " + polygonTitle(m, p));
        return;
    }
    result.lines.push_back("Changed " + polygonTitle(m, p) + ":");
    for (const std::string& line : crlfLines(changesHeading(result.changes)))
        result.lines.push_back(line);
    for (const std::string& label : crlfLines(result.changes.labels))
        result.lines.push_back("  " + label);
}

void split(Model& m, const BatchOptions& options, ActionResult& result) {
    const float maximum = hectares("--max", ownFlagValues(options, "--max"));
    const float size = hectares("--size", ownFlagValues(options, "--size"));
    std::vector<float> areas;
    for (int p = 0; p <= m.LastPoly; ++p) areas.push_back(m.Poly[static_cast<std::size_t>(p)].AREA);
    const int added = splitPolygons(m, maximum, size);
    for (int p = 0; p <= m.LastPoly; ++p)
        if (p >= static_cast<int>(areas.size()) ||
            areas[static_cast<std::size_t>(p)] != m.Poly[static_cast<std::size_t>(p)].AREA)
            result.changed.push_back(p);
    result.lines.push_back("Split added " + std::to_string(added) +
                           (added == 1 ? " polygon" : " polygons"));
}

ActionResult runAction(Model& m, BatchHost& batch, const BatchOptions& options,
                       const std::string& path) {
    const std::vector<std::string> words(options.operands.begin() + 2, options.operands.end());
    ActionResult result;
    const std::string& action = result.action = options.operands[1];
    auto polygon = [&](const std::string& operand) { return polygonOperand(m, operand, path); };
    if (action == "add") {
        int source = -1;
        if (const auto* copyOf = ownFlagValues(options, "--copy-of"))
            source = polygon(copyOf->at(0));
        if (source < 0) useInstalledDefaultPolygon(m, batch.host());
        const AddOutcome outcome = addPolygon(m, words[0], source);
        if (outcome.refusal != PolygonRefusal::None) {
            result.refusal = refusalText(m, outcome.refusal, false);
            return result;
        }
        result.changed.push_back(outcome.polygon);
        result.lines.push_back("Added " + quotedName(m, outcome.polygon) + " as polygon " +
                               std::to_string(outcome.polygon) +
                               (source < 0 ? "" : ", a copy of " + polygonTitle(m, source)));
    } else if (action == "delete" || action == "undelete") {
        const int p = polygon(words[0]);
        const bool deleting = action == "delete";
        const bool already = (m.PolyC[static_cast<std::size_t>(p)].DELETE == 1) == deleting;
        if (deleting)
            deletePolygon(m, p);
        else
            undeletePolygon(m, p);
        result.changed.push_back(p);
        if (already)
            result.lines.push_back("Nothing to do: " + polygonTitle(m, p) +
                                   (deleting ? " is deleted already" : " is not deleted"));
        else
            result.lines.push_back((deleting ? "Deleted " : "Undeleted ") + polygonTitle(m, p));
    } else if (action == "rename") {
        const int p = polygon(words[0]);
        const std::string former = quotedName(m, p);
        const PolygonRefusal refusal = renamePolygon(m, p, words[1]);
        if (refusal != PolygonRefusal::None) {
            result.refusal = refusalText(m, refusal, true);
            return result;
        }
        result.changed.push_back(p);
        result.lines.push_back(former == quotedName(m, p)
                                   ? "Polygon " + std::to_string(p) + " keeps its name " + former
                                   : "Renamed polygon " + std::to_string(p) + " " + former +
                                         " to " + quotedName(m, p));
    } else if (action == "split") {
        split(m, options, result);
    } else if (action == "reorder") {
        reorderSpecies(m);
        result.lines.push_back("Reordered the species of " + std::to_string(m.LastPoly + 1) +
                               " polygons");
    } else if (action == "purge") {
        const int before = m.LastPoly + 1;
        PurgeDeletedPolygons(m, batch.host());
        result.removed = before - (m.LastPoly + 1);
        result.lines.push_back("Purged " + std::to_string(result.removed) + " deleted polygons; " +
                               std::to_string(m.LastPoly + 1) + " remain");
    } else if (action == "set") {
        const int p = polygon(words[0]);
        setValues(m, batch.prompt(), p, {words.begin() + 1, words.end()}, result);
    }
    return result;
}

// The polygon table's line: the cells padded to their columns, numbers to the right.
void writePolygonLine(const std::array<std::string, 7>& cells, std::ostream& out) {
    static constexpr std::array<std::size_t, 7> kWidths = {5, 12, 6, 7, 12, 10, 10};
    std::string line = " ";
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += " " + padded(cells[i], kWidths[i], i != 1 && i != 6);
    while (line.back() == ' ') line.pop_back();
    out << line << '\n';
}

void writePolygonRows(const Model& m, const std::vector<int>& polygons, std::ostream& out) {
    writePolygonLine(
        {"index", "NAME", "DELETE", "AREA", "EXISTINGMGNT", "FUTUREMGNT", "YIELDSTATE"}, out);
    for (int p : polygons) {
        const auto i = static_cast<std::size_t>(p);
        const PolyData& poly = m.Poly.at(i);
        writePolygonLine(
            {std::to_string(p), trim(poly.NAME.str()), std::to_string(m.PolyC.at(i).DELETE),
             formatNumber(poly.AREA, "0.0"), std::to_string(poly.MGNT[0]),
             std::to_string(poly.MGNT[1]),
             std::to_string(poly.YIELDSTATE[0]) + ", " + std::to_string(poly.YIELDSTATE[1])},
            out);
    }
}

void writePolygonObjects(const Model& m, const std::vector<int>& polygons, JsonWriter& json) {
    json.beginArray();
    for (int p : polygons) {
        const auto i = static_cast<std::size_t>(p);
        const PolyData& poly = m.Poly.at(i);
        json.beginObject(Layout::Inline);
        json.member("index", p);
        json.member("NAME", trim(poly.NAME.str()));
        json.member("DELETE", m.PolyC.at(i).DELETE);
        json.member("AREA", poly.AREA);
        json.member("EXISTINGMGNT", poly.MGNT[0]);
        json.member("FUTUREMGNT", poly.MGNT[1]);
        json.arrayMember("YIELDSTATE", poly.YIELDSTATE);
        json.endObject();
    }
    json.endArray();
}

void writeList(const Model& m, const std::string& path, bool asJson, std::ostream& out) {
    std::vector<int> all(static_cast<std::size_t>(m.LastPoly + 1));
    for (int p = 0; p <= m.LastPoly; ++p) all[static_cast<std::size_t>(p)] = p;
    if (!asJson) {
        out << "Polygons: " << all.size() << '\n';
        if (!all.empty()) writePolygonRows(m, all, out);
        return;
    }
    JsonWriter json(out);
    json.beginObject();
    json.member("project", path);
    json.member("polygons", m.LastPoly + 1);
    json.key("polygonList");
    writePolygonObjects(m, all, json);
    json.endObject();
    json.finish();
}

void writeResult(const Model& m, const ActionResult& result, const std::string& path,
                 const std::string& saved, const std::vector<std::string>& warnings, bool asJson,
                 std::ostream& out) {
    if (!asJson) {
        for (const std::string& line : result.lines) out << latin1ToUtf8(line) << '\n';
        // Some boxes say "Warning:" themselves.
        for (const std::string& warning : warnings)
            out << (warning.rfind("Warning", 0) == 0 ? "" : "Warning: ") << latin1ToUtf8(warning)
                << '\n';
        if (!result.changed.empty()) writePolygonRows(m, result.changed, out);
        out << "Wrote " << saved << " (" << m.LastPoly + 1 << " polygons)\n";
        return;
    }
    std::vector<std::string> marks;
    if (result.changes.marks & StaleVDYP) marks.emplace_back("VDYP");
    if (result.changes.marks & StaleTIPSY) marks.emplace_back("TIPSY");
    JsonWriter json(out);
    json.beginObject();
    json.member("project", path);
    json.member("action", result.action);
    json.member("saved", saved);
    json.member("polygons", m.LastPoly + 1);
    json.key("changed");
    writePolygonObjects(m, result.changed, json);
    json.arrayMember("changes", crlfLines(result.changes.labels));
    json.arrayMember("marks", marks);
    json.member("removed", result.removed);
    json.arrayMember("warnings", warnings);
    json.endObject();
    json.finish();
}

}  // namespace

std::string polygonUsage() {
    return "  polygon PROJECT ACTION ... [--save OUT] [--json] [--quiet] [--data DIR]\n"
           "      Edit polygons as the polygon screen does. ACTION is one of:\n"
           "        list                          each polygon's index, name, DELETE, AREA,\n"
           "                                      managements and YIELDSTATE; writes nothing\n"
           "        add NAME [--copy-of POLYGON]  from the default polygon, or as a copy of\n"
           "                                      POLYGON with its curves\n"
           "        delete POLYGON, undelete POLYGON\n"
           "        rename POLYGON NEW            an empty NEW keeps the name\n"
           "        split --max HA --size HA      polygons above --max in pieces of --size\n"
           "        reorder                       species by descending percent\n"
           "        purge                         remove the deleted polygons for good\n"
           "        set POLYGON KEY=VALUE ...     fields by name (AREA, VSITEINDEX, HAR1,\n"
           "                                      EXISTINGMGNT, VS1, ...), kept within the\n"
           "                                      field's limits; \"[..]\" takes the project's\n"
           "                                      setting; the curves the change makes stale\n"
           "                                      are marked\n"
           "      POLYGON is a name or an index, as in curve. PROJECT is written in place\n"
           "      (the former file kept as .bak) unless --save OUT names another file. Exit\n"
           "      status 3: a blank or duplicate name was refused; nothing is written.\n";
}

int runPolygon(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options =
        parseOptions(args, {"--json", "--quiet", "--data"},
                     {{"--save", 1}, {"--copy-of", 1}, {"--max", 1}, {"--size", 1}});
    const ActionForm& form = checkCommandLine(options);
    const std::string& path = options.operands[0];

    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (form.name == "list") {
        writeList(*m, path, options.json, out);
        return ExitOk;
    }
    const std::size_t loadBoxes = batch.prompt().shown().size();
    const ActionResult result = runAction(*m, batch, options, path);
    if (!result.refusal.empty()) {
        err << kProgram << ": " << latin1ToUtf8(oneLine(result.refusal)) << '\n';
        return ExitRefused;
    }
    const auto* saveTo = ownFlagValues(options, "--save");
    const std::string saved = saveTo ? saveTo->at(0) : path;
    if (!saveProject(*m, batch, saved, kCurrentFileVersion, err)) return ExitFailed;
    std::vector<std::string> warnings;
    for (std::size_t i = loadBoxes; i < batch.prompt().shown().size(); ++i)
        warnings.push_back(oneLine(batch.prompt().shown()[i].text));
    writeResult(*m, result, path, saved, warnings, options.json, out);
    return ExitOk;
}

}  // namespace arborex::batch
