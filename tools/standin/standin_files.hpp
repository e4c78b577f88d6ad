#pragma once
// What the two growth-model stand-ins share: finding their files as a Windows program would
// (names without regard to case), fixed-column records, CR LF text, and their reference tables.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arborex::standin {

// The path of a file the program reads: `given` itself when it exists, otherwise the file of
// that name in the same folder in any case; empty when there is none.
std::string findInput(const std::string& given);

// The lines of a text file without their line ends (LF or CR LF); nullopt when it cannot be read.
std::optional<std::vector<std::string>> readLines(const std::string& path);
// Writes each line followed by CR LF, as the Windows programs do; false when it cannot.
bool writeLines(const std::string& path, const std::vector<std::string>& lines);

// Columns `column` (from 1) to column + width - 1 of `line`, as far as the line reaches.
std::string columns(const std::string& line, int column, int width);
// Lays `text` over `line` from `column`, cut to `width`, padded with blanks to the width unless
// `pad` is false; a line too short is first extended with blanks.
void put(std::string& line, int column, int width, std::string_view text, bool pad = true);
// A number right-aligned in `width` with `decimals` places; fewer places when it would not fit,
// and the largest value that fits when even none would.
std::string fixedNumber(double value, int width, int decimals);

// A number with `decimals` places and no padding, for running text.
std::string decimalText(double value, int decimals);

// A number field of a record: absent when blank, `malformed` when it holds something else.
struct NumberField {
    std::optional<double> value;
    bool malformed = false;
};
NumberField numberAt(const std::string& line, int column, int width);

// Adds to `list` a message about a record: `about` (which names the record) with its kind and
// text.
template <class Message>
void addMessage(std::vector<Message>& list, Message about, const char* kind, std::string text) {
    about.kind = kind;
    about.text = std::move(text);
    list.push_back(std::move(about));
}

// A reference file ("SPECIESV.DAT") of the installation: in the folder named by the
// environment variable ARBOREX_DATA, beside the program, or in the folder above the program's
// (share/arborex/ holds the tables, share/arborex/VDYP/ the program). Empty when not found.
std::string findReferenceFile(const std::string& name);

}  // namespace arborex::standin
