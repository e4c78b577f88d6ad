#include "frame/user_settings.hpp"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <limits>

#include "base/display_format.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/settings_store.hpp"
#include "frame/file_locations.hpp"
#include "model/colours.hpp"
#include "model/model.hpp"
#include "model/recent_files.hpp"

namespace arborex {

namespace {

namespace fs = std::filesystem;

// The shortest text that reads back as the same float.
std::string shortestText(double value) {
    const float narrow = static_cast<float>(value);
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, narrow);
    return std::string(buffer, result.ptr);
}

SettingDef text(const char* section, const char* key, bool machine, const char* caption,
                std::string (*get)(const Model&), void (*set)(Model&, const std::string&)) {
    return {section, key, machine, SettingKind::Text, nullptr, nullptr,
            caption, get, set,     nullptr,           nullptr};
}

SettingDef whole(const char* section, const char* key, bool machine, const char* fallback,
                 const char* caption, double (*get)(const Model&), void (*set)(Model&, double)) {
    return {section, key, machine, SettingKind::Whole, fallback, nullptr, caption, nullptr,
            nullptr, get, set};
}

SettingDef fraction(const char* section, const char* key, const char* fallback, const char* format,
                    double (*get)(const Model&), void (*set)(Model&, double)) {
    return {section, key, false, SettingKind::Fraction, fallback, format, nullptr, nullptr,
            nullptr, get, set};
}

// Field bindings. A whole number arrives already checked against the 16-bit range.
#define ARBOREX_I2(field) \
    [](const Model& m) { return double(m.field); }, [](Model& m, double v) { m.field = toI2(v); }
#define ARBOREX_F4(field)                           \
    [](const Model& m) { return double(m.field); }, \
        [](Model& m, double v) { m.field = static_cast<float>(v); }
#define ARBOREX_STR(field)                               \
    [](const Model& m) { return std::string(m.field); }, \
        [](Model& m, const std::string& v) { m.field = v; }
#define ARBOREX_FIXED(field)                      \
    [](const Model& m) { return m.field.str(); }, \
        [](Model& m, const std::string& v) { m.field = v; }
#define ARBOREX_FOLDER(field)               \
    [](const Model& m) { return m.field; }, \
        [](Model& m, const std::string& v) { m.field = withTrailingSlash(v); }

std::vector<SettingDef> buildTable() {
    std::vector<SettingDef> t;
    t.push_back(text("USER", "USER", false, nullptr, ARBOREX_FIXED(Header.User)));
    t.push_back(text("USER", "COMPANY", false, nullptr, ARBOREX_FIXED(Header.Company)));
    t.push_back(text("USER", "ARBOREX", false, nullptr, ARBOREX_FIXED(Header.Licence)));
    t.push_back(text("USER", "DISTRICT", false, nullptr, ARBOREX_FIXED(Header.District)));

    t.push_back(whole("HARVEST", "MINAGE", false, "40", nullptr, ARBOREX_I2(Settings.MINAGE)));
    t.push_back(fraction("HARVEST", "MINVOL", "150", nullptr, ARBOREX_F4(Settings.MINVOL)));
    t.push_back(fraction("HARVEST", "MINDIA", "15", nullptr, ARBOREX_F4(Settings.MINDIA)));
    t.push_back(
        whole("HARVEST", "REGENDELAY", false, "0", nullptr, ARBOREX_I2(Settings.REGENDELAY)));
    t.push_back(
        whole("HARVEST", "PCNETDOWN", false, "20", nullptr, ARBOREX_I2(Settings.PCNETDOWN)));
    t.push_back(whole("HARVEST", "PLANHORZ", false, "250", nullptr, ARBOREX_I2(Settings.PLANHORZ)));
    t.push_back(fraction("HARVEST", "SPLIT", "100.0", "0.0", ARBOREX_F4(Settings.SPLIT)));
    t.push_back(
        fraction("HARVEST", "PCADJUSTFACT", "0.80", "0.00", ARBOREX_F4(Settings.PCADJUSTFACT)));
    t.push_back(whole("HARVEST", "PCADJUSTHARVAGE", false, "0", nullptr,
                      ARBOREX_I2(Settings.PCADJUSTHARVAGE)));
    t.push_back(whole("HARVEST", "PCnext", false, "20", nullptr, ARBOREX_I2(Settings.PCnext)));
    t.push_back(whole("HARVEST", "PCperc", false, "20", nullptr, ARBOREX_I2(Settings.PCperc)));

    t.push_back(text("FileLocations", "ArborexFolder", false, "Arborex folder",
                     ARBOREX_FOLDER(Paths[ArborexFolder])));
    SettingDef documents = text("FileLocations", "UserDocuments", false, "My projects folder",
                                ARBOREX_FOLDER(Paths[UserDocuments]));
    documents.readByLoadRegistry = false;
    t.push_back(documents);
    SettingDef temp = text("FileLocations", "UserTemp", false, "Temporary folder",
                           ARBOREX_FOLDER(Paths[UserTemp]));
    temp.readByLoadRegistry = false;
    t.push_back(temp);
    t.push_back(
        text("FileLocations", "VDYPexe", true, "VDYP program", ARBOREX_STR(Files[FileVDYPexe])));
    t.push_back(
        text("FileLocations", "TIPSYexe", true, "TIPSY program", ARBOREX_STR(Files[FileTIPSYexe])));
    t.push_back(text("FileLocations", "VDYPhelp", true, "VDYP help file",
                     ARBOREX_STR(Files[FileVDYPhelp])));
    t.push_back(text("FileLocations", "TIPSYhelp", true, "TIPSY help file",
                     ARBOREX_STR(Files[FileTIPSYhelp])));
    t.push_back(text("FileLocations", "ARBOREXhelp", true, "Arborex manual",
                     ARBOREX_STR(Files[FileManual])));
    t.push_back(
        text("FileLocations", "Chartex", true, "Graph program", ARBOREX_STR(Files[FileChartex])));
    t.push_back(text("FileLocations", "BTPfile", true, "TIPSY batch template",
                     ARBOREX_STR(Files[FileBTP])));
    t.push_back(text("FileLocations", "PFAWebPage", true, "Support web page",
                     ARBOREX_STR(Files[FileWebPage])));
    SettingDef shared =
        text("FileLocations", "DefaultUserDocuments", true, "Default projects folder of new users",
             ARBOREX_STR(Paths[DefaultUserDocuments]));
    shared.readByLoadRegistry = false;
    t.push_back(shared);
    const char* editors[4][3] = {{"EditorWord", "Rich Text editor", ".doc"},
                                 {"EditorExcel", "Spreadsheet program", ".xls"},
                                 {"EditorText", "Text editor", ".txt"},
                                 {"EditorImage", "Image viewer", ".bmp"}};
    std::string (*const getters[4])(const Model&) = {
        [](const Model& m) { return m.Files[FileEditorWord]; },
        [](const Model& m) { return m.Files[FileEditorExcel]; },
        [](const Model& m) { return m.Files[FileEditorText]; },
        [](const Model& m) { return m.Files[FileEditorImage]; }};
    void (*const setters[4])(Model&, const std::string&) = {
        [](Model& m, const std::string& v) { m.Files[FileEditorWord] = v; },
        [](Model& m, const std::string& v) { m.Files[FileEditorExcel] = v; },
        [](Model& m, const std::string& v) { m.Files[FileEditorText] = v; },
        [](Model& m, const std::string& v) { m.Files[FileEditorImage] = v; }};
    for (int i = 0; i < 4; ++i) {
        SettingDef editor =
            text("FileLocations", editors[i][0], false, editors[i][1], getters[i], setters[i]);
        editor.associatedExt = editors[i][2];
        t.push_back(editor);
    }

    t.push_back(whole("VDYP", "MAXAGE", true, "300", "VDYP oldest age",
                      ARBOREX_I2(Settings.YieldMaxAge[0])));
    t.push_back(whole("VDYP", "MINAGE", true, "0", "VDYP youngest age",
                      ARBOREX_I2(Settings.YieldMinAge[0])));
    t.push_back(
        whole("VDYP", "INCAGE", true, "1", "VDYP age step", ARBOREX_I2(Settings.YieldIncAge[0])));
    t.push_back(
        whole("VDYP", "NETMAI", true, "1", "Net MAI (1 yes, 0 no)", ARBOREX_I2(Settings.NETMAI)));
    t.push_back(whole("VDYP", "VDYPPSYUB", false, "0", "Pass the PSYU block to VDYP (1 yes)",
                      ARBOREX_I2(Settings.VDYPPSYUB)));
    t.push_back(whole("VDYP", "ALTWBS", false, "0", "Alternative withdrawal file (1 yes)",
                      ARBOREX_I2(Settings.ALTWBS)));
    t.push_back(whole("TIPSY", "MAXAGE", true, "350", "TIPSY oldest age",
                      ARBOREX_I2(Settings.YieldMaxAge[1])));
    t.push_back(whole("TIPSY", "MINAGE", true, "0", "TIPSY youngest age",
                      ARBOREX_I2(Settings.YieldMinAge[1])));
    t.push_back(whole("TIPSY", "INCAGE", true, "10", "TIPSY age step",
                      ARBOREX_I2(Settings.YieldIncAge[1])));
    t.push_back(whole("TIPSY", "TIPSYSITE", true, "0", "Site index for every species (1 yes)",
                      ARBOREX_I2(Settings.TIPSYSITE)));
    t.push_back(whole("TIPSY", "TIPSYHEIGHT", true, "0", "Height for every species (1 yes)",
                      ARBOREX_I2(Settings.TIPSYHEIGHT)));
    t.push_back(whole("TIPSY", "OAF1", false, "15", "OAF1 default (%)", ARBOREX_I2(Settings.OAF1)));
    t.push_back(whole("TIPSY", "OAF2", false, "5", "OAF2 default (%)", ARBOREX_I2(Settings.OAF2)));
    t.push_back(whole("TIPSY", "SHOWUI", false, "0", "Show TIPSY's screens in batch runs (1 yes)",
                      ARBOREX_I2(SHOWUI)));
    t.push_back(whole("DISPLAY", "YIELDINC", false, "10", "Yield table age step",
                      ARBOREX_I2(Settings.YIELDINC)));
    t.push_back(whole("DISPLAY", "USERLEVEL", false, "1", "Ask before keeping changes (1 yes)",
                      ARBOREX_I2(Settings.USERLEVEL)));
    t.push_back(whole("DISPLAY", "LaunchEditor", false, "1", "Open reports in their editor (1 yes)",
                      ARBOREX_I2(LaunchEditor)));

    for (int i = 0; i < ColourCount; ++i) {
        // Colours are 32-bit; they bind by index, so the table takes them through one setter.
        SettingDef colour{"COLORS", kColourKeys[i], false,   SettingKind::Whole,
                          nullptr,  nullptr,        nullptr, nullptr,
                          nullptr,  nullptr,        nullptr};
        t.push_back(colour);
    }
    return t;
}

#undef ARBOREX_I2
#undef ARBOREX_F4
#undef ARBOREX_STR
#undef ARBOREX_FIXED
#undef ARBOREX_FOLDER

bool isColour(const SettingDef& def) {
    return std::string(def.section) == "COLORS";
}

// The index of a colour setting in COLORS.
std::size_t colourIndex(const SettingDef& def) {
    std::size_t i = 0;
    while (i + 1 < ColourCount && std::string(def.key) != kColourKeys[i]) ++i;
    return i;
}

double numberOf(const Model& m, const SettingDef& def) {
    if (isColour(def)) return m.Settings.COLORS[colourIndex(def)];
    return def.getNumber(m);
}

void setNumberOf(Model& m, const SettingDef& def, double value) {
    if (isColour(def))
        m.Settings.COLORS[colourIndex(def)] = toI4(value);
    else
        def.setNumber(m, value);
}

std::string numberText(const SettingDef& def, double value) {
    if (def.kind == SettingKind::Whole) return std::to_string(static_cast<long long>(value));
    return def.format ? formatNumber(value, def.format) : shortestText(value);
}

// The copy of the installation's sample projects that a new user starts with.
void copySamples(const Model& m) {
    const fs::path from = fs::path(m.Paths[ArborexFolder]) / "sample";
    const fs::path to = fs::path(m.Paths[UserDocuments]) / "sample";
    std::error_code ec;
    MakePath(to.string());
    if (!fs::is_directory(from, ec)) return;
    for (const auto& entry : fs::directory_iterator(from, ec)) {
        if (!entry.is_regular_file(ec)) continue;
        fs::copy_file(entry.path(), to / entry.path().filename(),
                      fs::copy_options::overwrite_existing, ec);
    }
}

// A stored folder that an old installer wrote for one account is not this user's.
std::string storedFolder(SettingsStore& settings, const char* key) {
    std::string value = getRegStr(settings, "FileLocations", key, "", false);
    if (value.find("mkerr_b") != std::string::npos) return {};
    return value;
}

}  // namespace

