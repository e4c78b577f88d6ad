#include "growth/growth_model.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace arborex::growth {
namespace {

constexpr double kHeightShape = 1.4;          // Chapman-Richards exponent of the site curve
constexpr double kReferenceClosure = 60.0;    // % crown closure of a fully stocked natural stand
constexpr double kReferenceDensity = 1600.0;  // planted stems/ha of a fully stocked stand
constexpr double kNaturalStems = 5000.0;      // stems/ha of a young natural stand
constexpr double kMaxVolume = 3276.0;         // m3/ha, the most a curve store holds
constexpr double kPi = 3.14159265358979323846;

// Early growth rate of the site curve (1/yr), by the code's first letter: a larger rate reaches
// the site index sooner and flattens earlier.
double siteCurveRate(const std::string& code) {
    const char genus =
        code.empty() ? ' ' : static_cast<char>(std::toupper(static_cast<unsigned char>(code[0])));
    if (std::string_view("PLAED").find(genus) != std::string_view::npos) {
        return 0.028;  // pines, larch, aspen and cottonwood, birch, alder
    }
    if (std::string_view("SBHCY").find(genus) != std::string_view::npos) {
        return 0.018;  // spruce, balsam fir, hemlock, the cedars
    }
    return 0.022;  // Douglas-fir and codes not known here
}

double topHeight(double siteIndex, double rate, int age) {
    const double atFifty = std::pow(1.0 - std::exp(-50.0 * rate), kHeightShape);
    return siteIndex / atFifty * std::pow(1.0 - std::exp(-rate * age), kHeightShape);
}

struct Growth {
    double height = 0.0, diameter = 0.0, volume = 0.0;  // volume merchantable, before reductions
};

// One species grown over the whole stand's area.
Growth grow(const StandInputs& stand, const SpeciesShare& species, bool natural, int age) {
    const double siteIndex = stand.siteIndex;
    Growth g;
    g.height = topHeight(siteIndex, siteCurveRate(species.code), age);

    double stocking, initialStems, thinningHeight, basalShape;
    if (natural) {
        stocking = std::clamp(stand.crownClosure, 10, 90) / kReferenceClosure;
        initialStems = kNaturalStems;
        thinningHeight = 10.0;  // m of height over which natural stems fall by a factor e
        basalShape = 2.3;       // natural stands take longer to occupy the site
    } else {
        const double density = std::clamp(stand.density, 100, 20000);
        stocking = std::clamp(std::sqrt(density / kReferenceDensity), 0.5, 1.25);
        initialStems = density;
        thinningHeight = 30.0;  // planted at an even spacing, self-thinning comes late
        basalShape = 1.6;
    }
    const double basalCeiling = (24.0 + 1.6 * siteIndex) * stocking;  // m2/ha
    const double basalArea = basalCeiling * std::pow(1.0 - std::exp(-0.09 * g.height), basalShape);
    const double stemFloor = std::min(initialStems, 200.0 + 6000.0 / siteIndex);
    const double stems =
        stemFloor + (initialStems - stemFloor) * std::exp(-g.height / thinningHeight);
    g.diameter = std::sqrt(40000.0 * basalArea / (kPi * stems));

    const double formFactor = species.deciduous ? 0.38 : 0.42;
    const double utilisation = std::max(0.0f, stand.utilisation);
    const double merchantable =
        g.diameter <= utilisation ? 0.0 : 1.0 - std::pow(utilisation / g.diameter, 2.5);
    g.volume = basalArea * g.height * formFactor * merchantable;
    return g;
}

bool growable(const StandInputs& stand, int age) {
    return age > 0 && stand.siteIndex > 0.0f && !stand.species.empty() &&
           std::isfinite(stand.siteIndex);
}

std::size_t speciesCount(const StandInputs& stand) {
    return std::min<std::size_t>(stand.species.size(), 6);
}

// Each species' share of the stand, relative to the total of the percents; equal shares
// when the percents total nothing.
double shareOf(const StandInputs& stand, std::size_t i) {
    int total = 0;
    for (std::size_t s = 0; s < speciesCount(stand); ++s)
        total += std::max(0, stand.species[s].percent);
    if (total == 0) return 1.0 / static_cast<double>(speciesCount(stand));
    return std::max(0, stand.species[i].percent) / static_cast<double>(total);
}

// Height, diameter and volume per species of the stand, volume before any reduction.
CurvePoint mixedStand(const StandInputs& stand, bool natural, int age,
                      std::array<double, 6>& speciesVolume) {
    CurvePoint point;
    speciesVolume.fill(0.0);
    for (std::size_t s = 0; s < speciesCount(stand); ++s) {
        const Growth g = grow(stand, stand.species[s], natural, age);
        if (s == 0) {
            point.height = static_cast<float>(g.height);
            point.diameter = static_cast<float>(g.diameter);
        }
        speciesVolume[s] = g.volume * shareOf(stand, s);
    }
    return point;
}

float maiOf(double volume, int age) {
    return age > 0 ? static_cast<float>(volume / age) : 0.0f;
}

// Taking the small stems raises the quadratic mean diameter: with stems removed in a larger
// share than volume, 1 - (1 - removed)^1.5, the mean diameter grows by (1 - removed)^-1/4.
double diameterGain(float removed) {
    return std::pow(1.0 - removed, -0.25);
}

float removedShare(const CommercialThin& thin) {
    return std::clamp(thin.removedFraction, 0.0f, 0.9f);
}

float capped(double volume) {
    return static_cast<float>(std::min(volume, kMaxVolume));
}

}  // namespace

