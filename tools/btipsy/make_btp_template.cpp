// Writes the TIPSY batch template of the installation: make_btp_template [OUT], OUT defaulting
// to data/TIPSY/arborex2.btp. Arborex copies its header and tail and fills in the path slots.

#include <fstream>
#include <iostream>

#include "btipsy/btp_file.hpp"

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "data/TIPSY/arborex2.btp";
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << arborex::btipsy::templateBytes();
    out.close();
    if (!out) {
        std::cerr << "make_btp_template: cannot write " << path << "\n";
        return 1;
    }
    return 0;
}
