#include "base/split_csv.hpp"

#include "base/text.hpp"

namespace arborex {

int SplitCSV(std::string_view line, char delimiter, std::vector<std::string>& CsvFields) {
    CsvFields.assign(1, std::string());
    std::string text = trim(line);
    if (text.empty()) return 0;

    std::string field;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (quoted) {
            if (c != '"') {
                field += c;
            } else if (i + 1 < text.size() && text[i + 1] == '"') {
                field += '"';
                ++i;
            } else {
                quoted = false;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == delimiter) {
            CsvFields.push_back(trim(field));
            field.clear();
        } else {
            field += c;
        }
    }
    CsvFields.push_back(trim(field));
    return static_cast<int>(CsvFields.size()) - 1;
}

}  // namespace arborex
