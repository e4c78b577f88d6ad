#pragma once
// Opening the reference and exchange text files. A file that cannot be opened is never a
// failure: the user is told once, in a box with the loader's title, and the caller goes on
// without the data.

#include <fstream>
#include <string>

#include "base/host.hpp"

namespace arborex {

// Opens `path` for reading into `in`. The file's name is looked up in its folder without regard
// to case. Returns 1 when open; otherwise shows a box titled `title` with the path and the
// reason, and returns -1.
int OpenInputFile(Host& host, const std::string& path, const std::string& title, std::ifstream& in);

// Reads one line without its line end; a "\r" before the "\n" goes too. False at the end.
bool readTextLine(std::istream& in, std::string& line);

}  // namespace arborex
