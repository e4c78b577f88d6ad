#pragma once
// An independent picture of the .arx project file for tests. Every field is put at its
// documented offset into a byte vector, little-endian, under a name, so that a comparison can
// say which field of which record differs. Nothing here goes through the program's own record
// readers or writers: the two are meant to check each other.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
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
// A little-endian i2 into raw bytes, for hand edits of a finished image.
void setI2(Bytes& bytes, std::size_t at, int16_t value);

Bytes readFileBytes(const std::string& path);
void writeFileBytes(const std::string& path, const Bytes& bytes);

// One field of a record table: its offset in the record, its name and its value's bytes as the
// file holds them. An array stands for one field per element, named with the element's index.
// Only the file's own widths are accepted: i2, i4, f4, f8 and fixed strings.
struct Field {
    template <typename T>
    Field(std::size_t offset, std::string fieldName, const T& value)
        : at(offset), name(std::move(fieldName)) {
        append(value);
    }
    template <typename T, std::size_t N>
    Field(std::size_t offset, std::string fieldName, const std::array<T, N>& values)
        : at(offset), name(std::move(fieldName)), elements(N) {
        for (const T& value : values) append(value);
    }
    // Bytes that the format reserves without saying what they hold; never compared.
    static Field open(std::size_t offset, std::size_t size);

    std::size_t at = 0;
    std::string name;
    Bytes bytes;
    std::size_t elements = 0;  // 0 for a single value
    bool specified = true;

private:
    template <std::size_t N>
    void append(const FixedString<N>& text) {
        bytes.insert(bytes.end(), text.bytes.begin(), text.bytes.end());
    }
    void append(int16_t value) { appendLE(&value, 2); }
    void append(int32_t value) { appendLE(&value, 4); }
    void append(float value) { appendLE(&value, 4); }
    void append(double value) { appendLE(&value, 8); }
    void appendLE(const void* value, std::size_t size);
};

struct FieldSpan {
    std::string name;        // record and field: "PolyData[1].AREA"
    std::size_t offset = 0;  // from the start of the file
    std::size_t size = 0;
    bool specified = true;  // false for bytes whose content the format leaves open
};

// A file image assembled record by record.
class ArxImage {
public:
    // Appends a record of `size` bytes made of `fields`, at offsets relative to the record.
    // Every byte must belong to exactly one field: a gap or an overlap is a mistake in the
    // tables and throws.
    void record(const std::string& name, std::size_t size, const std::vector<Field>& fields);

    const Bytes& bytes() const { return bytes_; }
    const std::vector<FieldSpan>& fields() const { return fields_; }
    // Start of a record by its name ("Block[0]"); throws when there is none.
    std::size_t recordOffset(std::string_view name) const;

    // Every field whose bytes differ in `actual`, by name with both values in hex, and a line
    // on a length difference; empty when the two agree. An entry of `ignore` names a field
    // ("ProjectHeader.LastDate") or a whole record ("ReportOptions").
    std::string differences(const Bytes& actual, const std::vector<std::string>& ignore = {}) const;

private:
    Bytes bytes_;
    std::vector<FieldSpan> fields_;
    std::vector<std::pair<std::string, std::size_t>> records_;
};

// The image of a file of `version`, taking every value from the model as it stands: the
// header (with `version` as its FileVersion), LastPoly, the settings form of the version,
// polygons 0 to LastPoly, the calculation records, the harvest order, every row of the curve
// grids in the row form of the version, and from 290 on the saved calculation with every
// allocated element of its arrays and the report options. Nothing is converted: a caller that
// expects a writer to change the model first makes the same change to its copy.
ArxImage buildArxImage(const Model& m, int16_t version);

}  // namespace arborex::test
