#pragma once
// The desktop's document launch: the default program for a file's type, or a named program
// started detached with the file as its argument.

#include "base/document_launcher.hpp"

namespace arborex {

class QtDocumentLauncher final : public DocumentLauncher {
public:
    bool openDocument(const std::string& path) override;
    bool openWith(const std::string& program, const std::string& path) override;
};

}  // namespace arborex
