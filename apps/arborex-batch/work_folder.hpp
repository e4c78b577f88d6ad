#pragma once
// The growth models' work folder for a run without a screen: made fresh, so that nothing of
// another run is read, and removed with what the models left in it.

#include <string>

namespace arborex::batch {

class WorkFolder {
public:
    // A new folder in the system's temporary folder, named `prefix` and six random characters.
    // Throws ArborexError when it cannot be made.
    explicit WorkFolder(const std::string& prefix);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    // With a trailing "/", as Paths[1] is kept.
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace arborex::batch
