#include "btipsy/tipsy_record.hpp"

#include "base/numeric.hpp"
#include "base/text.hpp"
#include "standin/site_index.hpp"
#include "standin/standin_files.hpp"

namespace arborex::btipsy {
namespace {

constexpr int kSpecies = 5;
// The model's defaults for what a record leaves blank.
constexpr float kDefaultUtilisation = 12.5f;
constexpr int kDefaultDensity = 1600;
constexpr float kDefaultOaf1 = 15.0f, kDefaultOaf2 = 5.0f;

class Reader {
public:
    Reader(const std::string& line, RecordResult& result, Message& about)
        : line_(line), result_(result), about_(about) {}

    std::string text(int column, int width) const {
        return trim(standin::columns(line_, column, width));
    }
    // A number field; one that holds something else rejects the polygon.
    std::optional<double> number(int column, int width, const char* what) {
        const standin::NumberField field = standin::numberAt(line_, column, width);
        if (field.malformed)
            reject(std::string(what) + " in columns " + std::to_string(column) + "-" +
                   std::to_string(column + width - 1) + " is not a number: \"" +
                   text(column, width) + "\"");
        return field.value;
    }
    int whole(int column, int width, const char* what) {
        return static_cast<int>(roundHalfEven(number(column, width, what).value_or(0.0)));
    }
    void reject(const std::string& text) {
        standin::addMessage(result_.messages, about_, "ERROR:", text);
    }
    void warn(const std::string& text) {
        standin::addMessage(result_.messages, about_, "WARNING", text);
    }

private:
    const std::string& line_;
    RecordResult& result_;
    Message& about_;
};

void readSpecies(Reader& in, const standin::SpeciesTable& tipsySpecies,
                 const standin::SpeciesTable& vdypSpecies, ManagedStand& stand) {
    int total = 0;
    float gain = 0.0f;
    for (int s = 0; s < kSpecies; ++s) {
        const std::string code = in.text(39 + 3 * s, 2);
        const int percent = in.whole(54 + 4 * s, 3, "Species percent");
        const int worth = in.whole(104 + 3 * s, 2, "Genetic worth");
        total += percent;
        const std::string place = "Species " + std::to_string(s + 1);
        if (code.empty()) {
            if (percent != 0)
                in.reject(place + " has " + std::to_string(percent) + "% but no species code");
            continue;
        }
        const auto tableCode = tipsySpecies.resolve(code);
        if (!tableCode) {
            in.reject(place + " code \"" + code + "\" is not known to the model");
            continue;
        }
        if (percent <= 0) continue;
        stand.inputs.species.push_back({*tableCode, percent, vdypSpecies.isDeciduous(*tableCode)});
        gain += static_cast<float>(worth * percent) / 10000.0f;
    }
    stand.geneticGain = gain;
    if (total != 100)
        in.reject("Species percents add up to " + std::to_string(total) + ", not 100");
}

void readSiteIndex(Reader& in, ManagedStand& stand) {
    const double siteIndex = in.number(74, 2, "Site index").value_or(0.0);
    if (siteIndex > 0.0) {
        stand.inputs.siteIndex = static_cast<float>(siteIndex);
        return;
    }
    const int age = in.whole(5, 3, "Total age");
    const float height = static_cast<float>(in.number(89, 2, "Height").value_or(0.0));
    const auto derived = standin::siteIndexFromHeight(stand.inputs, age, height);
    if (derived)
        stand.inputs.siteIndex = *derived;
    else if (!stand.inputs.species.empty())
        in.reject("No site index, and no height and age to work it out from");
}

void readManagement(Reader& in, ManagedStand& stand) {
    const double utilisation = in.number(11, 5, "Utilization").value_or(0.0);
    stand.inputs.utilisation = static_cast<float>(utilisation);
    if (utilisation <= 0.0) {
        stand.inputs.utilisation = kDefaultUtilisation;
        in.warn("Utilization not given: 12.5 cm used");
    }
    stand.inputs.density = in.whole(17, 5, "Density");
    if (stand.inputs.density <= 0) {
        stand.inputs.density = kDefaultDensity;
        in.warn("Density not given: " + std::to_string(kDefaultDensity) + " stems/ha used");
    }
    // A pre-commercial thin to a lower density: the stand grows on from the thinned number.
    const int thinned = in.whole(23, 5, "Thinned density");
    if (thinned > 0 && thinned < stand.inputs.density) stand.inputs.density = thinned;
    stand.inputs.oaf1 = static_cast<float>(in.number(31, 2, "OAF1").value_or(kDefaultOaf1));
    stand.inputs.oaf2 = static_cast<float>(in.number(35, 2, "OAF2").value_or(kDefaultOaf2));
}

void readTreatments(Reader& in, ManagedStand& stand) {
    const auto stems = in.number(119, 3, "Commercial thin density");
    const auto height = in.number(123, 2, "Commercial thin height");
    if (stems || height) {
        if (stems) stand.thinStems = static_cast<int>(roundHalfEven(*stems));
        if (height) stand.thinHeight = static_cast<float>(*height);
    }
    const auto start = in.number(126, 3, "Fertilization age");
    const std::string kind = toUpper(in.text(130, 1));
    const auto increase = in.number(132, 3, "Fertilization increase");
    if (!start && kind.empty() && !increase) return;
    Fertilization fertilization;
    fertilization.startAge = static_cast<int>(roundHalfEven(start.value_or(0.0)));
    fertilization.increase = static_cast<float>(increase.value_or(0.0));
    if (kind == "P" || kind == "V" || kind == "H") {
        fertilization.kind = kind[0];
    } else if (!kind.empty()) {
        in.warn("Fertilization type \"" + kind + "\" is not P, V or H: P used");
    }
    stand.fertilization = fertilization;
}

}  // namespace

RecordResult readRecord(const std::string& line, int recordNumber,
                        const standin::SpeciesTable& tipsySpecies,
                        const standin::SpeciesTable& vdypSpecies) {
    RecordResult result;
    Message about;
    about.record = recordNumber;
    Reader in(line, result, about);
    ManagedStand stand;
    stand.polygon = in.whole(1, 3, "Polygon number");
    about.polygon = stand.polygon;
    if (stand.polygon <= 0)
        in.reject("Record " + std::to_string(recordNumber) + " has no polygon number");
    readSpecies(in, tipsySpecies, vdypSpecies, stand);
    readSiteIndex(in, stand);
    readManagement(in, stand);
    readTreatments(in, stand);
    for (const Message& message : result.messages)
        if (message.kind == "ERROR:") return result;
    result.stand = stand;
    return result;
}

}  // namespace arborex::btipsy
