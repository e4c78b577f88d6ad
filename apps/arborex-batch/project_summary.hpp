#pragma once
// What `info` shows of a loaded project: the header, the settings, one line per polygon, the
// harvest order's size and the counters of the saved calculation. Two forms of the same
// content: aligned text for people, JSON for programs.
//
// JSON layout (keys in this order; field names are the model's own):
//   header       FileStamp, Licence, District, Company, User, Scenario, VDYPVersion,
//                TIPSYVersion (trimmed strings), StartDate, LastDate (each {"days": day count,
//                "date": "yyyy-mm-dd hh:nn:ss"}), FileVersion
//   settings     every ProjectSettings field; two-model fields (YieldMaxAge ...) and OldColors,
//                COLORS as arrays
//   polygons     LastPoly + 1
//   polygonList  per polygon: index, NAME, AREA, AGE, MGNT, HAR, YIELDSTATE, DELETE, EXCLUDE,
//                VDYPRows, TIPSYRows (rows of each curve with a non-zero volume)
//   CutOrderLast
//   calculation  BlockLast, RoadLast, CutCount, CalcHorizon, NetArea, SortMethod

#include <iosfwd>
#include <string>
#include <string_view>

#include "model/model.hpp"

namespace arborex::batch {

// Rows of polygon `p`'s curve with a non-zero volume; 0 for a polygon the grid does not hold.
int volumeRows(const YieldGrid<YieldRow>& curve, int p);

// A day count as "yyyy-mm-dd hh:nn:ss".
std::string dateText(double dayCount);

// Project text (one byte a character) as UTF-8, for a terminal.
std::string latin1ToUtf8(std::string_view latin1Text);
// Text as UTF-8, padded to `width` columns on the left (`right` aligned) or on the right,
// counting one column for each byte of the project's text.
std::string padded(const std::string& latin1Text, std::size_t width, bool right);

void writeProjectText(const Model& m, std::ostream& out);
void writeProjectJson(const Model& m, std::ostream& out);

}  // namespace arborex::batch
