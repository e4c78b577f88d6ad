// TIPSY's error file: a page heading, then one line per message with the polygon number and
// the kind of message at fixed columns, a long message running on to one indented line.

#include <fstream>
#include <string>

#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/input_file.hpp"
#include "base/text.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/tipsy_exchange_reading.hpp"

namespace arborex {

namespace {

using tipsy::columns;
using tipsy::fromColumn;

constexpr int kHeadingLines = 5;
constexpr std::size_t kShortestMessage = 50;

}  // namespace

ErrorCounts LoadTIPSYError(const Model& m, Prompt& prompt, const std::string& path,
                           std::vector<PostItem>& post) {
    ErrorCounts counts;
    const std::string actual = tipsy::onDisk(path);
    if (!fileExists(actual)) return counts;
    std::ifstream in(actual, std::ios::binary);
    if (!in) throw ArborexError(ErrPermissionDenied, actual);

    std::string line;
    for (int i = 0; i < kHeadingLines; ++i)
        if (!readTextLine(in, line)) return counts;
    bool more = readTextLine(in, line);
    while (more) {
        bool marked = false;
        int16_t n = -1;
        if (line.size() > kShortestMessage) {
            const std::string kind = toUpper(trim(columns(line, 43, 49)));
            if (kind == "WARNING") {
                ++counts.warnings;
                marked = true;
            } else if (kind == "ERROR:") {
                ++counts.errors;
                marked = true;
            } else {
                prompt.tell(kProgramTitle, kind);
            }
        }
        if (marked) {
            n = tipsy::polygonIndex(columns(line, 28, 33));
            const std::string text = trim(fromColumn(line, 43));
            if (n == -1) {
                post.push_back({"Arborex\t\t" + text, -1});
            } else {
                if (n < 0 || n > m.LastPoly) throw ArborexError(ErrSubscript);
                post.push_back(
                    {m.Poly.at(static_cast<std::size_t>(n)).NAME.str() + "\t" + text, n});
            }
        }
        more = readTextLine(in, line);
        // A message too long for its line runs on in one line indented past the numbers.
        if (more && marked && line.size() > kShortestMessage &&
            trim(columns(line, 1, 40)).empty()) {
            post.push_back({"\t\t" + trim(fromColumn(line, 41)), n});
            more = readTextLine(in, line);
        }
    }
    return counts;
}

}  // namespace arborex
