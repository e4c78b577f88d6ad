#pragma once
// The table reader of the desktop and the batch: GDAL/OGR reads spreadsheets (xlsx, xls, ods),
// dBase, Access (through the MDBTools ODBC driver), text tables and GIS layers (GeoPackage,
// shapefile, File Geodatabase, GeoJSON). A build without GDAL gets a reader that refuses every
// file with a sentence saying so.

#include <memory>

#include "base/table_reader.hpp"

namespace arborex {

std::unique_ptr<TableReader> makeTableReader();

// True when this build reads files through GDAL.
bool tableReaderAvailable();

}  // namespace arborex
