#pragma once
// What every import route shares: finding or making the polygon a row names, the one duplicate
// question of a run, the five counters and the closing message.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

struct ImportCounters {
    int32_t ImpSkipped = 0;  // duplicates skipped
    int32_t ImpBlank = 0;    // lines with an empty key
    int32_t ImpUpdated = 0;  // duplicates updated
    int32_t ImpAdded = 0;    // new polygons
    int32_t ImpNoName = 0;   // rows with a blank map sheet or polygon number
};

// One run of an import. DupMode: -1 not asked yet, 0 skip every duplicate, 1 update them; a
// front end without anyone to ask sets it before the run.
struct PolygonImport {
    int16_t DupMode = -1;
    ImportCounters counts;
    std::string messages;  // ImportItem's messages, each followed by a line end
};

inline constexpr int kBlankName = -1;
inline constexpr int kSkipDuplicate = -3;

// setPolygon: kBlankName for an empty name (counted blank); for a name some polygon holds
// (trimmed, without regard to case, deleted polygons too) the polygon's index when duplicates
// are updated, kSkipDuplicate when skipped (each counted); otherwise a new polygon made from
// the default polygon with SORT 0, both curves cleared and the name, counted as added. The
// name is taken as it is stored, cut to 12 characters, so a long name repeated is a duplicate.
int setPolygon(Model& m, Prompt& prompt, PolygonImport& run, std::string_view name);

// The duplicate question, asked once a run: true when duplicates are updated.
bool updateDuplicates(Prompt& prompt, PolygonImport& run);

// A record of the classic and database routes, named `name` (not blank): the scratch polygon
// starts from the default polygon, or from the stored polygon for an updated duplicate (the
// question asked once a run; a skip is counted and returns kSkipDuplicate); `setFields` fills
// it; a new polygon is stored with SORT 0 and its curves cleared, an update through
// DoYieldsNeedToBeUpdated. Returns the polygon's index.
int importRecord(Model& m, Prompt& prompt, PolygonImport& run, std::string_view name,
                 const std::function<void()>& setFields);

// A name built of a map sheet (its last six characters when longer) and a polygon number.
std::string mapsheetPolygonName(std::string_view mapsheet, std::string_view polygon);

// The polygon's three records into the scratch polygon (NewPoly, NewPolyC, NewPolyM).
void copyToScratch(Model& m, int polygon);

// Sets one cell on the scratch polygon through ImportItem, adding its message to the run's.
void importCell(Model& m, PolygonImport& run, std::string_view key, std::string_view value);

// The closing lines: the imported of the total, then each counter with its line.
std::string importClosingText(const ImportCounters& counts);
inline constexpr const char* kImportCompleteTitle = "Import Complete";

// The end of every import: the gathered messages when there are any, the closing message,
// the titles that named no variable (`unknownTitles`, one a line, through "&CSVNOTKEY") when
// there are any, then FindAllPSYU and findSpecIDX over the project.
void finishImport(Model& m, Host& host, const PolygonImport& run,
                  const std::string& unknownTitles = {});
// "&CSVNOTKEY" with the list below it, titled "Keyword(s) Not Found".
void showUnknownTitles(Model& m, Prompt& prompt, const std::string& unknownTitles);

}  // namespace arborex
