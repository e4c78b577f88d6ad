#pragma once
// The desktop program's view of the system: folders from the XDG locations, the login name,
// and the desktop's default program for a type of document (as xdg-mime reports it).

#include "base/environment.hpp"

namespace arborex {

class QtEnvironment final : public SystemEnvironment {
public:
    std::string variable(const std::string& name) override;
    std::string documentsFolder() override;
    // The program named by the Exec line of the desktop entry that xdg-mime gives as the
    // default for the file's MIME type; empty when xdg-mime is missing or names nothing.
    std::string applicationFor(const std::string& path) override;
};

}  // namespace arborex
