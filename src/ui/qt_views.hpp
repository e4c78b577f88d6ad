#pragma once
// The open screens as the core sees them: the main screen hears of recent-list and project-name
// changes, and its polygon screen, while open, of polygons replaced or renumbered. Created
// before the main screen (the Host needs it), attached once that exists.

#include "base/host.hpp"

namespace arborex {

class frmArbo;

class QtViews final : public HostViews {
public:
    void setMainScreen(frmArbo* main) { main_ = main; }

    void recentFilesChanged() override;
    void projectRenamed() override;
    bool polygonScreenOpen() override;
    void redisplayPolygons(int select) override;

private:
    frmArbo* main_ = nullptr;
};

}  // namespace arborex
