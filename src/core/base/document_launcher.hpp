#pragma once
// Opening a written file for the user: a report in the spreadsheet or word processor, a graph
// control file in the graphing program. The desktop adapter uses the desktop's default program
// or starts the one named; the batch and the tests hand in their own.

#include <string>

namespace arborex {

class DocumentLauncher {
public:
    virtual ~DocumentLauncher() = default;
    // Opens `path` with the desktop's default program for its type. False when there is none
    // or it could not be started.
    virtual bool openDocument(const std::string& path) = 0;
    // Starts `program` with `path` as its one argument, without waiting for it. False when it
    // could not be started.
    virtual bool openWith(const std::string& program, const std::string& path) = 0;
};

// Opens nothing and says so: for front ends without a desktop.
class NoDocumentLauncher final : public DocumentLauncher {
public:
    bool openDocument(const std::string&) override { return false; }
    bool openWith(const std::string&, const std::string&) override { return false; }
};

}  // namespace arborex
