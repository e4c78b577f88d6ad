// Reading VDYP's output table into the VDYP curves.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/input_file.hpp"
#include "base/messages.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "yield/vdyp_exchange.hpp"
#include "yield/vdyp_exchange_columns.hpp"

namespace arborex {

namespace {

using vdyp::columns;

double tolerantField(std::string_view line, std::size_t first, std::size_t width) {
    return tolerantNumber(columns(line, first, width));
}

// Volumes must be numbers: a blank or damaged volume is a failure, not a zero, so a curve is
// never made of half a line.
double strictField(std::string_view line, std::size_t first, std::size_t width) {
    const std::string_view text = columns(line, first, width);
    const std::optional<double> value = strictNumber(text);
    if (!value) throw ArborexError(ErrTypeMismatch, std::string(text));
    return *value;
}

// A value in tenths, as curves store it: above 32767 it is held at 32767, below -32768 it
// overflows.
int16_t tenths(double value) {
    return toI2(clamp32767(value * 10.0));
}

// A line with its end removed, and the bytes it took from the file.
class LineReader {
public:
    explicit LineReader(std::istream& in) : in_(in) {}
    bool next(std::string& line) {
        if (!std::getline(in_, line)) return false;
        position_ += line.size() + (in_.eof() ? 0 : 1);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return true;
    }
    std::uint64_t position() const { return position_; }

private:
    std::istream& in_;
    std::uint64_t position_ = 0;
};

// The import's progress as the file position in 128-byte blocks against the file's length.
class Progress {
public:
    Progress(const ImportProgress& report, std::uint64_t length)
        : report_(report), length_(static_cast<double>(length)) {}
    void at(std::uint64_t position) {
        if (length_ <= 0.0) return;
        const double blocks = roundHalfEven(static_cast<double>(position) / 128.0);
        const double percent = roundHalfEven(blocks * 12800.0 / length_);
        if (percent == shown_) return;
        shown_ = percent;
        if (report_) report_(formatNumber(percent, "0") + "%");
    }

private:
    const ImportProgress& report_;
    double length_;
    double shown_ = 0.0;  // the label starts at "0%"
};

// One line of the table. `rowsRead` counts each polygon's data lines, on the grid or not.
void readDataLine(Model& m, const std::string& line, std::vector<int>& rowsRead) {
    const std::string map = toUpper(trim(columns(line, 1, 7)));
    // The model brackets its table with marker lines of "^" and "V".
    if (map.empty() || map == "^^^^^^" || map == "VVVVVV") return;
    const double number = roundHalfEven(tolerantNumber(trim(columns(line, 9, 3))) - 1.0);
    if (number < 0.0 || number > m.LastPoly) return;
    const int polygon = static_cast<int>(number);
    const ProjectSettings& s = m.Settings;

    const int16_t age = toI2(tolerantField(line, 14, 3));
    if (s.YieldIncAge[0] == 0) throw ArborexError(ErrDivisionByZero);
    // An age between grid steps goes to the nearest step, ties to the even row.
    const double row = roundHalfEven(static_cast<double>(age - s.YieldMinAge[0]) /
                                     static_cast<double>(s.YieldIncAge[0]));
    ++rowsRead[static_cast<std::size_t>(polygon)];

    if (row >= 0.0 && row <= s.YieldRows[0]) {
        const int idx = static_cast<int>(row);
        YieldRow& curve = m.VYield(polygon, idx);
        curve.Dia = tenths(tolerantField(line, 31, 7));
        curve.Ht = tenths(tolerantField(line, 94, 6));
        if (s.YIELDMODE != 0) {
            MixRow& mix = m.VMix(polygon, idx);
            for (std::size_t slot = 0; slot < mix.size(); ++slot)
                mix[slot] = tenths(strictField(line, 40 + 9 * slot, 7));
        }
        curve.Vol = tenths(strictField(line, 109, 7));
        if (s.NETMAI == 0) {
            curve.Mai = toF4(tolerantField(line, 100, 6));
        } else if (idx == 0) {
            curve.Mai = 0.0f;
        } else {
            // MAI of the net volume that the polygon will harvest, not the model's gross MAI.
            const float volume = toF4(curve.Vol / 10.0);
            curve.Mai = quotient(volume, age);
        }
    }

    PolyData& data = m.Poly.at(static_cast<std::size_t>(polygon));
    if (data.YIELDSTATE[0] == 2) return;
    // The model's crown closure and site index come with the polygon's first line.
    m.PolyC.at(static_cast<std::size_t>(polygon)).VCCCALC = toF4(tolerantField(line, 18, 4));
    data.VSICALC = toF4(tolerantField(line, 23, 7));
    data.YIELDSTATE[0] = 2;
}

// A polygon that has some rows but not the whole grid was cut off: the user is told, naming the
// last such polygon. Polygons without rows were not in the file (the model rejected them and
// says why in its error file).
void reportIncomplete(const Model& m, Host& host, const std::vector<int>& rowsRead) {
    const int fullTable = m.Settings.YieldRows[0] + 1;
    int complete = 0;
    int incomplete = -1;
    for (std::size_t p = 0; p < rowsRead.size(); ++p) {
        if (rowsRead[p] == fullTable) {
            ++complete;
        } else if (rowsRead[p] != 0) {
            incomplete = static_cast<int>(p);
        }
    }
    if (incomplete < 0) return;
    const std::string text =
        std::string("The VDYP file ended unexpectedly.  Not all yield curves are upto date.") +
        "\n\n" + formatNumber(complete, "0") + " polygons completed successfully." + "\n" +
        "Error occurred while importing: " +
        m.Poly.at(static_cast<std::size_t>(incomplete)).NAME.str() + "\n\n" +
        GetMessage(m.Messages, "&VDYPERR");
    host.prompt.tell("ERROR Importing VDYP", text, Icon::Critical);
}

}  // namespace

void ImportVDYP(Model& m, Host& host, const std::string& path, const ImportProgress& progress) {
    std::vector<int> rowsRead(static_cast<std::size_t>(m.LastPoly + 1), 0);
    std::ifstream in;
    if (OpenInputFile(host, path, "Importing VDYP Data File", in) < 0) return;
    in.seekg(0, std::ios::end);
    const auto length = static_cast<std::uint64_t>(std::max<std::streamoff>(in.tellg(), 0));
    in.seekg(0, std::ios::beg);

    LineReader reader(in);
    std::string line;
    if (reader.next(line)) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos) m.Header.VDYPVersion = trim(line.substr(colon + 1));
    }
    Progress shown(progress, length);
    while (reader.next(line)) {
        shown.at(reader.position());
        readDataLine(m, line, rowsRead);
    }
    in.close();
    reportIncomplete(m, host, rowsRead);
}

}  // namespace arborex
