#include "btipsy/tipsy_table.hpp"

#include <algorithm>
#include <cmath>

#include "standin/standin_files.hpp"

namespace arborex::btipsy {
namespace {

constexpr float kDefaultThinHeight = 15.0f;     // m, when the record gives a density only
constexpr float kDefaultThinShare = 0.3f;       // of the volume, when it gives a height only
constexpr float kDefaultFertilizerGain = 5.0f;  // %, when the record gives no increase
constexpr float kMostVolume = 3276.0f;          // m3/ha, the most a curve holds

bool onTable(const TableAges& ages, int age) {
    return age >= ages.first && (age - ages.first) % ages.step == 0;
}

// The thin from below that the record asks for: made in the first year the stand reaches the
// thin height. A thin on a table age would give that grid age two rows, which a reader counts
// twice; the stand-in then thins a year later. Stems are taken in a larger share than volume
// (the growth model's thin from below): residual stems N' of N leave (N'/N)^(2/3) of the volume.
std::optional<growth::CommercialThin> planThin(const ManagedStand& stand, const TableAges& ages,
                                               int record, std::vector<Message>& messages) {
    if (!stand.thinStems && !stand.thinHeight) return std::nullopt;
    float height = stand.thinHeight.value_or(kDefaultThinHeight);
    if (height <= 0.0f) height = kDefaultThinHeight;
    growth::CommercialThin thin;
    for (int age = 1; age < ages.last && thin.age == 0; ++age)
        if (growth::managedStandAt(stand.inputs, age).height >= height) thin.age = age;
    if (thin.age == 0) {
        messages.push_back({"WARNING", record, stand.polygon,
                            "The commercial thin height of " + standin::decimalText(height, 0) +
                                " m is not reached in the table: no thin"});
        return std::nullopt;
    }
    if (onTable(ages, thin.age)) ++thin.age;
    float share = kDefaultThinShare;
    if (stand.thinStems && *stand.thinStems > 0) {
        const double left = double(*stand.thinStems) / stand.inputs.density;
        share = static_cast<float>(1.0 - std::pow(std::min(left, 1.0), 2.0 / 3.0));
    }
    thin.removedFraction = std::clamp(share, 0.1f, 0.4f);
    return thin;
}

// Improved stock and fertilizer on top of the growth model's managed stand.
TableRow adjusted(const ManagedStand& stand, const growth::CurvePoint& point, int age) {
    TableRow row{age, point.volume * (1.0f + stand.geneticGain), point.diameter, point.height, 0};
    if (stand.fertilization && age > 0 && age >= stand.fertilization->startAge &&
        point.volume > 0.0f) {
        const Fertilization& f = *stand.fertilization;
        const float increase = f.increase > 0.0f ? f.increase : kDefaultFertilizerGain;
        if (f.kind == 'V') {
            row.volume += increase;
        } else {
            row.volume *= 1.0f + increase / 100.0f;
            if (f.kind == 'H') row.height *= 1.0f + increase / 100.0f;
        }
    }
    row.volume = std::min(row.volume, kMostVolume);
    row.mai = age > 0 ? point.mai + (row.volume - point.volume) / static_cast<float>(age) : 0.0f;
    return row;
}

}  // namespace

YieldTable yieldTable(const ManagedStand& stand, const TableAges& ages, int record,
                      std::vector<Message>& messages) {
    const auto thin = planThin(stand, ages, record, messages);

    YieldTable table;
    bool thinShown = false;
    for (int age = ages.first; age <= ages.last; age += ages.step) {
        if (thin && !thinShown && thin->age < age) {
            table.rows.push_back(
                adjusted(stand, growth::managedStandAt(stand.inputs, thin->age), thin->age));
            table.rows.push_back(
                adjusted(stand, growth::thinnedStandAt(stand.inputs, *thin, thin->age), thin->age));
            table.thinAge = thin->age;
            table.thinShare = thin->removedFraction;
            thinShown = true;
        }
        const growth::CurvePoint point = thin ? growth::thinnedStandAt(stand.inputs, *thin, age)
                                              : growth::managedStandAt(stand.inputs, age);
        table.rows.push_back(adjusted(stand, point, age));
    }
    return table;
}

}  // namespace arborex::btipsy
