#pragma once
// What core routines need from the program around them: someone to ask, a status line, the
// settings store, the open screens that want to hear of a change, and the system's folders.

#include "base/environment.hpp"
#include "base/prompt.hpp"
#include "base/settings_store.hpp"
#include "base/status.hpp"

namespace arborex {

class HostViews {
public:
    virtual ~HostViews() = default;
    // The recent-file list changed: menus showing it refresh.
    virtual void recentFilesChanged() {}
    // True while the polygon screen is open.
    virtual bool polygonScreenOpen() { return false; }
    // Polygons were replaced or renumbered: an open polygon screen rebuilds its list and
    // selects the polygon `select` (-1 for none).
    virtual void redisplayPolygons(int /*select*/) {}
    // The project's display name changed: captions follow.
    virtual void projectRenamed() {}
};

struct Host {
    Prompt& prompt;
    StatusScreen& status;
    SettingsStore& settings;
    HostViews& views;
    SystemEnvironment& system;
};

}  // namespace arborex
