// The stand list that TIPSY reads: one fixed-column record of 200 characters per polygon due
// for a managed-stand curve. The treatments ride on the record; a thin comes back in the
// report, where the import finds it.

#include "yield/tipsy_exchange.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/display_format.hpp"
#include "model/binary_io.hpp"
#include "model/curve_clear.hpp"

namespace arborex {

namespace {

constexpr std::size_t kRecordWidth = 200;
constexpr int kSpeciesSlots = 5;

// A line of blanks on which each value is laid from its first column (1-based) and cut to
// its field's width.
class FixedRecord {
public:
    explicit FixedRecord(std::size_t width) : text_(width, ' ') {}
    void put(int column, int width, std::string_view value) {
        const auto at = static_cast<std::size_t>(column - 1);
        const std::string_view cut =
            value.substr(0, std::min(static_cast<std::size_t>(width), text_.size() - at));
        cut.copy(text_.data() + at, cut.size());
    }
    void put(int column, int width, int value) { put(column, width, formatNumber(value, "0")); }
    // The model reads blanks where a fixed string left NULs.
    std::string line() const {
        std::string out = text_;
        for (char& c : out)
            if (c == '\0') c = ' ';
        return out;
    }

private:
    std::string text_;
};

// TIPSY's own code of an Arborex species: the second code of the first row of the TIPSY
// species table that holds it, row 0 ("- None -") aside. Empty when none does.
std::string modelSpeciesCode(const ReferenceTables& ref, const Code2& code) {
    const std::string wanted = code.str();
    for (std::size_t row = 1;
         row <= static_cast<std::size_t>(std::max<int16_t>(ref.SpeciesTCount, 0)) &&
         row < ref.SpeciesT.size();
         ++row)
        if (ref.SpeciesT[row].Code.str() == wanted) return ref.SpeciesT[row].Code2.raw();
    return {};
}

std::string fertilizerKind(int16_t type) {
    switch (type) {
        case 0:
            return "P";
        case 1:
            return "V";
        case 2:
            return "H";
        default:
            return {};
    }
}

std::string tipsyRecord(const Model& m, int p) {
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
    const PolyMgmt& mgmt = m.PolyM.at(static_cast<std::size_t>(p));
    const ProjectSettings& settings = m.Settings;
    FixedRecord r(kRecordWidth);
    r.put(1, 3, p + 1);
    r.put(5, 3, poly.TAGETOTAL);
    r.put(9, 1, poly.FIZ.raw());
    r.put(11, 5, formatNumber(mgmt.TUTILIZ, "0.0"));
    r.put(17, 5, poly.DENSITY);
    r.put(23, 5, poly.THIN == 1 ? formatNumber(poly.THINNED, "0") : "0");
    r.put(29, 1, poly.REGEN != 0 ? "P" : "N");
    r.put(31, 2, poly.OAF1 == -1 ? settings.OAF1 : poly.OAF1);
    r.put(35, 2, poly.OAF2 == -1 ? settings.OAF2 : poly.OAF2);
    for (int s = 0; s < kSpeciesSlots; ++s) {
        const auto i = static_cast<std::size_t>(s);
        r.put(39 + 3 * s, 2, modelSpeciesCode(m.Ref, poly.TS[i]));
        r.put(54 + 4 * s, 3, poly.TP[i]);
        // Beyond the leading species the model works site and height out itself unless the
        // project asks to pass every species' own.
        if (settings.TIPSYSITE == 1 || s == 0) r.put(74 + 3 * s, 2, poly.TI[i]);
        if (settings.TIPSYHEIGHT == 1 || s == 0) r.put(89 + 3 * s, 2, poly.TH[i]);
        r.put(104 + 3 * s, 2, mgmt.TG[i]);
    }
    if (mgmt.COMTHIN == 1) {
        r.put(119, 3, mgmt.CTSTEMHA);
        r.put(123, 2, formatNumber(mgmt.CTHEIGHT, "0"));
    }
    if (mgmt.FERT == 1) {
        r.put(126, 3, mgmt.FSTARTYEAR);
        r.put(130, 1, fertilizerKind(mgmt.FINCTYPE));
        r.put(132, 3, formatNumber(mgmt.FINCREASE, "0"));
    }
    return r.line();
}

}  // namespace

bool tipsyDue(const Model& m, int polygon, bool recalcAll) {
    const auto p = static_cast<std::size_t>(polygon);
    const PolyData& poly = m.Poly.at(p);
    if (m.PolyC.at(p).DELETE != 0) return false;
    if (poly.MGNT[0] != 1 && poly.MGNT[1] != 1) return false;
    return poly.YIELDSTATE[1] < 3 || recalcAll;
}

int ExportTIPSY(Model& m, const std::string& path, bool recalcAll) {
    ByteWriter out(path);
    int written = 0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!tipsyDue(m, p, recalcAll)) continue;
        // The old curve goes before the model runs: a polygon the model fails on is left
        // without a curve rather than with a stale one.
        ClearTYield(m, static_cast<int16_t>(p));
        const std::string line = tipsyRecord(m, p) + "\r\n";
        out.bytes(line.data(), line.size());
        ++written;
    }
    out.finish();
    return written;
}

std::vector<std::string> tipsyArguments(const Model& m) {
    std::vector<std::string> arguments{"Arborex2.btp"};
    if (m.SHOWUI == 0) arguments.emplace_back("/NO_UI");
    return arguments;
}

}  // namespace arborex
