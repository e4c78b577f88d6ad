// The steps every import route shares.

#include "exchange/polygon_import.hpp"

#include "base/messages.hpp"
#include "base/text.hpp"
#include "exchange/import_item.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/reference_tables.hpp"
#include "model/species_binding.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

bool updateDuplicates(Prompt& prompt, PolygonImport& run) {
    if (run.DupMode == -1) {
        const Answer answer = prompt.ask("Update polygons?",
                                         "YES - Update duplicate with imported information\r\n"
                                         "NO - Skip duplicate polygons",
                                         Buttons::YesNo, Answer::Yes, Icon::Question);
        run.DupMode = answer == Answer::Yes ? 1 : 0;
    }
    return run.DupMode == 1;
}

int setPolygon(Model& m, Prompt& prompt, PolygonImport& run, std::string_view name) {
    const std::string stored = FixedString<12>(trim(name)).str();
    if (stored.empty()) {
        ++run.counts.ImpBlank;
        return kBlankName;
    }
    const int holder = findPolygonName(m, stored);
    if (holder >= 0) {
        if (updateDuplicates(prompt, run)) {
            ++run.counts.ImpUpdated;
            return holder;
        }
        ++run.counts.ImpSkipped;
        return kSkipDuplicate;
    }
    PolyData data = m.DefaultPoly;
    data.YIELDSTATE = {0, 0};
    data.NAME = stored;
    const int p = appendPolygon(m, data, m.DefaultPolyC, m.DefaultPolyM);
    ++run.counts.ImpAdded;
    return p;
}

int importRecord(Model& m, Prompt& prompt, PolygonImport& run, std::string_view name,
                 const std::function<void()>& setFields) {
    const std::string stored = FixedString<12>(trim(name)).str();
    const int holder = findPolygonName(m, stored);
    if (holder >= 0 && !updateDuplicates(prompt, run)) {
        ++run.counts.ImpSkipped;
        return kSkipDuplicate;
    }
    if (holder >= 0) {
        ++run.counts.ImpUpdated;
        copyToScratch(m, holder);
    } else {
        m.NewPoly = m.DefaultPoly;
        m.NewPolyC = m.DefaultPolyC;
        m.NewPolyM = m.DefaultPolyM;
        m.NewPoly.NAME = stored;
    }
    setFields();
    if (holder >= 0) {
        DoYieldsNeedToBeUpdated(m, holder);
        return holder;
    }
    m.NewPoly.YIELDSTATE = {0, 0};
    ++run.counts.ImpAdded;
    return appendPolygon(m, m.NewPoly, m.NewPolyC, m.NewPolyM);
}

std::string mapsheetPolygonName(std::string_view mapsheet, std::string_view polygon) {
    if (mapsheet.size() > 6) mapsheet = mapsheet.substr(mapsheet.size() - 6);
    return std::string(mapsheet) + " " + std::string(polygon);
}

void copyToScratch(Model& m, int polygon) {
    const auto p = static_cast<std::size_t>(polygon);
    m.NewPoly = m.Poly.at(p);
    m.NewPolyC = m.PolyC.at(p);
    m.NewPolyM = m.PolyM.at(p);
}

void importCell(Model& m, PolygonImport& run, std::string_view key, std::string_view value) {
    std::string message;
    ImportItem(m, key, value, message);
    if (!message.empty()) run.messages += message + "\r\n";
}

std::string importClosingText(const ImportCounters& c) {
    const int64_t imported = int64_t{c.ImpAdded} + c.ImpUpdated;
    const int64_t total = imported + c.ImpSkipped + c.ImpBlank + c.ImpNoName;
    auto line = [](int32_t count, const char* text) {
        return std::to_string(count) + "\t" + text + "\r\n";
    };
    return std::to_string(imported) + " OF " + std::to_string(total) + "\r\n" +
           "POLYGONS IMPORTED \r\n" + line(c.ImpAdded, "Polygons Added.") +
           line(c.ImpUpdated, "Duplicate Polygons Updated.") + "\r\nDATA SKIPPED\r\n" +
           line(c.ImpSkipped, "Duplicate Polygons Skipped.") +
           line(c.ImpBlank, "Blank Lines Skipped.") +
           line(c.ImpNoName, "Mapsheet and/or Polygon number blank .");
}

void showUnknownTitles(Model& m, Prompt& prompt, const std::string& unknownTitles) {
    nmsgbox(m.Messages, prompt, "&CSVNOTKEY", unknownTitles, "Keyword(s) Not Found", MsgOk, 0,
            m.MsgResult);
}

void finishImport(Model& m, Host& host, const PolygonImport& run,
                  const std::string& unknownTitles) {
    if (!run.messages.empty()) host.prompt.tell(kProgramTitle, run.messages);
    host.prompt.tell(kImportCompleteTitle, importClosingText(run.counts));
    if (!unknownTitles.empty()) showUnknownTitles(m, host.prompt, unknownTitles);
    FindAllPSYU(m, host);
    findSpecIDX(m);
}

}  // namespace arborex
