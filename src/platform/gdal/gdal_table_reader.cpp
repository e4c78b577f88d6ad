// The GDAL/OGR table reader, or a refusing reader in a build without GDAL.

#include "platform/gdal/gdal_table_reader.hpp"

#if ARBOREX_HAVE_GDAL

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <mutex>

#include <cpl_conv.h>
#include <cpl_error.h>
#include <cpl_string.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

namespace arborex {

namespace {

std::string lowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

void registerDrivers() {
    static std::once_flag once;
    std::call_once(once, [] {
        GDALAllRegister();
        // FreeXL's reader takes its header and type choices from configuration, not open
        // options: the first row always names the columns, as Excel's own import assumed.
        CPLSetConfigOption("OGR_XLS_HEADERS", "FORCE");
    });
}

// Collects GDAL's error messages while it is alive, so that a failure can be told to the user
// in one sentence instead of going to standard error.
class ErrorCollector {
public:
    ErrorCollector() { CPLPushErrorHandlerEx(&ErrorCollector::collect, this); }
    ~ErrorCollector() { CPLPopErrorHandler(); }
    ErrorCollector(const ErrorCollector&) = delete;
    ErrorCollector& operator=(const ErrorCollector&) = delete;

    bool failed() const { return !first_.empty(); }
    // " (message)" for the first error GDAL reported, empty when it reported none.
    std::string detail() const { return first_.empty() ? std::string() : " (" + first_ + ")"; }

private:
    static void CPL_STDCALL collect(CPLErr level, CPLErrorNum, const char* message) {
        auto* self = static_cast<ErrorCollector*>(CPLGetErrorHandlerUserData());
        if (!self || level < CE_Failure || !self->first_.empty() || !message) return;
        // Drivers end their messages with line ends and commas that read badly in a box.
        std::string text = message;
        while (!text.empty() && std::strchr(" \t\r\n,;:.", text.back())) text.pop_back();
        self->first_ = text;
    }
    std::string first_;
};

struct DatasetCloser {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

struct FeatureDeleter {
    void operator()(OGRFeature* feature) const { OGRFeature::DestroyFeature(feature); }
};
using Feature = std::unique_ptr<OGRFeature, FeatureDeleter>;

// What to hand GDALOpenEx for a file: the name (text tables of any extension go to the CSV
// driver by its prefix) and the open options that keep the file's own text and header row.
struct OpenRequest {
    std::string name;
    CPLStringList options;
};

OpenRequest openRequest(const std::string& path) {
    OpenRequest request{path, {}};
    const std::string extension = lowerExtension(path);
    if (extension == ".csv" || extension == ".txt" || extension == ".dat") {
        if (extension != ".csv") request.name = "CSV:" + path;
        // Every cell stays text as written ("093G072" is a map sheet, not a number), the first
        // line always holds the names, and an empty cell is null as in a database table.
        request.options.AddString("AUTODETECT_TYPE=NO");
        request.options.AddString("HEADERS=YES");
        request.options.AddString("EMPTY_STRING_AS_NULL=YES");
    } else if (extension == ".xlsx" || extension == ".ods") {
        request.options.AddString("HEADERS=FORCE");
    }
    return request;
}

Dataset openDataset(const std::string& path) {
    registerDrivers();
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        throw TableReadError("The file " + path + " was not found.");
    const std::string extension = lowerExtension(path);
    OpenRequest request = openRequest(path);
    ErrorCollector errors;
    GDALDataset* dataset =
        GDALDataset::Open(request.name.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr,
                          request.options.List(), nullptr);
    if (dataset) return Dataset(dataset);
    if (extension == ".mdb" || extension == ".accdb")
        throw TableReadError("The Access database " + path +
                             " could not be opened; it may be damaged, locked by another "
                             "program, or of a version the MDB Tools driver does not read" +
                             errors.detail() + ".");
    throw TableReadError("The file " + path +
                         " could not be read as a table; it may be damaged or of a kind "
                         "Arborex does not read" +
                         errors.detail() + ".");
}

OGRLayer* findLayer(GDALDataset& dataset, const std::string& path, const std::string& table) {
    OGRLayer* layer = dataset.GetLayerByName(table.c_str());
    if (!layer) throw TableReadError("The file " + path + " holds no table named " + table + ".");
    return layer;
}

// A number as its shortest text that reads back to the same value: 18 not "18.000000", 0.1
// not "0.10000000000000001". A field stored in single precision is shortened as one.
std::string numberText(double value, bool singlePrecision) {
    char buffer[64];
    const auto result =
        singlePrecision ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<float>(value))
                        : std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string cellText(OGRFeature& feature, int field) {
    const OGRFieldDefn* definition = feature.GetFieldDefnRef(field);
    switch (definition->GetType()) {
        case OFTInteger:
        case OFTInteger64:
            return std::to_string(feature.GetFieldAsInteger64(field));
        case OFTReal:
            return numberText(feature.GetFieldAsDouble(field),
                              definition->GetSubType() == OFSTFloat32);
        default:
            return feature.GetFieldAsString(field);
    }
}

class GdalTableReader final : public TableReader {
public:
    std::vector<std::string> tables(const std::string& path) override {
        ErrorCollector quiet;  // a driver's warnings are no business of the user's
        Dataset dataset = openDataset(path);
        std::vector<std::string> names;
        for (int i = 0; i < dataset->GetLayerCount(); ++i)
            names.emplace_back(dataset->GetLayer(i)->GetName());
        return names;
    }

    std::vector<std::string> fields(const std::string& path, const std::string& table) override {
        ErrorCollector quiet;
        Dataset dataset = openDataset(path);
        OGRFeatureDefn* definition = findLayer(*dataset, path, table)->GetLayerDefn();
        std::vector<std::string> names;
        for (int i = 0; i < definition->GetFieldCount(); ++i)
            names.emplace_back(definition->GetFieldDefn(i)->GetNameRef());
        return names;
    }

    void readRecords(const std::string& path, const std::string& table,
                     const std::function<bool(const Record&, double done)>& each) override {
        ErrorCollector errors;
        Dataset dataset = openDataset(path);
        OGRLayer* layer = findLayer(*dataset, path, table);
        const int fieldCount = layer->GetLayerDefn()->GetFieldCount();
        const GIntBig total = layer->GetFeatureCount(TRUE);
        layer->ResetReading();
        GIntBig read = 0;
        Record record(static_cast<std::size_t>(fieldCount));
        while (Feature feature{layer->GetNextFeature()}) {
            for (int i = 0; i < fieldCount; ++i) {
                auto& cell = record[static_cast<std::size_t>(i)];
                if (feature->IsFieldSetAndNotNull(i))
                    cell = cellText(*feature, i);
                else
                    cell.reset();
            }
            ++read;
            const double done =
                total > 0 ? std::min(1.0, static_cast<double>(read) / static_cast<double>(total))
                          : 0.0;
            if (!each(record, done)) return;
        }
        if (errors.failed())
            throw TableReadError("The table " + table + " of " + path +
                                 " could not be read to its end" + errors.detail() + ".");
    }
};

}  // namespace

std::unique_ptr<TableReader> makeTableReader() {
    return std::make_unique<GdalTableReader>();
}

bool tableReaderAvailable() {
    return true;
}

}  // namespace arborex

#else

namespace arborex {

std::unique_ptr<TableReader> makeTableReader() {
    return std::make_unique<NoTableReader>();
}

bool tableReaderAvailable() {
    return false;
}

}  // namespace arborex

#endif
