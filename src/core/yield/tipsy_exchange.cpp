#include "yield/tipsy_exchange.hpp"

#include "base/errors.hpp"

namespace arborex {

BtpFile LoadBTPDefaults(const std::string& path) {
    throw ArborexError(ErrFileNotFound, path);
}
void CreateBTPfile(const BtpFile&, const std::string&) {}
bool tipsyDue(const Model&, int, bool) {
    return false;
}
int ExportTIPSY(Model&, const std::string&, bool) {
    return 0;
}
std::vector<std::string> tipsyArguments(const Model&) {
    return {"Arborex2.btp"};
}
void ImportTIPSY2(Model&, Host&, const std::string&, const ImportProgress&) {}
ErrorCounts LoadTIPSYError(const Model&, Prompt&, const std::string&, std::vector<PostItem>&) {
    return {};
}

}  // namespace arborex
