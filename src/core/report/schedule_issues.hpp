#pragma once
// What the harvest schedule calls an issue: a year that falls short of the rate or of a
// constraint, and an entry cut below its stand's minimums. The schedule's "Issues" cells, its
// issue line and the batch summary all read them from here.

#include <string>

#include "model/model.hpp"

namespace arborex {

// The yardsticks of a schedule: the rate as entered (m3/yr, or ha/yr in an area-based run) and
// the constraint percents, 0 for a constraint whose box is not ticked.
struct IssueLimits {
    double rate = 0.0;
    bool areaRun = false;
    float agePercent = 0.0f;
    float heightPercent = 0.0f;
};

struct YearIssues {
    bool noHarvest = false;
    bool lowHarvest = false;  // below 98% of the rate, with some harvest
    bool belowAge = false;
    bool belowHeight = false;
};

// The issues of one year of YearTable.
YearIssues yearIssues(const YearRec& year, const IssueLimits& limits);
// Its "Issues" cell: "No Harvest. " or "Low Harvest. ", then which constraints were not met.
std::string yearIssueText(const YearIssues& issues);

// The issues of CutList entry `entry`: its diameter, volume per hectare and age against the
// stand's minimums of the management it was cut under. Empty when all were met, or when that
// management is neither VDYP nor TIPSY.
std::string entryIssueText(const Model& m, int entry);

// The issue line under the schedule; `any` is set when it lists at least one issue.
std::string issueLine(const Model& m, const IssueLimits& limits, bool& any);

}  // namespace arborex
