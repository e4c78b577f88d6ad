#pragma once
// Import of delimited text with catalogue keys in its header line: text files, and tables
// pasted from a spreadsheet ("Paste Table").

#include <string>
#include <string_view>
#include <vector>

#include "base/host.hpp"
#include "exchange/polygon_import.hpp"
#include "model/model.hpp"

namespace arborex {

// The first of tab, comma, semicolon and blank that splits `line` into more than one piece;
// an empty text when none does.
std::string DetectDelimiter(std::string_view line);

// Lines of a text, ended by CR LF, LF or a lone CR (spreadsheets and the clipboard differ).
std::vector<std::string> splitLines(std::string_view text);
// Every piece between delimiters, empty ones included; no quoting.
std::vector<std::string> splitOn(std::string_view line, std::string_view delimiter);

// The core's Latin-1 text of a file's bytes: UTF-8 (with or without its mark) is decoded, a
// character beyond Latin-1 becoming "?"; anything else (Latin-1, Windows-1252) is kept.
std::string latin1FileText(std::string_view bytes);
// Reads a whole file as latin1FileText. False when it cannot be opened; the user has been told
// in a box titled `title`.
bool readImportFile(Host& host, const std::string& path, const std::string& title,
                    std::string& text);

// TxtToColumns on `TextBuffer`: finds the header line (the first holding "NAME", else the
// first holding "POLYGON"), its delimiter and the catalogue key of each column; titles that
// name no variable are listed ("&CSVNOTKEY") and their columns skipped. Each following line
// of more than one piece names its polygon (the NAME column, or map sheet and polygon number)
// through setPolygon and sets its cells through ImportItem; an updated polygon's curves are
// marked through DoYieldsNeedToBeUpdated. Ends with finishImport. `run` is cleared first but
// keeps its DupMode, so that a caller can answer the duplicate question beforehand.
// Returns false, with nothing changed, for "No Headerline found", "Delimiter could not be
// detected" or "No Name field exists, can't import".
bool TxtToColumns(Model& m, Host& host, std::string_view TextBuffer, PolygonImport& run);

}  // namespace arborex
