#include "vdypbat/vdyp_polygon.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "base/numeric.hpp"
#include "base/text.hpp"
#include "growth/growth_model.hpp"
#include "standin/site_index.hpp"
#include "standin/standin_files.hpp"

namespace arborex::vdypbat {
namespace {

// Stand-in values where the record leaves a setting blank, as the model's own defaults.
constexpr int kDefaultClosure = 50;
constexpr float kDefaultUtilisation = 12.5f;
constexpr float kDefaultVaf = 1.0f;

// The record's fields by the names of the input definition.
class Record {
public:
    Record(const LineDef& def, const std::string& line, PolygonResult& result, Message& about)
        : def_(def), line_(line), result_(result), about_(about) {}

    std::string text(const std::string& name) const {
        const FieldDef* field = LineDef::find(def_.input, name);
        return field ? trim(standin::columns(line_, field->column, std::abs(field->width))) : "";
    }

    // A number field; a field that holds something else rejects the polygon.
    std::optional<double> number(const std::string& name) {
        const FieldDef* field = LineDef::find(def_.input, name);
        if (!field) return std::nullopt;
        const standin::NumberField value =
            standin::numberAt(line_, field->column, std::abs(field->width));
        if (value.malformed) reject(name + " is not a number: \"" + text(name) + "\"");
        return value.value;
    }

