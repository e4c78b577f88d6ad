// arborex-batch: the headless front end. All of its work is in the arborex_batch library.

#include <iostream>

#include "batch_commands.hpp"

int main(int argc, char** argv) {
    return arborex::batch::runBatch(std::vector<std::string>(argv + 1, argv + argc), std::cout,
                                    std::cerr);
}