CurvePoint naturalStandAt(const StandInputs& stand, int age) {
    if (!growable(stand, age)) return {};
    std::array<double, 6> speciesVolume;
    CurvePoint point = mixedStand(stand, true, age, speciesVolume);

    const double pastBreakUp = std::min(1.0, std::max(0, age - 150) / 150.0);
    const double standing = 1.0 - 0.15 * pastBreakUp * pastBreakUp;
    double total = 0.0;
    for (double& v : speciesVolume) total += v *= standing;
    const double scale = total > kMaxVolume ? kMaxVolume / total : 1.0;
    double volume = 0.0;
    for (std::size_t s = 0; s < speciesVolume.size(); ++s) {
        point.speciesVolume[s] = static_cast<float>(speciesVolume[s] * scale);
        volume += point.speciesVolume[s];
    }
    point.volume = capped(volume);
    point.mai = maiOf(point.volume, age);
    return point;
}

CurvePoint managedStandAt(const StandInputs& stand, int age) {
    if (!growable(stand, age)) return {};
    std::array<double, 6> speciesVolume;
    CurvePoint point = mixedStand(stand, false, age, speciesVolume);

    double volume = 0.0;
    for (double v : speciesVolume) volume += v;
    const double oaf1 = std::clamp(stand.oaf1, 0.0f, 100.0f) / 100.0;
    const double oaf2 = std::clamp(stand.oaf2, 0.0f, 100.0f) / 100.0;
    volume *= (1.0 - oaf1) * (1.0 - oaf2 * std::min(1.0, age / 100.0));
    point.volume = capped(volume);
    point.mai = maiOf(point.volume, age);
    return point;
}

ThinRecord thinRecord(const StandInputs& stand, const CommercialThin& thin) {
    ThinRecord record;
    record.age = thin.age;
    const CurvePoint before = managedStandAt(stand, thin.age);
    const float removed = removedShare(thin);
    record.volBefore = before.volume;
    record.volAfter = before.volume * (1.0f - removed);
    record.volCut = record.volBefore - record.volAfter;
    record.diaBefore = before.diameter;
    record.diaAfter = before.diameter * static_cast<float>(diameterGain(removed));
    record.htBefore = before.height;
    record.htAfter = before.height;
    return record;
}

CurvePoint thinnedStandAt(const StandInputs& stand, const CommercialThin& thin, int age) {
    CurvePoint point = managedStandAt(stand, age);
    if (thin.age <= 0 || age < thin.age) return point;
    const ThinRecord record = thinRecord(stand, thin);
    const double sinceThin = age - thin.age;
    const double missing = record.volCut * (0.5 + 0.5 * std::exp(-sinceThin / 25.0));
    point.volume = static_cast<float>(std::max(0.0, point.volume - missing));
    point.diameter = static_cast<float>(point.diameter * diameterGain(removedShare(thin)));
    point.mai = maiOf(point.volume, age) + record.volCut / static_cast<float>(thin.age);
    return point;
}

}  // namespace arborex::growth
