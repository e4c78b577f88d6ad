#pragma once
// The sections of the written report, each written through a ReportWriter; shared between the
// report's source files only.

#include <cstdint>
#include <string>

#include "report/document_report_writer.hpp"

namespace arborex {

struct Model;

// Figures that a later part of the report (the summary) takes from an earlier one.
struct ReportSums {
    double totalArea = 0.0;                // AREA of the polygons of table 2 a)
    double targetMaiArea[2] = {0.0, 0.0};  // target MAI times AREA, existing and future
};

// A target harvest age and whether it is the calculated default rather than the polygon's own.
struct ReportAge {
    int16_t age = 0;
    bool isDefault = false;
};

namespace report_detail {

std::string bracketed(const std::string& value, bool isDefault);
bool isLive(const Model& m, int p);
std::string polygonName(const Model& m, int p);
std::string ownershipCode(const Model& m, int p);
// HAR of the management (0 existing, 1 future), or the curve model's calculated age.
ReportAge targetAge(const Model& m, int p, int management);
// The curve model that serves a management: VDYP or TIPSY; NC and NSR fall back to the future's.
int16_t curveModel(const Model& m, int p, int management);

void writePolygonData(const Model& m, ReportWriter& w, ReportSums& sums);
void writeAssumptions(const Model& m, ReportWriter& w);
void writeResults(const Model& m, ReportWriter& w, int presentYear, float hanzlikRate);

}  // namespace report_detail
}  // namespace arborex
