// The GDAL/OGR table reader, or a refusing reader in a build without GDAL.

#include "platform/gdal/gdal_table_reader.hpp"

namespace arborex {

std::unique_ptr<TableReader> makeTableReader() {
    return std::make_unique<NoTableReader>();
}

bool tableReaderAvailable() {
    return false;
}

}  // namespace arborex