    void reject(const std::string& text) {
        standin::addMessage(result_.messages, about_, "ERROR", text);
    }
    void warn(const std::string& text) {
        standin::addMessage(result_.messages, about_, "WARNING", text);
    }

private:
    const LineDef& def_;
    const std::string& line_;
    PolygonResult& result_;
    Message& about_;
};

struct Stand {
    growth::StandInputs inputs;
    std::array<int, 6> slotOf{};  // input species slot of each share
    float vaf = kDefaultVaf;
};

void readSpecies(const RunContext& run, Record& record, Stand& stand) {
    int total = 0;
    for (int slot = 0; slot < 6; ++slot) {
        const std::string name = "Species" + std::to_string(slot + 1);
        const std::string code = record.text(name);
        const int percent =
            static_cast<int>(roundHalfEven(record.number(name + "Percent").value_or(0.0)));
        total += percent;
        if (code.empty()) {
            if (percent != 0)
                record.reject(name + " has " + std::to_string(percent) + "% but no species code");
            continue;
        }
        const auto tableCode = run.species.resolve(code);
        if (!tableCode) {
            record.reject("Species code \"" + code + "\" is not known to the model");
            continue;
        }
        if (percent <= 0) continue;
        stand.slotOf[stand.inputs.species.size()] = slot;
        stand.inputs.species.push_back({*tableCode, percent, run.species.isDeciduous(*tableCode)});
    }
    if (total != 100)
        record.reject("Species percents add up to " + std::to_string(total) + ", not 100");
}

void readSiteIndex(Record& record, Stand& stand) {
    const double siteIndex = record.number("SiteIndex").value_or(0.0);
    if (siteIndex > 0.0) {
        stand.inputs.siteIndex = static_cast<float>(siteIndex);
        return;
    }
    const int age = static_cast<int>(roundHalfEven(record.number("Age").value_or(0.0)));
    const float height = static_cast<float>(record.number("Height").value_or(0.0));
    const auto derived = standin::siteIndexFromHeight(stand.inputs, age, height);
    if (derived)
        stand.inputs.siteIndex = *derived;
    else
        record.reject("No site index, and no age and height to work it out from");
}

void readSettings(Record& record, Stand& stand) {
    const double closure = record.number("CrownClosure").value_or(0.0);
    stand.inputs.crownClosure = static_cast<int>(roundHalfEven(closure));
    if (closure <= 0.0) {
        stand.inputs.crownClosure = kDefaultClosure;
        record.warn("Crown closure not given: " + std::to_string(kDefaultClosure) + "% used");
    }
    const double utilisation = record.number("Utilizationlevel").value_or(0.0);
    stand.inputs.utilisation = static_cast<float>(utilisation);
    if (utilisation <= 0.0) {
        stand.inputs.utilisation = kDefaultUtilisation;
        record.warn("Utilization level not given: " + standin::decimalText(kDefaultUtilisation, 1) +
                    " cm used");
    }
    const double vaf = record.number("VolumeAdjustmentFactor").value_or(0.0);
    stand.vaf = static_cast<float>(vaf);
    if (vaf <= 0.0) {
        stand.vaf = kDefaultVaf;
        record.warn("Volume adjustment factor not given: " + standin::decimalText(kDefaultVaf, 2) +
                    " used");
    }
}

// The values an output row can carry, named as the output definition names them (any case).
enum RowValue : std::size_t {
    NetAirVolSpc1,  // ... to NetAirVolSpc6, by input species slot
    PolygonNumber = NetAirVolSpc1 + 6,
    CurrentAge,
    CrownClosure,
    SiteIndex,
    AirDiameter,
    Height,
    Mai,
    NetAirVolume,
    kRowValues
};
constexpr std::array<const char*, kRowValues> kRowValueNames = {
    "NETAIRVOLSPC1", "NETAIRVOLSPC2", "NETAIRVOLSPC3", "NETAIRVOLSPC4", "NETAIRVOLSPC5",
    "NETAIRVOLSPC6", "POLYGONNUMBER", "CURRENTAGE",    "CROWNCLOSURE",  "SITEINDEX",
    "AIRDIAMETER",   "HEIGHT",        "MAI",           "NETAIRVOLUME"};
using Row = std::array<double, kRowValues>;

Row rowAt(const RunContext& run, const Stand& stand, int polygon, int age) {
    const growth::CurvePoint point = growth::naturalStandAt(stand.inputs, age);
    Row row{};
    double total = 0.0;
    for (std::size_t i = 0; i < stand.inputs.species.size(); ++i) {
        const auto factor = run.wasteFactors.find(stand.inputs.species[i].code);
        const double volume = double(point.speciesVolume[i]) * stand.vaf *
                              (factor == run.wasteFactors.end() ? 1.0f : factor->second);
        row[NetAirVolSpc1 + static_cast<std::size_t>(stand.slotOf[i])] = volume;
        total += volume;
    }
    row[PolygonNumber] = polygon;
    row[CurrentAge] = age;
    row[CrownClosure] = stand.inputs.crownClosure;
    row[SiteIndex] = stand.inputs.siteIndex;
    row[AirDiameter] = point.diameter;
    row[Height] = point.height;
    row[Mai] = age > 0 ? total / age : 0.0;
    row[NetAirVolume] = total;
    return row;
}

bool isText(const FieldDef& field) {
    return equalsNoCase(field.type, "Character") || field.width < 0;
}

// An output field that shows something: the map sheet, or a value of the row as a number.
// Fields of other names, and text fields of value names, stay blank.
struct OutputColumn {
    int column = 0;
    int width = 0;
    int decimals = 0;
    std::optional<RowValue> value;  // none: the map sheet
};

// The output definition resolved once per table rather than for every row of it.
std::vector<OutputColumn> outputColumns(const std::vector<FieldDef>& fields) {
    std::vector<OutputColumn> shown;
    for (const FieldDef& field : fields) {
        const int width = std::abs(field.width);
        if (equalsNoCase(field.name, "MapSheet")) {
            shown.push_back({field.column, width, 0, std::nullopt});
            continue;
        }
        const std::string name = toUpper(field.name);
        const auto named = std::find(kRowValueNames.begin(), kRowValueNames.end(), name);
        if (named == kRowValueNames.end() || isText(field)) continue;
        const int decimals = equalsNoCase(field.type, "Integer") ? 0 : field.decimals;
        shown.push_back(
            {field.column, width, decimals, static_cast<RowValue>(named - kRowValueNames.begin())});
    }
    return shown;
}

std::string layOut(const std::vector<OutputColumn>& columns, const Row& row,
                   const std::string& mapSheet) {
    std::string line;
    line.reserve(128);
    for (const OutputColumn& c : columns) {
        if (!c.value)
            standin::put(line, c.column, c.width, mapSheet);
        else
            standin::put(line, c.column, c.width,
                         standin::fixedNumber(row[*c.value], c.width, c.decimals));
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

std::string marker(const LineDef& def, const char* text) {
    const FieldDef* mapSheet = LineDef::find(def.output, "MapSheet");
    std::string line;
    standin::put(line, mapSheet ? mapSheet->column : 1, 6, text);
    return line;
}

}  // namespace

PolygonResult projectRecord(const RunContext& run, const std::string& line, int recordNumber) {
    PolygonResult result;
    Message about;
    about.record = recordNumber;
    Record record(run.def, line, result, about);
    about.mapSheet = record.text("MapSheet");
    about.polygon = static_cast<int>(roundHalfEven(record.number("PolygonNumber").value_or(0.0)));

    Stand stand;
    readSpecies(run, record, stand);
    if (!stand.inputs.species.empty()) readSiteIndex(record, stand);
    readSettings(record, stand);
    for (const Message& message : result.messages)
        if (message.kind == "ERROR") return result;

    result.accepted = true;
    const std::vector<OutputColumn> columns = outputColumns(run.def.output);
    result.lines.push_back(marker(run.def, "^^^^^^"));
    for (int age = run.ages.start; age <= run.ages.finish; age += run.ages.increment)
        result.lines.push_back(
            layOut(columns, rowAt(run, stand, about.polygon, age), about.mapSheet));
    result.lines.push_back(marker(run.def, "VVVVVV"));
    return result;
}

std::string errorLine(const LineDef& def, const Message& message) {
    std::string line;
    for (const FieldDef& field : def.error) {
        const int width = std::abs(field.width);
        std::string text;
        if (equalsNoCase(field.name, "ErrorMsgType")) text = message.kind;
        if (equalsNoCase(field.name, "MapSheet")) text = message.mapSheet;
        if (equalsNoCase(field.name, "ErrorMsg")) text = message.text;
        if (equalsNoCase(field.name, "PolygonNumber"))
            text = standin::fixedNumber(message.polygon, width, 0);
        if (equalsNoCase(field.name, "LrecordNumber"))
            text = standin::fixedNumber(message.record, width, 0);
        standin::put(line, field.column, width, text, field.width > 0);
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

}  // namespace arborex::vdypbat
