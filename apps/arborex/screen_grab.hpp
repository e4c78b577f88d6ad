#pragma once
// `arborex --grab DIR [PROJECT]`: opens each finished screen on a project (the installed sample
// by default) and saves a PNG of each in DIR, so that screenshots for the README and for review
// all come from one command. Runs on the offscreen platform; nobody answers the boxes, which take
// their default buttons.

#include <string>

namespace arborex {

// Returns the process's exit status: 0 when every picture was written.
int grabScreens(const std::string& folder, const std::string& project,
                const std::string& dataFolder);

}  // namespace arborex