const std::vector<SettingDef>& settingsTable() {
    static const std::vector<SettingDef> table = buildTable();
    return table;
}

void readSetting(Model& m, Host& host, const SettingDef& def) {
    SettingsStore& store = host.settings;
    if (def.kind == SettingKind::Text) {
        const std::string value = getRegStr(
            store, def.section, def.key,
            [&]() -> std::string {
                if (def.associatedExt) return FindAssociatedApp(host, def.associatedExt);
                return def.fallback ? std::string(def.fallback) : def.getText(m);
            },
            def.machine);
        def.setText(m, value);
        return;
    }
    const std::string fallbackText =
        def.fallback ? def.fallback : numberText(def, numberOf(m, def));
    const double fallback = tolerantNumber(fallbackText);
    double value =
        def.kind == SettingKind::Whole
            ? getRegLng(store, def.section, def.key, static_cast<int32_t>(fallback), def.machine)
            : getRegNum(store, def.section, def.key, fallbackText, def.machine);
    // A value the field cannot hold reads like one that is not a number.
    const double limit = def.kind == SettingKind::Fraction ? std::numeric_limits<float>::max()
                         : isColour(def)                   ? 2147483647.0
                                                           : 32767.0;
    if (!(std::fabs(value) <= limit)) value = fallback;
    setNumberOf(m, def, value);
}

