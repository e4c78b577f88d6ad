#pragma once
// A plausible, deterministic stand growth model for samples, tests, benchmarks and stand-ins
// for the outside growth models. It is not a calibrated yield model: it gives curves of the
// right shape and order of magnitude, computed from plain inputs with the standard library only.
//
// How a stand grows here, as a forester would read it:
// - Top height follows a Chapman-Richards site curve through 0 at age 0 and exactly the site
//   index at age 50. The early growth rate depends on the species: pines, larch and the
//   hardwoods (aspen, cottonwood, birch, alder) race ahead early and flatten sooner; spruce,
//   balsam fir, hemlock and the cedars start slowly and keep growing; Douglas-fir and any code
//   not known here lie between. Codes are matched by their first letter ("PL", "PLI", "PA").
// - Basal area rises with top height to a ceiling set by site index and stocking: crown
//   closure against 60% for a natural stand (closure taken within 10..90%), planting density
//   against 1600 stems/ha for a managed one (density taken within 100..20000).
// - Stems per hectare fall by self-thinning from the initial number (5000 for a natural stand,
//   the planting density for a managed one) toward a floor that is lower on better sites.
//   The diameter is the quadratic mean diameter of basal area over stems.
// - Volume is basal area x height x form factor (lower for deciduous species), times the
//   merchantable share 1 - (utilisation / diameter)^2.5, which is 0 while the mean diameter is
//   at or below the utilisation limit.
// - A natural stand breaks up gently after 150 years, losing 15% of its volume by 300.
// - A managed stand carries OAF1 as a constant reduction and OAF2 as one that grows with age
//   to its full value at 100 years.
// - In a mixed stand each species grows at its own rate and contributes its share of the
//   stand's volume by percent; height and diameter are those of the leading (first) species.
//   Percents are taken relative to their total, so they need not sum to exactly 100.
//
// For finite inputs all values are finite and non-negative; volume is capped at 3276 m3/ha, the
// largest that a curve store holds. Ages below 1, a site index at or below 0 or a stand without
// species give a point of zeros. Height and diameter never decrease with age, and neither does the
// volume of a managed stand without a thin.

#include <array>
#include <string>
#include <vector>

namespace arborex::growth {

struct SpeciesShare {
    std::string code;  // species code, e.g. "PL", "FD", "SX", "AT"
    int percent = 0;
    bool deciduous = false;
};

struct StandInputs {
    float siteIndex = 0.0f;             // m at 50 years, leading species
    std::vector<SpeciesShare> species;  // up to 6, leading species first; more are ignored
    float utilisation = 12.5f;          // cm, smallest diameter counted in volume
    int crownClosure = 50;              // %, natural stands
    int density = 1600;                 // planted stems/ha, managed stands
    float oaf1 = 15.0f;                 // %, operational adjustment factors, managed stands
    float oaf2 = 5.0f;
};

struct CurvePoint {
    float height = 0.0f;                   // m
    float diameter = 0.0f;                 // cm, quadratic mean
    float volume = 0.0f;                   // m3/ha, merchantable
    float mai = 0.0f;                      // m3/ha/yr, 0 at age 0
    std::array<float, 6> speciesVolume{};  // m3/ha, natural stands, in the order of species
};

// A natural (unmanaged) stand; speciesVolume sums to volume.
CurvePoint naturalStandAt(const StandInputs& stand, int age);
// A managed (planted) stand; speciesVolume is all 0.
CurvePoint managedStandAt(const StandInputs& stand, int age);

// A commercial thin from below that takes removedFraction (0..0.9) of the standing volume.
struct CommercialThin {
    int age = 0;
    float removedFraction = 0.0f;
};

// The stand just before and just after the thin, at the thin age.
struct ThinRecord {
    int age = 0;
    float volCut = 0.0f, volBefore = 0.0f, volAfter = 0.0f;
    float diaBefore = 0.0f, diaAfter = 0.0f;
    float htBefore = 0.0f, htAfter = 0.0f;
};

// A managed stand thinned at thin.age. Before the thin it is the unthinned stand; at the thin
// age it is the stand just after the thin, with the removed volume gone. The stand then
// recovers: the volume missing against the unthinned stand shrinks to half the cut within a
// few decades, so it never quite catches up. Taking the small stems leaves a larger mean
// diameter, by (1 - removed)^-1/4; height is unchanged. From the thin on, MAI counts the cut
// volume spread over the thin age on top of the standing volume over age, as a thinned yield
// table is read. A thin at age 0 or below, or of nothing, leaves the managed stand as it is.
CurvePoint thinnedStandAt(const StandInputs& stand, const CommercialThin& thin, int age);
ThinRecord thinRecord(const StandInputs& stand, const CommercialThin& thin);

}  // namespace arborex::growth
