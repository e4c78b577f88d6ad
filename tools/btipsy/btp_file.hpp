#pragma once
// The TIPSY batch file (.btp): a 32-byte header, four path slots of 256 bytes padded with NULs
// (0 unused, 1 the input file, 2 the output report, 3 the error report) and a tail of run
// parameters. The stand-in's own template carries the ages of its tables in the tail.

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace arborex::btipsy {

inline constexpr std::size_t kHeaderSize = 32;
inline constexpr std::size_t kSlotSize = 256;
inline constexpr std::size_t kTailOffset = kHeaderSize + 4 * kSlotSize;  // 1056

enum Slot { SlotUnused = 0, SlotInput = 1, SlotOutput = 2, SlotErrors = 3 };

struct BatchFile {
    std::string header;                // 32 bytes as read
    std::array<std::string, 4> paths;  // each slot's text up to its first NUL, trimmed
    std::string tail;                  // the bytes after the slots
};

// nullopt when the bytes are shorter than the header and the four slots.
std::optional<BatchFile> parseBatchFile(const std::string& bytes);

// The ages of each yield table: first, first + step, ... up to last.
struct TableAges {
    int first = 0, last = 400, step = 10;
};
// From a tail that begins "AGES first last step"; the defaults for any other tail, so that a
// real TIPSY template works as well.
TableAges tableAges(const BatchFile& batch);

// The bytes of data/TIPSY/arborex2.btp: our header text, four empty slots, the table ages.
std::string templateBytes();

}  // namespace arborex::btipsy
