#pragma once
// Reading the tables of a database, spreadsheet or GIS file for the import: the names of its
// tables, the fields of one, and its records in order. The desktop and the batch use the
// GDAL/OGR adapter; tests hand in their own tables.

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace arborex {

// A file the reader cannot open or read: missing, locked, damaged, or of a kind it has no
// driver for. what() is a sentence for the user.
class TableReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class TableReader {
public:
    // One record: a cell per field in the table's field order; nullopt for a null cell. Text
    // is UTF-8 as the reader found it; numbers are in their shortest exact decimal form.
    using Record = std::vector<std::optional<std::string>>;

    virtual ~TableReader() = default;
    // The tables (layers, sheets) of the file, in the file's order.
    virtual std::vector<std::string> tables(const std::string& path) = 0;
    // The field names of one table, in order.
    virtual std::vector<std::string> fields(const std::string& path, const std::string& table) = 0;
    // Calls `each` for every record of the table in order, with the share of the table read so
    // far (0..1) after that record; `each` returns false to stop.
    virtual void readRecords(const std::string& path, const std::string& table,
                             const std::function<bool(const Record&, double done)>& each) = 0;
};

// A build without a table reader: every file is refused with a sentence that says so.
class NoTableReader final : public TableReader {
public:
    std::vector<std::string> tables(const std::string&) override { refuse(); }
    std::vector<std::string> fields(const std::string&, const std::string&) override { refuse(); }
    void readRecords(const std::string&, const std::string&,
                     const std::function<bool(const Record&, double)>&) override {
        refuse();
    }

private:
    [[noreturn]] static void refuse() {
        throw TableReadError(
            "This build of Arborex reads no database or spreadsheet files (built without GDAL).");
    }
};

}  // namespace arborex
