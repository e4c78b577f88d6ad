#include "yield/vdyp_exchange.hpp"

namespace arborex {

bool vdypDue(const Model&, int, bool) {
    return false;
}
void CreateFormatV(const Model&, const std::string&) {}
int ExportVDYP(Model&, const std::string&, bool) {
    return 0;
}
std::vector<std::string> vdypArguments(const Model&) {
    return {};
}
void ImportVDYP(Model&, Host&, const std::string&, const ImportProgress&) {}
ErrorCounts LoadVDYPError(const Model&, const std::string&, std::vector<PostItem>&) {
    return {};
}

}  // namespace arborex
