#pragma once
// An independent picture of the .arx project file for tests. Every field is put at its
// documented offset into a byte vector, little-endian, under a name, so that a comparison can
// say which field of which record differs. Nothing here goes through the program's own record
// readers or writers: the two are meant to check each other.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/model.hpp"

namespace arborex::test {

using Bytes = std::vector<std::uint8_t>;

// Little-endian fields out of raw bytes; `at` must leave room for the field.
int16_t getI2(const Bytes& bytes, std::size_t at);
int32_t getI4(const Bytes& bytes, std::size_t at);
float getF4(const Bytes& bytes, std::size_t at);
double getF8(const Bytes& bytes, std::size_t at);
std::string getText(const Bytes& bytes, std::size_t at, std::size_t width);
// Little-endian fields into raw bytes, for hand edits of a finished image.
void setI2(Bytes& bytes, std::size_t at, int16_t value);
void setF4(Bytes& bytes, std::size_t at, float value);

Bytes readFileBytes(const std::string& path);
void writeFileBytes(const std::string& path, const Bytes& bytes);

struct FieldSpan {
    std::string name;        // record and field: "PolyData[1].AREA"
    std::size_t offset = 0;  // from the start of the file
    std::size_t size = 0;
    bool specified = true;  // false for bytes whose content the format leaves open
};

// A file image assembled record by record. Each record must be covered by its fields exactly
// once, byte for byte; a gap or an overlap is a mistake in the tables below and throws.
class ArxImage {
public:
    // Appends a record of `size` zero bytes; field offsets that follow are relative to it.
    void beginRecord(std::string name, std::size_t size);
    void i2(std::size_t at, int16_t value, std::string_view field);
    void i4(std::size_t at, int32_t value, std::string_view field);
    void f4(std::size_t at, float value, std::string_view field);
    void f8(std::size_t at, double value, std::string_view field);
    // Exactly `bytes.size()` bytes, as stored in a fixed string.
    void raw(std::size_t at, std::string_view bytes, std::string_view field);
    // `text` cut to `width` and padded with blanks.
    void text(std::size_t at, std::string_view text, std::size_t width, std::string_view field);
    // Bytes that the format reserves without saying what they hold; never compared.
    void open(std::size_t at, std::size_t size, std::string_view field);
    // Checks the coverage of the last record; call once the image is complete.
    void finish();

    const Bytes& bytes() const { return bytes_; }
    const std::vector<FieldSpan>& fields() const { return fields_; }
    // The span of a field by its full name; throws when there is none.
    const FieldSpan& field(std::string_view name) const;
    // Start of a record by its name ("Block[0]"); throws when there is none.
    std::size_t recordOffset(std::string_view name) const;

    // Every field whose bytes differ in `actual`, by name with both values in hex, and a line
    // on a length difference; empty when the two agree. Fields named in `ignore` are skipped.
    std::vector<std::string> differences(const Bytes& actual,
                                         const std::vector<std::string>& ignore = {}) const;

private:
    void put(std::size_t at, const void* data, std::size_t size, std::string_view field,
             bool specified = true);
    void checkCoverage() const;

    Bytes bytes_;
    std::vector<FieldSpan> fields_;
    std::vector<std::pair<std::string, std::size_t>> records_;
    std::string record_;
    std::size_t base_ = 0;
    std::size_t recordSize_ = 0;
    std::vector<int> covered_;
};

// The image of a file of `version`, taking every value from the model as it stands: the
// header (with `version` as its FileVersion), LastPoly, the settings form of the version,
// polygons 0 to LastPoly, the calculation records, the harvest order, every row of the curve
// grids in the row form of the version, and from 290 on the saved calculation with every
// allocated element of its arrays and the report options. Nothing is converted: a caller that
// expects a writer to change the model first makes the same change to its copy.
ArxImage buildArxImage(const Model& m, int16_t version);

// Sizes of the records, as the layout gives them.
inline constexpr std::size_t kHeaderSize = 242;
inline constexpr std::size_t kSettingsSize = 150;
inline constexpr std::size_t kSecondSettingsSize = 88;
inline constexpr std::size_t kSettings111Size = 134;
inline constexpr std::size_t kOldestSettingsSize = 16;
inline constexpr std::size_t kPolyDataSize = 177;
inline constexpr std::size_t kPolyCalcSize = 54;
inline constexpr std::size_t kPolyMgmtSize = 96;
inline constexpr std::size_t kHarvAgeSize = 14;

}  // namespace arborex::test
