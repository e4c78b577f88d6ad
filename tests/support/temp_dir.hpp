#pragma once
// A fresh folder under the system's temporary folder, removed with its contents on scope exit.

#include <string>

namespace arborex::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return path_; }
    // path() + "/" + name
    std::string file(const std::string& name) const;

private:
    std::string path_;
};

}  // namespace arborex::test