void writeSetting(const Model& m, SettingsStore& settings, const SettingDef& def) {
    const std::string value =
        def.kind == SettingKind::Text ? def.getText(m) : numberText(def, numberOf(m, def));
    PutRegistryStr(settings, def.section, def.key, value, def.machine);
}

std::string settingProblem(const SettingDef& def, const std::string& text) {
    if (def.kind == SettingKind::Text) return {};
    const std::string name = def.caption ? def.caption : def.key;
    const auto number = strictNumber(text);
    if (def.kind == SettingKind::Fraction)
        return number ? std::string() : name + " must be a number.";
    const double limit = isColour(def) ? 2147483647.0 : 32767.0;
    if (number && *number == std::floor(*number) && *number >= -limit - 1.0 && *number <= limit)
        return {};
    return name + " must be a whole number from " + numberText(def, -limit - 1.0) + " to " +
           numberText(def, limit) + ".";
}

bool isProjectSetting(const SettingDef& def) {
    const std::string section = def.section;
    return (section == "VDYP" || section == "TIPSY") && std::string(def.key) != "SHOWUI";
}

void LoadRegistry(Model& m, Host& host) {
    for (const SettingDef& def : settingsTable()) {
        if (def.readByLoadRegistry) readSetting(m, host, def);
        if (std::string(def.key) != "ArborexFolder") continue;

        // The folders follow the installation folder, in the order the table gives them.
        const std::string documents = storedFolder(host.settings, "UserDocuments");
        if (documents.empty()) {
            host.status.show("Setting up new user: " + host.system.variable("USERNAME"));
            PutRegistryStr(host.settings, "FileLocations", "UserDocuments", m.Paths[UserDocuments],
                           false);
            copySamples(m);
            host.status.close();
        } else {
            m.Paths[UserDocuments] = withTrailingSlash(documents);
        }
        const std::string temp = storedFolder(host.settings, "UserTemp");
        if (temp.empty())
            PutRegistryStr(host.settings, "FileLocations", "UserTemp", m.Paths[UserTemp], false);
        else
            m.Paths[UserTemp] = withTrailingSlash(temp);
    }
    LoadRegLast(m, host.settings);
}

void SaveRegHarvest(const Model& m, SettingsStore& settings) {
    for (const SettingDef& def : settingsTable()) {
        if (std::string(def.section) != "HARVEST") continue;
        const std::string key = def.key;
        if (key == "PCNETDOWN") continue;  // keeps the value it was first filled with
        SettingDef spelled = def;
        // Written in capitals; keys compare without regard to case, so they are the same values.
        if (key == "PCnext") spelled.key = "PCNEXT";
        if (key == "PCperc") spelled.key = "PCPERC";
        writeSetting(m, settings, spelled);
    }
}

void SaveRegProjectInfo(const Model& m, SettingsStore& settings) {
    for (const SettingDef& def : settingsTable())
        if (std::string(def.section) == "USER") writeSetting(m, settings, def);
}

void SaveRegSettings(const Model& m, SettingsStore& settings, bool machine) {
    for (const SettingDef& def : settingsTable()) {
        const std::string section = def.section;
        if (section == "USER" || section == "HARVEST") continue;
        if (def.machine && !machine) continue;
        writeSetting(m, settings, def);
    }
}

}  // namespace arborex
